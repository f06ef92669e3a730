#include "vorek/result_set.h"

#include <array>
#include <utility>

#include "text/number.h"
#include "vorek/field_type.h"

namespace vorek {

ResultColumn::ResultColumn(std::string name, int ado_type, Storage storage, int scale)
    : name_(std::move(name)), ado_type_(ado_type), storage_(storage), scale_(scale) {
  if (storage == Storage::kText) pool_ = std::make_shared<TextPool>();
}

// The first chunk grows with its rows; behind it room for a whole one is made at once.
void ResultColumn::AddChunk() {
  Chunk& chunk = chunks_.emplace_back();
  if (chunks_.size() == 1) return;
  if (storage_ == Storage::kScaled && wide_) chunk.scaled.reserve(kChunkRows);
  if (storage_ == Storage::kScaled && !wide_) chunk.narrow.reserve(kChunkRows);
  if (storage_ == Storage::kDouble) chunk.doubles.reserve(kChunkRows);
  if (storage_ == Storage::kText) chunk.texts.reserve(kChunkRows);
}

void ResultColumn::Widen(Chunk& chunk) {
  wide_ = true;
  if (chunks_.size() > 1) chunk.scaled.reserve(kChunkRows);
  chunk.scaled.assign(chunk.narrow.begin(), chunk.narrow.end());
  chunk.narrow = {};
}

void ResultColumn::AppendNull() {
  const std::size_t offset = Offset(size_);
  switch (storage_) {
    case Storage::kScaled:
      AppendScaled(0);
      break;
    case Storage::kDouble:
      AppendDouble(0);
      break;
    case Storage::kText:
      AppendText({});
      break;
  }
  std::vector<std::uint64_t>& nulls = chunks_.back().nulls;
  if (nulls.empty()) nulls.resize(kChunkRows / 64);
  has_nulls_ = true;
  nulls[offset / 64] |= std::uint64_t{1} << (offset % 64);
}

void ResultColumn::ConvertToText() {
  if (storage_ == Storage::kText) return;
  ResultColumn texts(name_, ado_type_, Storage::kText);
  for (std::size_t row = 0; row < size_; ++row) {
    if (IsNull(row)) {
      texts.AppendNull();
    } else {
      texts.AppendText(Display(row));
    }
  }
  *this = std::move(texts);
}

void ResultColumn::AppendDisplay(std::size_t row, std::string& out) const {
  if (IsNull(row)) return;
  switch (storage_) {
    case Storage::kScaled:
      if (ado_type_ == kBoolean) {
        out += Scaled(row) != 0 ? "True" : "False";
      } else {
        text::AppendScaled(Scaled(row), scale_, out);
      }
      break;
    case Storage::kDouble:
      text::AppendPlainNumber(Double(row), out);
      break;
    case Storage::kText:
      out += Text(row);
      break;
  }
}

std::string ResultColumn::Display(std::size_t row) const {
  std::string out;
  AppendDisplay(row, out);
  return out;
}

double ResultColumn::Number(std::size_t row) const {
  if (IsNull(row)) return 0;
  if (storage_ == Storage::kDouble) return Double(row);
  if (storage_ == Storage::kText) return text::NumericPrefix(Text(row));
  // One division of two exact doubles rounds as reading the text does.
  constexpr std::array<double, 19> kUnits = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                             1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                             1e14, 1e15, 1e16, 1e17, 1e18};
  constexpr std::int64_t kExact = std::int64_t{1} << 53U;
  const std::int64_t value = Scaled(row);
  if (value >= -kExact && value <= kExact) {
    return static_cast<double>(value) / kUnits[static_cast<std::size_t>(scale_)];
  }
  return text::NumericPrefix(Display(row));
}

std::size_t ResultColumn::Memory() const {
  std::size_t bytes = chunks_.capacity() * sizeof(Chunk);
  for (const Chunk& chunk : chunks_) {
    bytes += chunk.narrow.capacity() * sizeof(std::int32_t) +
             chunk.scaled.capacity() * sizeof(std::int64_t) +
             chunk.doubles.capacity() * sizeof(double) +
             chunk.texts.capacity() * sizeof(std::uint32_t) +
             chunk.nulls.capacity() * sizeof(std::uint64_t);
  }
  if (pool_ != nullptr) bytes += pool_->Memory();
  return bytes;
}

}  // namespace vorek
