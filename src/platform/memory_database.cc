#include "platform/memory_database.h"

#include <algorithm>
#include <utility>

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

using Storage = ResultColumn::Storage;

ResultColumn EmptyColumn(const MemoryColumn& column) {
  switch (column.ado_type) {
    case kSmallInt:
    case kInteger:
    case kBoolean:
    case kUnsignedTinyInt:
    case kBigInt:
      return {column.name, column.ado_type, Storage::kScaled};
    case kCurrency:
      return {column.name, column.ado_type, Storage::kScaled, 4};
    case kSingle:
    case kDouble:
      return {column.name, column.ado_type, Storage::kDouble};
    default:
      return {column.name, column.ado_type, Storage::kText};
  }
}

// "12.5" at four decimal places is 125000.
std::int64_t ScaledValue(const std::string& text, int scale) {
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string digits = text.substr(0, point);
  std::string decimals = point < text.size() ? text.substr(point + 1) : "";
  decimals.resize(static_cast<std::size_t>(scale), '0');
  return std::stoll(digits + decimals);
}

void AppendValue(ResultColumn& column, const std::optional<std::string>& value) {
  if (!value) {
    column.AppendNull();
  } else if (column.Kind() == Storage::kText) {
    column.AppendText(*value);
  } else if (column.Kind() == Storage::kDouble) {
    column.AppendDouble(text::NumericPrefix(*value));
  } else {
    column.AppendScaled(ScaledValue(*value, column.Scale()));
  }
}

class MemoryConnection : public DatabaseConnection {
 public:
  explicit MemoryConnection(MemoryDatabase& database) : database_(database) {}
  ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override {
    return database_.Run(text, options);
  }
  void Cancel() noexcept override {}

 private:
  MemoryDatabase& database_;
};

ResultSetPtr Damaged(const ResultSetPtr& result, const MemoryDatabase::Fault& fault) {
  auto damaged = std::make_shared<ResultSet>(*result);
  std::erase_if(damaged->columns,
                [&](const ResultColumn& column) { return column.Name() == fault.missing_column; });
  for (ResultColumn& column : damaged->columns) {
    if (column.Name() == fault.retyped_column) column.ConvertToText();
  }
  return damaged;
}

void RaiseFault(const MemoryDatabase::Fault& fault, const ResultSetPtr& result) {
  if (fault.error_number) throw Error(*fault.error_number, fault.error_text);
  if (fault.busy) throw Error(ErrorNumber::kTimeout, "Timeout expired");
  if (fault.lost_at_row && result != nullptr && *fault.lost_at_row <= result->rows) {
    throw Error(ErrorNumber::kConnection, "The connection was lost.");
  }
}

}  // namespace

ResultSetPtr MakeResult(const std::vector<MemoryColumn>& columns,
                        const std::vector<MemoryRow>& rows) {
  auto result = std::make_shared<ResultSet>();
  for (const MemoryColumn& column : columns) result->columns.push_back(EmptyColumn(column));
  for (const MemoryRow& row : rows) {
    for (std::size_t i = 0; i < columns.size(); ++i) AppendValue(result->columns[i], row.at(i));
  }
  result->rows = rows.size();
  return result;
}

void MemoryDatabase::Answer(std::string part, ResultSetPtr result) {
  answers_.emplace_back(std::move(part), std::move(result));
}

void MemoryDatabase::SetFault(std::string part, Fault fault) {
  faults_.emplace_back(std::move(part), std::move(fault));
}

bool MemoryDatabase::Answers(std::string_view provider_name) const {
  return text::EqualsIgnoreCase(provider_name, "VorekMemory");
}

std::unique_ptr<DatabaseConnection> MemoryDatabase::Connect(std::string_view) {
  if (!reachable) throw Error(ErrorNumber::kConnection, "The server can't be reached.");
  ++connections_;
  return std::make_unique<MemoryConnection>(*this);
}

const MemoryDatabase::Fault* MemoryDatabase::FindFault(std::string_view text) const {
  const auto found = std::find_if(faults_.rbegin(), faults_.rend(), [&](const auto& fault) {
    return text::ContainsIgnoreCase(text, fault.first);
  });
  return found == faults_.rend() ? nullptr : &found->second;
}

ResultSetPtr MemoryDatabase::Run(std::string_view text, const ExecuteOptions& options) {
  texts_.emplace_back(text);
  const auto found = std::find_if(answers_.rbegin(), answers_.rend(), [&](const auto& answer) {
    return text::ContainsIgnoreCase(text, answer.first);
  });
  const Fault* const fault = FindFault(text);
  const ResultSetPtr result = found == answers_.rend() ? nullptr : found->second;
  if (fault != nullptr) RaiseFault(*fault, result);
  if (found == answers_.rend()) {
    throw Error(ErrorNumber::kMissingObject, "Invalid object name: " + std::string(text));
  }
  if (result != nullptr && options.progress && !options.progress(result->rows)) {
    throw Error(ErrorNumber::kCancelled, "Operation was cancelled");
  }
  return fault != nullptr && result != nullptr ? Damaged(result, *fault) : result;
}

}  // namespace vorek
