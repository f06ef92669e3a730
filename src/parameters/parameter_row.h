#ifndef VOREK_PARAMETERS_PARAMETER_ROW_H_
#define VOREK_PARAMETERS_PARAMETER_ROW_H_

#include <cstdint>
#include <string>
#include <vector>

#include "catalog/data_session.h"
#include "vorek/windows.h"

namespace vorek {

// A parameter of a report as the catalogue tells it. NULL reads as an empty text.
struct ParameterRow {
  std::int32_t parameter_id = 0;
  std::string name;
  std::string description;
  std::int32_t control_type = -1;
  std::string type;  // of the column that it is compared with, in small letters
  std::int32_t col_span = 1;
  std::int32_t row_span = 1;
  bool has_spans = true;  // false if one of them is NULL
  bool visible = true;
  std::string major_view;
  std::string minor_view;
  std::string where_clause;
  std::string order_clause;

  std::string Id() const { return std::to_string(parameter_id); }
  std::string Marker() const { return "@" + Id(); }
};

// In the form's order, and in that of the confirmation: a longer number before its head, 12 before
// 1. Leave the slot closed. Throw what the database throws.
std::vector<ParameterRow> ReadFormRows(Recordset& slot, std::int32_t report_id);
std::vector<ParameterRow> ReadConditionRows(Recordset& slot, std::int32_t report_id);

// The number of column pairs of the report's form: 1 without a row, 0 for NULL.
std::int32_t ReadColumnCount(Recordset& slot, std::int32_t report_id);

// The width in twips of the label part of a cell: that of the longest name. column_width is used
// for a report without parameters.
std::int32_t ReadLabelWidth(Recordset& slot, std::int32_t report_id, const Windows& windows,
                            std::int32_t column_width);

}  // namespace vorek

#endif  // VOREK_PARAMETERS_PARAMETER_ROW_H_
