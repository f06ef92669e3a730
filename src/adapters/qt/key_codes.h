#ifndef VOREK_ADAPTERS_QT_KEY_CODES_H_
#define VOREK_ADAPTERS_QT_KEY_CODES_H_

#include <QKeyEvent>

// The numbers that controls know keys and buttons by.
namespace vorek::qt {

// 13 Enter, 27 Escape, 65 to 90 the letters by their places on a Latin keyboard whatever layout is
// active, 112 F1, and so on; 0 for a key without a number.
int KeyCode(const QKeyEvent& event);

// A sum of 1 Shift, 2 Ctrl, 4 Alt.
int ShiftState(Qt::KeyboardModifiers modifiers);

// 1 left, 2 right, 4 middle.
int ButtonNumber(Qt::MouseButton button);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_KEY_CODES_H_
