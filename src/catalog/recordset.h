#ifndef VOREK_CATALOG_RECORDSET_H_
#define VOREK_CATALOG_RECORDSET_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/data_connection.h"
#include "catalog/filter.h"
#include "vorek/result_set.h"

namespace vorek {

// The value of one field in one record. It must not outlive the open recordset.
class FieldValue {
 public:
  FieldValue(const ResultColumn& column, std::size_t row) : column_(column), row_(row) {}

  const std::string& Name() const { return column_.Name(); }
  int Type() const { return column_.AdoType(); }  // one of FieldType
  bool IsNull() const { return column_.IsNull(row_); }
  // As a text that is read by appending it to an empty one: "" for NULL.
  std::string Text() const { return column_.Display(row_); }
  // The value as a 32-bit number, halves to even. Throws Error(kNullUse) for NULL,
  // Error(kTypeMismatch) for a text that is no number, Error(kOverflow).
  std::int32_t Number() const;
  // True for a number other than 0 and for the text "True". Throws as Number does.
  bool Flag() const;

 private:
  const ResultColumn& column_;
  std::size_t row_;
};

// A static, client-side recordset under the names of ADO: a slot that is opened on a text, walked
// and closed. A filter stays over Close and Open, and is then applied to the new records.
class Recordset {
 public:
  // timeout_seconds is held for every statement of the slot. The connection must outlive it.
  Recordset(DataConnection& connection, int timeout_seconds)
      : connection_(connection), timeout_seconds_(timeout_seconds) {}

  const std::string& Source() const { return source_; }
  void SetSource(std::string text) { source_ = std::move(text); }

  // Runs the source; a statement without a row set leaves the slot closed. Throws
  // Error(kObjectOpen) if it is open, Error(kBadFilter) if the filter doesn't fit the new fields,
  // and what Execute throws.
  void Open();
  void Open(std::string text);
  // REQUIRES nothing: closing a closed slot has no effect.
  void Close();
  bool IsOpen() const { return result_ != nullptr; }
  int State() const { return IsOpen() ? 1 : 0; }

  // The members below throw Error(kObjectClosed) on a closed slot.

  std::int32_t RecordCount() const;  // of the records that the filter lets through
  bool AtEnd() const;                // ADO's EOF
  void MoveFirst();
  void MoveNext();  // throws Error(kNoCurrentRecord) at the end
  // From 1; 0 at the end.
  std::int32_t AbsolutePosition() const;
  void SetAbsolutePosition(std::int32_t position);

  std::size_t FieldCount() const { return Result().columns.size(); }
  const std::string& FieldName(std::size_t ordinal) const { return ColumnAt(ordinal).Name(); }
  int FieldType(std::size_t ordinal) const { return ColumnAt(ordinal).AdoType(); }
  // In the current record. Throws Error(kItemNotFound) for a name that isn't there, any case, and
  // Error(kNoCurrentRecord) at the end.
  FieldValue Field(std::string_view name) const;
  FieldValue Field(std::size_t ordinal) const;
  bool HasField(std::string_view name) const;

  // The filter's text, "0" for none. Assigning "" or "0" takes it away; a text that is refused
  // raises Error(kBadFilter) and leaves the old one. On a closed slot it is kept for the next Open.
  // The first record that is let through becomes the current one.
  const std::string& Filter() const { return filter_; }
  void SetFilter(std::string text);

  // For those that read whole columns: the result and, with a filter, the records let through
  // (null for all).
  ResultSetPtr SharedResult() const { return result_; }
  std::shared_ptr<const std::vector<std::uint32_t>> SharedRecords() const { return records_; }

 private:
  const ResultSet& Result() const;
  const ResultColumn& ColumnAt(std::size_t ordinal) const;
  std::size_t Count() const;
  std::size_t CurrentRow() const;
  std::shared_ptr<const std::vector<std::uint32_t>> Select(const std::string& filter);
  void Lookup(const RecordFilter::KeyTest& test, std::vector<std::uint32_t>& rows);

  DataConnection& connection_;
  int timeout_seconds_;
  std::string source_;
  std::string filter_ = "0";
  ResultSetPtr result_;
  std::shared_ptr<const std::vector<std::uint32_t>> records_;
  std::size_t position_ = 0;  // among the records let through
  std::optional<KeyIndex> index_;
  std::size_t index_column_ = 0;
};

}  // namespace vorek

#endif  // VOREK_CATALOG_RECORDSET_H_
