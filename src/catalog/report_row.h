#ifndef VOREK_CATALOG_REPORT_ROW_H_
#define VOREK_CATALOG_REPORT_ROW_H_

#include <cstdint>
#include <string>
#include <vector>

#include "catalog/data_session.h"

// One place that knows the metadata tables of reports: their columns, which of them are optional in
// an older database, and what stands for NULL.
namespace vorek {

// Reading rules of the catalogue. A column that is missing raises Error(kItemNotFound).
std::string TextOf(const Recordset& row, const char* column);            // NULL gives ""
bool FlagOf(const Recordset& row, const char* column, bool null_value);  // NULL gives null_value
std::int32_t NumberOf(const Recordset& row, const char* column);         // NULL or blank gives -1

// "select * from tblVorekReport where ID =" and the number.
std::string ReportRowQuery(std::int32_t report_id);

// The layout rows as a run reads them, in no fixed order, and as the definition's load does.
std::string RunLayoutQuery(std::int32_t report_id);
std::string StoredLayoutQuery(std::int32_t report_id);
std::string TransposeLayoutQuery(std::int32_t report_id);
// The same as a finished cross table reads it, up to its last column.
std::string CrossTableQuery(std::int32_t report_id, std::int32_t last_column);
// All columns of a layout, as AlignFlexes reads them.
std::string WholeLayoutQuery(std::int32_t report_id, bool transposed);

// The calculated columns of a report, in their order.
std::string ExpressionQuery(std::int32_t report_id);

// True if the switch of tblVorekSystemParameters is there with the value 1. Leaves the slot closed.
bool SystemParameter(Recordset& slot, std::int32_t id);

// A line of the catalogue, for lists.
struct CatalogEntry {
  std::int32_t id = 0;
  std::string title;
};
// All reports by number. Leaves the slot closed.
std::vector<CatalogEntry> ReadCatalog(Recordset& slot);

// A name for the reports of a range of numbers.
struct CatalogGroup {
  std::int32_t first = 0;
  std::int32_t last = 0;
  std::string title;
};
// Those of tblVorekReportGroup, by number; none where the database has no such table. Leaves the
// slot closed.
std::vector<CatalogGroup> ReadCatalogGroups(Recordset& slot);

}  // namespace vorek

#endif  // VOREK_CATALOG_REPORT_ROW_H_
