#ifndef VOREK_PARAMETERS_PARAMETER_KIND_H_
#define VOREK_PARAMETERS_PARAMETER_KIND_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "parameters/parameter_widgets.h"

namespace vorek {

// What a widget holds: the text that a query understands, and the one that a person reads.
struct ParameterReading {
  std::string query_value;
  std::string display_value;
};

// A kind of parameter, by ControlTypeID: which array its widget is of, how it is placed, set up,
// read and emptied.
struct ParameterKind {
  std::int32_t control_type;
  std::string_view array;
  std::int32_t extra_cells;  // reserved beside ColSpan, for nothing that is drawn
  bool height_follows;       // RowSpan
  bool width_follows;        // the cell
  // given_value stands for "#" in a WhereClause.
  Control& (*load)(ParameterWidgets& widgets, const ParameterRow& row, std::int32_t given_value);
  ParameterReading (*read)(Control& widget);
};

// Null for a number that stands for no kind.
const ParameterKind* FindKind(std::int32_t control_type);

// Nothing is entered or chosen. Never so for a check box and a label.
bool IsEmptyWidget(Control& widget);

// Puts a widget back to its empty state; a picker panel and a label stay as they are.
void ResetWidget(Control& widget);

}  // namespace vorek

#endif  // VOREK_PARAMETERS_PARAMETER_KIND_H_
