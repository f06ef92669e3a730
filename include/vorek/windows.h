#ifndef VOREK_WINDOWS_H_
#define VOREK_WINDOWS_H_

#include <cstdint>
#include <string_view>

namespace vorek {

class Control;
class Form;
class Menu;

// A point on the screen in pixels, from its left and top.
struct ScreenPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

// In twips.
struct ScreenSize {
  std::int32_t width = 0;
  std::int32_t height = 0;
};

// The screen. A form is a plain object; this port shows it and feeds the user's events to it.
class Windows {
 public:
  virtual ~Windows() = default;

  // Shows the form and returns when it isn't shown any more (Form::Hide or Form::Unload).
  virtual void ShowModal(Form& form) = 0;
  virtual void Show(Form& form) = 0;

  // Opens a pop-up menu at the pointer and returns when it is closed; an entry that is chosen gets
  // its Click.
  virtual void PopupMenu(Menu& menu) = 0;

  // The width of a text on one line, in twips, in a control's font. size is in points; 0 or less
  // stands for the font's own size.
  virtual std::int32_t TextWidth(std::string_view text, double size) const = 0;

  // The pointer's shape: 0 default, 11 hourglass.
  virtual void SetMousePointer(int shape) = 0;

  // Tells in a line that the user cancelled what ran. False if no user of this screen did, or if
  // it has no place for a line: the failure is then told like any other.
  virtual bool TellCancelled(std::string_view /*line*/) { return false; }

  // A long pass over rows begins and ends (PassWatch). Between them PassGoesOn, asked every few
  // milliseconds, lets the screen paint and take the wish to cancel, and nothing else; false if its
  // user has that wish. Of the same world
  // it may run other code only by painting.
  virtual void BeginPass() {}
  virtual bool PassGoesOn() { return true; }
  virtual void EndPass() {}

  // A tone of so many hertz for so many milliseconds, or the sound that the system has for it.
  virtual void Beep(std::int32_t frequency, std::int32_t duration) = 0;

  // Where the control's left upper corner lies; 0, 0 for one that isn't on the screen.
  virtual ScreenPoint ClientToScreen(const Control& control) const = 0;
  virtual double TwipsPerPixel() const = 0;
  // The room that the screen has for windows, in twips.
  virtual ScreenSize Size() const = 0;

  // Takes a keyboard layout into use, by its name of eight hexadecimal digits. Only some systems
  // know these names; elsewhere the user's layout stays.
  virtual void LoadKeyboardLayout(std::string_view name) = 0;

  // The major version that Windows tells of itself, 0 on another system.
  virtual int OsMajorVersion() const = 0;
};

}  // namespace vorek

#endif  // VOREK_WINDOWS_H_
