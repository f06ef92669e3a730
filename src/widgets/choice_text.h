#ifndef VOREK_WIDGETS_CHOICE_TEXT_H_
#define VOREK_WIDGETS_CHOICE_TEXT_H_

#include <string>

#include "widgets/list_control.h"

namespace vorek {

// What a list control says of its choice, in a line; "" without one.
std::string ChoiceText(const ListControl& list);

}  // namespace vorek

#endif  // VOREK_WIDGETS_CHOICE_TEXT_H_
