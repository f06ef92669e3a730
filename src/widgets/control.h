#ifndef VOREK_WIDGETS_CONTROL_H_
#define VOREK_WIDGETS_CONTROL_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

class Control;

// What a presenter is told about a tree of controls. It is set on the root and hears of the whole
// tree; what it is told suffices to keep a mirror of it.
class ControlObserver {
 public:
  virtual ~ControlObserver() = default;

  // The property of that name has another value now. "Cells" stands for any text of a grid.
  virtual void PropertyChanged(Control& control, std::string_view property) = 0;
  virtual void ChildAdded(Control& child) = 0;
  virtual void ChildRemoved(Control& child) = 0;  // still whole, gone after the call
  virtual void FocusSet(Control& control) = 0;
  // The root itself is going; its children are gone already. Nothing may be asked of it any more.
  virtual void RootGone() {}
};

// A property or method as a script reaches it: by name, with arguments and values as texts.
struct PropertyEntry {
  std::string_view name;
  std::function<std::string(Control&, const std::vector<std::string>& arguments)> get;
  std::function<void(Control&, const std::vector<std::string>& arguments, const std::string&)> set;
};
using PropertyTable = std::vector<PropertyEntry>;

// The base of every form and control: a plain object with a name in a tree, without a screen. A
// presenter shows it and feeds its events; a script and a test drive it by the same calls.
//
// Measures are twips (1/1440 inch) from the left and top of the parent. A parent doesn't own its
// children: they are members of the form, or of a ControlArray, and must not outlive it.
class Control {
 public:
  // parent may be null for a root. index is the number in a control array, -1 for none.
  Control(Control* parent, std::string name, int index = -1);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // --- Events from the presenter -------------------------------------------------------------

  // Buttons are 1 left, 2 right; shift is a sum of 1 Shift, 2 Ctrl, 4 Alt; x and y in twips.
  virtual void Click();
  virtual void DblClick();
  virtual void KeyDown(int key_code, int shift);
  // True if a handler did the work of the last key: the presenter does nothing more with it.
  bool KeyTaken() const { return key_taken_; }
  virtual void KeyPress(char32_t character);
  // The user typed a text in place of the old one and left the field. Throws Error(kInvalidCall)
  // for a control that takes no typing.
  virtual void Type(const std::string& text);
  virtual void MouseDown(int button, int shift, double x, double y);
  virtual void MouseMove(int button, int shift, double x, double y);
  virtual void GotFocus();
  void LostFocus();

  // --- State for the presenter ---------------------------------------------------------------

  const std::string& Name() const { return name_; }
  int Index() const { return index_; }
  // The name as a path writes it: "cmdOk", "txt(1)".
  std::string PathName() const;
  // From the root down, joined by "."; frames that only hold controls are left out.
  std::string Path() const;
  // The kind of control: "Label", "VorekDate".
  virtual std::string_view Kind() const = 0;

  Control* Parent() const { return parent_; }
  Control& Root();
  const Control& Root() const;
  const std::vector<Control*>& Children() const { return children_; }
  // Follows a path below this control ("cmdOk", "panel.txt(1)", a name in any case); each name may
  // lie any number of frames deep, the nearest counts. Null if nothing is there.
  Control* Find(std::string_view path);

  std::int32_t Left() const { return left_; }
  std::int32_t Top() const { return top_; }
  std::int32_t Width() const { return width_; }
  std::int32_t Height() const { return height_; }
  bool Visible() const { return visible_; }
  bool Enabled() const { return enabled_; }
  bool RightToLeft() const { return right_to_left_; }
  const std::string& Tag() const { return tag_; }
  const std::string& ToolTipText() const { return tool_tip_; }
  std::int32_t TabIndex() const { return tab_index_; }
  bool TabStop() const { return tab_stop_; }

  // The property's value as text ("True" and "False" for Booleans). Throws Error(kItemNotFound)
  // for a name that this kind of control doesn't have.
  std::string Get(std::string_view property, const std::vector<std::string>& arguments = {});
  // Throws Error(kItemNotFound), or Error(kInvalidCall) for one that can't be assigned.
  void Set(std::string_view property, const std::string& value,
           const std::vector<std::string>& arguments = {});
  bool Has(std::string_view property) const { return Entry(property) != nullptr; }
  std::vector<std::string_view> PropertyNames() const;

  // --- Changes by the program, told to the presenter -------------------------------------------

  void SetLeft(std::int32_t twips);
  void SetTop(std::int32_t twips);
  void SetWidth(std::int32_t twips);
  void SetHeight(std::int32_t twips);
  void Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height);
  void SetVisible(bool visible);
  void SetEnabled(bool enabled);
  void SetRightToLeft(bool on);
  void SetTag(std::string tag);
  void SetToolTipText(std::string text);
  void SetTabIndex(std::int32_t index);
  void SetTabStop(bool on);
  // From a handler of KeyDown: the key has done its work.
  void TakeKey() { key_taken_ = true; }
  // Makes this the active control of its root.
  void SetFocus();
  // Brings the control in front of its siblings.
  void ZOrder();
  Control* ActiveControl() const { return active_; }  // of a root; null for none

  // Set on a root; null for none. Not owned: it must outlive the tree or be taken away.
  void SetObserver(ControlObserver* observer) { observer_ = observer; }
  // That of the control's root.
  ControlObserver* Observer() const;

  // --- Callbacks to the owner ------------------------------------------------------------------

  std::function<void()> on_click;
  std::function<void()> on_dblclick;
  std::function<void(int key_code, int shift)> on_key_down;
  std::function<void(int button, int shift, double x, double y)> on_mouse_down;
  std::function<void(int button, int shift, double x, double y)> on_mouse_move;
  std::function<void()> on_got_focus;
  std::function<void()> on_lost_focus;
  std::function<void()> on_change;
  std::function<void()> on_resize;

 protected:
  // The properties of this kind beside those that every control has.
  virtual const PropertyTable& OwnProperties() const;
  // Tells the observer of the root.
  void Changed(std::string_view property);
  // Assigns and tells, if the value differs; true if it did.
  template <typename T>
  bool Assign(T& field, T value, std::string_view property) {
    if (field == value) return false;
    field = std::move(value);
    Changed(property);
    return true;
  }

 private:
  const PropertyEntry* Entry(std::string_view property) const;
  Control* Descendant(std::string_view path_name);

  Control* parent_;
  std::string name_;
  int index_;
  std::vector<Control*> children_;
  ControlObserver* observer_ = nullptr;
  Control* active_ = nullptr;
  std::int32_t left_ = 0;
  std::int32_t top_ = 0;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  std::int32_t tab_index_ = 0;
  bool tab_stop_ = true;
  bool visible_ = true;
  bool enabled_ = true;
  bool right_to_left_ = false;
  bool key_taken_ = false;
  std::string tag_;
  std::string tool_tip_;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_CONTROL_H_
