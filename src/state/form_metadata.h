#ifndef VOREK_STATE_FORM_METADATA_H_
#define VOREK_STATE_FORM_METADATA_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vorek {

// The grid columns of the form type and the key of a row's form; 0 stands for one that isn't known
// by now.
struct FormColumnCache {
  std::int32_t FormTypeColumn = 0;  // of flxMain
  std::int32_t FormKeyColumn = 0;
  std::int32_t CacheReportID = -1;  // the report that they belong to
  std::int32_t TransposeFormTypeColumn = 0;
  std::int32_t TransposeFormKeyColumn = 0;
};

// A column of the primary key of a form's master table.
struct KeyField {
  std::string table;
  std::string name;
  std::string type;  // of SQL
};

// The query of a report as the catalogue holds it, with the part that is kept apart.
struct StoredQuery {
  std::string text;
  std::string procedure;                   // "" for a report without one
  std::optional<std::string> select_list;  // in capitals
};

// What the forms behind the rows of the loaded report need of the metadata. Each piece is read
// when it is first asked for and kept as long as the report is loaded, so that moving through rows
// asks the database nothing.
struct FormMetadata {
  std::optional<StoredQuery> query;
  std::map<std::int32_t, std::vector<KeyField>> keys;       // by form type
  std::map<std::int32_t, std::vector<std::string>> tables;  // that a form type edits
  std::map<std::int32_t, std::string> master_tables;        // of form types with a component
  // Grid columns of key fields in the query that ran, by "table.name".
  std::string columns_of;
  std::map<std::string, std::int32_t> columns;
};

}  // namespace vorek

#endif  // VOREK_STATE_FORM_METADATA_H_
