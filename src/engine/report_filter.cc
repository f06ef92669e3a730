#include "engine/report_filter.h"

#include "catalog/filter.h"
#include "platform/attempt.h"
#include "text/utf8.h"
#include "totals/form_filter.h"

namespace vorek {
namespace {

void CheckFilter(const std::string& text, const std::vector<FieldInfo>& fields) {
  if (text::TrimView(text).empty()) return;
  ResultSet none;
  for (const FieldInfo& field : fields) {
    none.columns.emplace_back(field.name, field.type, field.storage, field.scale);
  }
  const RecordFilter filter(text, none);
}

// In a cross table the base columns alone are those of a field.
std::int32_t ChosenColumn(ReportControl& control) {
  if (!control.state.isTransposedResult) return control.flxMain.Col();
  const std::vector<std::int32_t>& bases = control.state.TransposeColumns;
  const auto base = static_cast<std::size_t>(control.flxTranspose.MouseCol()) - 1;
  return base < bases.size() ? bases[base] : -1;
}

const FieldInfo& ChosenField(ReportControl& control) {
  const std::int32_t column = ChosenColumn(control);
  const auto field = static_cast<std::size_t>(column) - 1;
  const std::vector<FieldInfo>& fields = control.state.QueryFields;
  if (field < fields.size()) return fields[field];
  throw Error(ErrorNumber::kItemNotFound, "There is no field in column " + std::to_string(column));
}

}  // namespace

void SetReportFilter(ReportControl& control, const std::string& text) {
  CheckFilter(text, control.state.QueryFields);
  control.state.Filter = text;
  control.state.FilterBinding = control.world.process.data.Binding();
  control.Refresh(false, "", "");
}

void mnuFilter_Click(ReportControl& control) {
  const std::optional<Error> error = Attempt([&] {
    const FieldInfo field = ChosenField(control);
    std::string text = control.state.Filter;
    FormFilter form(control.world.process.windows());
    if (form.getFilter(field.name, field.type, text)) SetReportFilter(control, text);
  });
  if (!error) return;
  control.world.messages.ShowMessage("عدم امکان فيلترينگ",
                                     "امکان فيلترينگ بر روي اين ستون وجود ندارد.");
}

}  // namespace vorek
