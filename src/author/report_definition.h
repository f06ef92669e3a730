#ifndef VOREK_AUTHOR_REPORT_DEFINITION_H_
#define VOREK_AUTHOR_REPORT_DEFINITION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "author/finding.h"
#include "parameters/parameter_row.h"
#include "state/process.h"

namespace vorek {

// A parameter with what it follows.
struct DefinedParameter {
  ParameterRow row;
  std::int32_t follows_form = -1;    // DepOnParameterIDForm; -1 for none
  std::int32_t follows_object = -1;  // DepOnParameterIDObject
};

struct LayoutRow {
  std::int32_t column = 0;
  std::optional<std::int32_t> alignment;
  std::optional<std::int32_t> width;
  std::int32_t merge_type = -1;
  std::int32_t transpose_type = -1;
};

struct ExpressionRow {
  std::int32_t number = 0;  // ColumnNumber, which only orders them
  std::string name;
  std::string general;
  std::optional<std::string> first_row;
};

struct LinkRow {
  std::string called;     // CalledReportID
  std::string column;     // CallerReportColumn, trimmed
  std::string parameter;  // CalledParameterID
};

// All rows of the catalogue that make a report, as they are stored.
struct ReportDefinition {
  std::int32_t id = 0;
  bool found = false;
  std::string title;
  std::string sql_query;
  std::string reserved;
  std::string sql_sp;
  bool procedure = false;
  std::int32_t tree = 0;  // MakeTree
  bool cross = false;
  bool fold = false;
  bool secure = false;
  bool popup = false;
  std::int32_t form_type = -1;
  std::vector<DefinedParameter> parameters;  // by ParameterID
  std::vector<LayoutRow> layout;             // by ColumnNumber
  std::vector<ExpressionRow> expressions;    // in their order
  std::vector<LinkRow> links;

  // The query with its markers.
  std::string Query() const;
  // Where a byte of it stands in the catalogue.
  Place PlaceInQuery(std::size_t offset) const;
  // The query as a whole.
  Place WholeQuery() const;
};

// Columns that an older database lacks read as NULL. Throws what the database throws.
ReportDefinition ReadDefinition(Process& process, std::int32_t report_id);

// The line and column of a byte in a text.
void SetPlace(Place& place, const std::string& text, std::size_t offset);

}  // namespace vorek

#endif  // VOREK_AUTHOR_REPORT_DEFINITION_H_
