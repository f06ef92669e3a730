#include "export/access_export.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "export/form_access.h"
#include "export/plain_money.h"
#include "platform/attempt.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/access_file.h"

namespace vorek {
namespace {

constexpr const char* kText = "10";  // the type of a text field

std::string ConnectionOf(const std::string& path) {
  return "Provider=Microsoft.Jet.OLEDB.4.0;Password=\"\";User ID=Admin;Data Source=\"" + path +
         "\";Mode=Share Deny None;Extended Properties=\"\";Jet OLEDB:System database=\"\";"
         "Jet OLEDB:Registry Path=\"\";Jet OLEDB:Database Password=\"\";Jet OLEDB:Engine Type=5;"
         "Jet OLEDB:Database Locking Mode=0;Jet OLEDB:Global Partial Bulk Ops=2;"
         "Jet OLEDB:Global Bulk Transactions=1;Jet OLEDB:New Database Password=\"\";"
         "Jet OLEDB:Create System Database=False;Jet OLEDB:Encrypt Database=False;"
         "Jet OLEDB:Don't Copy Locale on Compact=False;"
         "Jet OLEDB:Compact Without Replica Repair=False;Jet OLEDB:SFP=False";
}

// A mapped field with the grid column that fills it.
struct Filled {
  const MappedField& field;
  std::int32_t column;
  bool is_text;
  bool grouped;  // all of the column's texts have their digits in groups
};

std::int32_t GridColumn(const Grid& grid, const MappedField& field) {
  const std::int32_t n = field.ReportColumn;
  std::int32_t column = n;
  for (std::int32_t c = 0; c < std::min(n, grid.Cols()); ++c) column += grid.ColWidth(c) == 0;
  if (n >= 0 && n < grid.Cols() && column < grid.Cols()) return column;
  throw Error(ErrorNumber::kSubscript, "ستون " + field.Description + " که در فيلد " +
                                           field.FieldName + " نام برده شده، در گزارش نيست.");
}

std::vector<Filled> FilledFields(const Grid& grid, const ColumnMappingTable& mapping) {
  std::vector<Filled> fields;
  for (const MappedField& field : mapping) {
    if (field.FieldName.empty()) continue;
    const std::int32_t column = GridColumn(grid, field);
    const bool grouped = column > 0 && LooksLikeMoney(grid, column);
    fields.push_back({field, column, field.FieldType == kText, grouped});
  }
  return fields;
}

std::string ValueOf(const Filled& filled, std::string_view cell) {
  const std::string text = filled.grouped ? UnformatNumber(cell) : std::string(cell);
  if (!filled.is_text) return text::ExactNumber(UnformatNumber(text));
  const auto size = static_cast<std::size_t>(std::max(filled.field.FieldSize, 0));
  return "'" + text::Left(text, size) + "'";
}

void InsertRows(const Grid& grid, const std::vector<Filled>& fields, const std::string& table,
                AccessConnection& connection) {
  std::vector<std::string> names;
  for (const Filled& filled : fields) names.push_back(filled.field.FieldName);
  if (names.empty()) return;
  std::vector<std::string> values(fields.size());
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.AskAt(row);
    for (std::size_t i = 0; i < fields.size(); ++i) {
      values[i] = ValueOf(fields[i], grid.CellView(row, fields[i].column, scratch));
    }
    connection.Insert(table, names, values);
  }
}

void Send(ReportContext& report) {
  const Grid& grid = report.flxMain;
  std::string file_name;
  std::string table;
  if (report.process.services.access_file == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "در اين برنامه فايل اکسس نوشته نمي شود.");
  }
  FormAccess form(report.process, report.notices);
  if (!form.getAccessFileTemplate(file_name, table)) return;
  const std::vector<Filled> fields = FilledFields(grid, report.process.main.ColumnMapping);
  const auto connection = report.process.services.access_file->Open(ConnectionOf(file_name));
  if (const auto error = Attempt([&] { InsertRows(grid, fields, table, *connection); })) {
    // The rows before a refused one stay; a failure of Close is told instead: the file is then as
    // it was. What stopped in the midst of a row for want of memory isn't written.
    if (!error->Is(ErrorNumber::kOutOfMemory)) connection->Close();
    throw Error(*error);
  }
  connection->Close();
  report.notices.ShowMessage("موفقيت", "عمل انتقال به اکسس با موفقيت انجام شد.");
}

}  // namespace

void ExportAccess(ReportContext& report) {
  const auto error = Attempt([&] {
    const Grid& grid = report.flxMain;
    if (grid.Rows() < 2 || grid.TextMatrix(1, 0).empty()) {
      report.notices.ShowMessage("اشکال", "گزارش بدون محتوا است!");
      return;
    }
    Send(report);
  });
  if (error) report.notices.ShowMessage("اشکال در انتقال به اکسس", error->Description());
}

}  // namespace vorek
