#ifndef VOREK_EXPORT_H_
#define VOREK_EXPORT_H_

#include <cstdint>
#include <optional>
#include <string>

#include "vorek/chart_kind.h"
#include "vorek/report.h"

namespace vorek {

// How a report on show becomes a file, without a question to the user.
struct ExportOptions {
  // Where it goes, UTF-8; an old file there stays until the new one is whole. REQUIRED.
  std::string path;
  // "xlsx", "csv", "tsv", "txt", "json" or "html"; empty for what the path ends with.
  std::string format = {};

  // Opens the sub-rows of a cross table first, also on show: rows that are closed hold its values
  // and aren't written to xlsx, html and templates.
  bool open_sub_rows = false;

  // Of xlsx: a workbook to fill, by its path, or by its number among the report's templates (-1 for
  // none).
  std::string template_path = {};
  std::int32_t template_number = -1;

  // Of a new xlsx: a chart of the report behind its rows, as the office program draws it, with its
  // numbers beside it. turned: the sides of a cross table change places.
  std::optional<ChartKind> chart = {};
  bool chart_turned = false;

  // Of csv, tsv and txt.
  bool header = true;
  bool remove_money = false;     // money without digit groups and brackets
  bool guard = false;            // a text that would be taken for a formula begins with "'"
  std::string delimiter = "\t";  // of txt, behind each cell
};

// Writes the table that the report shows. Returns what the user should know of the file, or
// nothing. Throws Error, with a reason in Persian or the system's own; no part of a file is left
// then. A long export asks Windows::PassGoesOn now and then.
std::string ExportReport(VorekReport1& report, const ExportOptions& options);

}  // namespace vorek

#endif  // VOREK_EXPORT_H_
