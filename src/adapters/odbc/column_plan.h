#ifndef VOREK_ADAPTERS_ODBC_COLUMN_PLAN_H_
#define VOREK_ADAPTERS_ODBC_COLUMN_PLAN_H_

#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <string>
#include <vector>

#include "vorek/result_set.h"

namespace vorek::odbc {

// What the driver says of a column.
struct ColumnDescription {
  std::string name;
  std::string type_name;  // the server's own, as "money"
  SQLSMALLINT type = SQL_UNKNOWN_TYPE;
  SQLULEN size = 0;  // characters, bytes or digits; 0 for without bound
  SQLSMALLINT scale = 0;
};
std::vector<ColumnDescription> DescribeColumns(SQLHANDLE statement, SQLSMALLINT count,
                                               bool unicode);

// How a column is asked for and kept.
struct ColumnPlan {
  int ado_type = 0;
  ResultColumn::Storage storage = ResultColumn::Storage::kText;
  int scale = 0;
  SQLSMALLINT c_type = SQL_C_WCHAR;
  std::size_t width = 0;  // bytes of one value in a bound buffer, its end included
  bool is_long = false;   // can't be bound whole: read piece by piece
};

// True for a decimal, which comes as a text; its column may have become one of texts.
bool IsExact(const ColumnPlan& plan);

// True if a value's length varies and its buffer may be too short for it.
bool IsVariable(const ColumnPlan& plan);

// unicode: the driver gives texts as UTF-16; one that doesn't gives their bytes, UTF-8.
ColumnPlan PlanColumn(const ColumnDescription& column, bool unicode);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_COLUMN_PLAN_H_
