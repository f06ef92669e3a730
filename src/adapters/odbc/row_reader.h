#ifndef VOREK_ADAPTERS_ODBC_ROW_READER_H_
#define VOREK_ADAPTERS_ODBC_ROW_READER_H_

#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "adapters/odbc/column_plan.h"
#include "adapters/odbc/driver_traits.h"
#include "vorek/result_set.h"

namespace vorek::odbc {

// Reads the row set that stands open on a statement, block by block.
class RowReader {
 public:
  // Called after each block with what is read so far; it throws to stop.
  using OnBlock = std::function<void(const ResultSet& read)>;

  // Throws what the statement says of its last call, unless that is mere information.
  using OnTrouble = std::function<void(SQLRETURN code)>;

  RowReader(SQLHANDLE statement, const DriverTraits& traits, OnTrouble on_trouble);
  ~RowReader();

  ResultSetPtr Read(SQLSMALLINT columns, const OnBlock& on_block);

 private:
  struct Column {
    ColumnPlan plan;
    std::vector<unsigned char> buffer;
    std::vector<SQLLEN> lengths;
    bool bound = false;
  };

  void Prepare(SQLSMALLINT count);
  void ChooseBlock();
  void Bind();
  void AppendBlock(std::size_t rows);
  void AppendBound(std::size_t index, std::size_t row);
  void AppendDecoded(const ColumnPlan& plan, const unsigned char* value, std::size_t length,
                     ResultColumn& out);
  void AppendInPieces(std::size_t index);
  void Reread(std::size_t index, std::size_t row);
  bool IsCut(const Column& column, SQLLEN length) const;
  void Check(SQLRETURN code) const;

  SQLHANDLE statement_;
  DriverTraits traits_;
  OnTrouble on_trouble_;
  std::vector<Column> columns_;
  std::size_t block_ = 1;
  SQLULEN fetched_ = 0;
  std::string text_;  // reused for each value
  std::shared_ptr<ResultSet> result_ = std::make_shared<ResultSet>();
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_ROW_READER_H_
