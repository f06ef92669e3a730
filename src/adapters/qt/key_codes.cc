#include "adapters/qt/key_codes.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace vorek::qt {
namespace {

struct KeyNumber {
  int key;
  int number;
};
constexpr KeyNumber kKeys[] = {
    {Qt::Key_Return, 13}, {Qt::Key_Enter, 13}, {Qt::Key_Escape, 27},   {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9}, {Qt::Key_Space, 32}, {Qt::Key_Backspace, 8}, {Qt::Key_PageUp, 33},
    {Qt::Key_End, 35},    {Qt::Key_Home, 36},  {Qt::Key_Left, 37},     {Qt::Key_PageDown, 34},
    {Qt::Key_Up, 38},     {Qt::Key_Right, 39}, {Qt::Key_Down, 40},     {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46}, {Qt::Key_Shift, 16}, {Qt::Key_Control, 17},  {Qt::Key_Alt, 18},
    {Qt::Key_Menu, 93},   {Qt::Key_Pause, 19}, {Qt::Key_CapsLock, 20}, {Qt::Key_Print, 44}};

// The letters by the hardware codes of X11 and Wayland, in rows of the keyboard.
int LetterByPlace(quint32 scan_code) {
  struct Row {
    quint32 first;
    std::string_view letters;
  };
  constexpr Row kRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
  for (const Row& row : kRows) {
    if (scan_code >= row.first && scan_code < row.first + row.letters.size()) {
      return row.letters[scan_code - row.first];
    }
  }
  return 0;
}

}  // namespace

int KeyCode(const QKeyEvent& event) {
  const int key = event.key();
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
  const auto* const found = std::find_if(std::begin(kKeys), std::end(kKeys),
                                         [&](const KeyNumber& known) { return known.key == key; });
  return found != std::end(kKeys) ? found->number : LetterByPlace(event.nativeScanCode());
}

int ShiftState(Qt::KeyboardModifiers modifiers) {
  return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) |
         (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) |
         (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int ButtonNumber(Qt::MouseButton button) {
  if (button == Qt::LeftButton) return 1;
  if (button == Qt::RightButton) return 2;
  return button == Qt::MiddleButton ? 4 : 0;
}

}  // namespace vorek::qt
