#ifndef VOREK_EXPORT_TEMPLATE_FILL_H_
#define VOREK_EXPORT_TEMPLATE_FILL_H_

#include <cstdint>
#include <string>

#include "export/plain_money.h"
#include "grid/report_context.h"
#include "vorek/output_file.h"

namespace vorek {

// The number of rows, header included, that show.
std::int32_t VisibleRowCount(const Grid& grid);
// The first row behind `row` that shows; -2 if there is none, or if `row` is below -1.
std::int32_t NextVisibleRow(const Grid& grid, std::int32_t row);

// Fills a stored workbook: "^n" becomes a parameter's value, a row that begins with "#n" somewhere
// is repeated for each row of the grid. Money stands in it as `money` writes it. Returns what the
// user should know, or nothing. Throws Error, in Persian, for a template that can't be used.
std::string FillExcelTemplate(ReportContext& report, Grid& grid, const std::string& templatePath,
                              const PlainMoney& money, OutputFile& out);

}  // namespace vorek

#endif  // VOREK_EXPORT_TEMPLATE_FILL_H_
