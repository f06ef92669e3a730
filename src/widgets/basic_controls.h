#ifndef VOREK_WIDGETS_BASIC_CONTROLS_H_
#define VOREK_WIDGETS_BASIC_CONTROLS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "widgets/typed_control.h"

// The ordinary controls of a form. See widgets/control.h for what they share.
namespace vorek {

// A control with a caption: the base of labels, buttons, frames and forms.
class CaptionControl : public Control {
 public:
  using Control::Control;
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption), "Caption"); }

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::string caption_;
};

class Label : public CaptionControl {
 public:
  using CaptionControl::CaptionControl;
  std::string_view Kind() const override { return "Label"; }

  static constexpr std::int32_t kLeading = 0;  // right in a right-to-left label
  static constexpr std::int32_t kCentre = 2;
  std::int32_t Alignment() const { return alignment_; }
  void SetAlignment(std::int32_t alignment) { Assign(alignment_, alignment, "Alignment"); }
  // Blue, green and red from the high byte down; -1 for the colour of the screen's own texts.
  std::int32_t ForeColor() const { return fore_color_; }
  void SetForeColor(std::int32_t color) { Assign(fore_color_, color, "ForeColor"); }

 private:
  std::int32_t alignment_ = kLeading;
  std::int32_t fore_color_ = -1;
};

class Button : public CaptionControl {
 public:
  using CaptionControl::CaptionControl;
  std::string_view Kind() const override { return "Button"; }
  // A press of the button: nothing while it is disabled or hidden.
  void Click() override;
  // Enter and blank press it.
  void KeyDown(int key_code, int shift) override;
};

class Frame : public CaptionControl {
 public:
  using CaptionControl::CaptionControl;
  std::string_view Kind() const override { return "Frame"; }
};

class TextBox : public Control {
 public:
  using Control::Control;
  std::string_view Kind() const override { return "TextBox"; }

  // From the presenter: the user changed the text. Raises on_change.
  void Type(const std::string& text) override;

  const std::string& Text() const { return text_; }
  bool MultiLine() const { return multi_line_; }
  bool Locked() const { return locked_; }
  void SetText(std::string text);
  // How many characters are selected, from the first one on; another text has none.
  std::int32_t SelLength() const { return sel_length_; }
  void SelectAll();
  void SetMultiLine(bool on) { Assign(multi_line_, on, "MultiLine"); }
  void SetLocked(bool on) { Assign(locked_, on, "Locked"); }

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::string text_;
  std::int32_t sel_length_ = 0;
  bool multi_line_ = false;
  bool locked_ = false;
};

class CheckBox : public CaptionControl {
 public:
  using CaptionControl::CaptionControl;
  std::string_view Kind() const override { return "CheckBox"; }
  // Turns the value over: 0 clear, 1 checked.
  void Click() override;
  std::int32_t Value() const { return value_; }
  void SetValue(std::int32_t value);

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::int32_t value_ = 0;
};

// A drop-down list; each line carries a number of its own.
class ComboBox : public TypedControl {
 public:
  using TypedControl::TypedControl;
  std::string_view Kind() const override { return "ComboBox"; }

  struct Item {
    std::string text;
    std::int32_t data = 0;
  };

  // From the presenter: the user chose a line. Raises on_change and on_click.
  void Choose(std::int32_t index);
  // Typing chooses the line with this text, or else the only one that holds it, letters and digits
  // folded (FoldTyped); "#12" the line with that number; empty text takes the choice back.

  // The line that begins with these letters, searched from line `from` on and round; -1 for none.
  std::int32_t FindLine(const std::string& head, std::int32_t from) const;

  // An editable one takes any text, which needs to be none of its lines.
  bool Editable() const { return editable_; }
  void SetEditable(bool on) { Assign(editable_, on, "Editable"); }
  // The whole text of an editable one is marked, so that typing takes its place.
  void SelectAll() { Changed("SelectAll"); }

  const std::vector<Item>& Items() const { return items_; }
  std::int32_t ListCount() const { return static_cast<std::int32_t>(items_.size()); }
  std::int32_t ListIndex() const { return list_index_; }  // from 0, -1 for none
  std::string Text() const;
  // Throws Error(kSubscript) outside the list, as the other members with an index do.
  const Item& At(std::int32_t index) const;
  void SetListIndex(std::int32_t index);
  void AddItem(std::string text, std::int32_t data = 0);
  void Clear();

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;

 private:
  void TakeAnyText(const std::string& text);

  std::vector<Item> items_;
  std::int32_t list_index_ = -1;
  bool editable_ = false;
  std::string typed_;  // the text of an editable one, of a line or not
};

// Tells that time has passed: while it is enabled and its form is on the screen.
class Timer : public Control {
 public:
  using Control::Control;
  std::string_view Kind() const override { return "Timer"; }

  // From the presenter: the interval has passed once more.
  void Elapse();

  std::int32_t Interval() const { return interval_; }  // milliseconds
  void SetInterval(std::int32_t milliseconds) { Assign(interval_, milliseconds, "Interval"); }

  std::function<void()> on_timer;

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::int32_t interval_ = 100;
};

// How far a run has come, from 0 to 100.
class VorekProgressBar : public Control {
 public:
  using Control::Control;
  std::string_view Kind() const override { return "VorekProgressBar"; }
  std::int32_t Value() const { return value_; }
  void SetValue(std::int32_t value) { Assign(value_, value, "Value"); }

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::int32_t value_ = 0;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_BASIC_CONTROLS_H_
