#ifndef VOREK_RESULT_SET_H_
#define VOREK_RESULT_SET_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/text_pool.h"

namespace vorek {

// One column of a result, kept typed and in chunks of rows, so that a million rows neither move
// while they grow nor cost an allocation each. Whole numbers and exact decimals are 64-bit integers
// with a scale, held in 32 bits where they fit, other numbers are doubles, everything else is text
// (bytes come as their hexadecimal text with "0x" in front, dates as "yyyy-mm-dd hh:mm:ss[.fff]").
//
// Rows are appended in order by the provider and read at random afterwards; a column that is being
// read isn't written any more, so that threads and controls may share it.
class ResultColumn {
 public:
  enum class Storage { kScaled, kDouble, kText };

  // ado_type is one of FieldType. scale is the count of decimal places of a kScaled column (0 for
  // whole numbers, 4 for currency, 0 to 18 for decimals).
  ResultColumn(std::string name, int ado_type, Storage storage, int scale = 0);

  const std::string& Name() const { return name_; }
  int AdoType() const { return ado_type_; }
  Storage Kind() const { return storage_; }
  int Scale() const { return scale_; }
  std::size_t Size() const { return size_; }

  // Appending, in the storage of the column. REQUIRES: the same Storage.
  void AppendScaled(std::int64_t value) {
    Chunk& chunk = Tail();
    const auto narrow = static_cast<std::int32_t>(value);
    if (!wide_ && narrow != value) Widen(chunk);
    if (wide_) {
      chunk.scaled.push_back(value);
    } else {
      chunk.narrow.push_back(narrow);
    }
    ++size_;
  }
  void AppendDouble(double value) {
    Tail().doubles.push_back(value);
    ++size_;
  }
  void AppendText(std::string_view text) {
    Tail().texts.push_back(pool_->Add(text));
    ++size_;
  }
  void AppendNull();

  // Turns a column of numbers into one of texts, keeping each value's text: for a provider that
  // meets a value which the column can't hold (a decimal of 30 digits). No effect on texts.
  void ConvertToText();

  bool HasNulls() const { return has_nulls_; }

  // Reading. REQUIRES: row < Size(), and the storage that the name says.
  bool IsNull(std::size_t row) const {
    const std::vector<std::uint64_t>& nulls = At(row).nulls;
    return !nulls.empty() && (nulls[Offset(row) / 64] >> (Offset(row) % 64) & 1U) != 0;
  }
  std::int64_t Scaled(std::size_t row) const {
    const Chunk& chunk = At(row);
    return chunk.scaled.empty() ? chunk.narrow[Offset(row)] : chunk.scaled[Offset(row)];
  }
  double Double(std::size_t row) const { return At(row).doubles[Offset(row)]; }
  std::string_view Text(std::size_t row) const { return pool_->At(At(row).texts[Offset(row)]); }

  // Appends the value as the text that a cell shows before any formatting: a plain number with "."
  // and without trailing zeros of its scale, "True"/"False" for booleans, the text itself; nothing
  // for NULL.
  void AppendDisplay(std::size_t row, std::string& out) const;
  std::string Display(std::size_t row) const;

  // The value as a number: 0 for NULL, else what the numeric prefix of its text is.
  double Number(std::size_t row) const;

  // Bytes held, for measurements.
  std::size_t Memory() const;

  static constexpr std::size_t kChunkBits = 12;
  static constexpr std::size_t kChunkRows = std::size_t{1} << kChunkBits;

 private:
  struct Chunk {
    std::vector<std::int32_t> narrow;  // scaled numbers, while all of the chunk fit
    std::vector<std::int64_t> scaled;
    std::vector<double> doubles;
    std::vector<std::uint32_t> texts;  // places in the pool
    std::vector<std::uint64_t> nulls;  // a bit a row; empty when the chunk has none
  };

  void AddChunk();
  void Widen(Chunk& chunk);
  Chunk& Tail() {
    if (size_ == chunks_.size() << kChunkBits) AddChunk();
    return chunks_.back();
  }
  const Chunk& At(std::size_t row) const { return chunks_[row >> kChunkBits]; }
  static std::size_t Offset(std::size_t row) { return row & (kChunkRows - 1); }

  std::string name_;
  int ado_type_;
  Storage storage_;
  int scale_;
  std::size_t size_ = 0;
  bool has_nulls_ = false;
  bool wide_ = false;  // a number needed 64 bits: those of later chunks take them at once
  std::vector<Chunk> chunks_;
  std::shared_ptr<TextPool> pool_;  // of a column of texts; copies share it
};

// The whole result of a statement, read to its end (a static, client-side cursor). Shared by the
// recordset that opened it and the grid that shows it; nobody changes it after its provider.
struct ResultSet {
  std::vector<ResultColumn> columns;
  std::size_t rows = 0;
};

using ResultSetPtr = std::shared_ptr<const ResultSet>;

}  // namespace vorek

#endif  // VOREK_RESULT_SET_H_
