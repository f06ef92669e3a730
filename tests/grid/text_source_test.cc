#include "grid/text_source.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

#include "text/cell_text.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

using Storage = ResultColumn::Storage;

// Values about the places where a fast way ends: signs, brackets, fifteen digits, 64 bits, ties.
class Values {
 public:
  explicit Values(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
  std::int64_t Scaled() {
    static constexpr std::int64_t kEdges[] = {2,
                                              5000,
                                              10000,
                                              100000,
                                              1000000,
                                              99999999999999,
                                              100000000000001,
                                              1000000000000001,
                                              std::numeric_limits<std::int64_t>::max()};
    const std::int64_t value = kEdges[Below(9)] - static_cast<std::int64_t>(Below(3));
    return Below(2) == 0 ? value : -value;
  }
  double Double() {
    static constexpr double kParts[] = {1, 10000, 3, 20000, 100000000};
    const auto value = static_cast<double>(Scaled());
    return Below(4) == 0 ? std::nextafter(value / 20000, 0) : value / kParts[Below(5)];
  }
  std::string Text() {
    static constexpr const char* kTexts[] = {
        "", "12", "-0.5", "1/234", "(1/234.5)", "12abc", "متن", "123456789012345678901.5", "1e5"};
    return kTexts[Below(9)];
  }

  // A column of a field with nulls and repeated values.
  ResultSetPtr Column() {
    const auto made = std::make_shared<ResultSet>();
    const auto storage = static_cast<Storage>(Below(3));
    const int scale = storage == Storage::kScaled ? static_cast<int>(Below(8)) : 0;
    static constexpr int kWhole[] = {kInteger, kBigInt, kSmallInt};
    static constexpr int kTyped[] = {kDouble, kSingle};
    static constexpr int kOthers[] = {kVarWChar, kNumeric, kDouble};
    const int type = storage == Storage::kDouble ? kTyped[Below(2)]
                     : storage == Storage::kText ? kOthers[Below(3)]
                     : scale == 0                ? kWhole[Below(3)]
                     : scale == 4                ? kCurrency
                                                 : kNumeric;
    made->columns.emplace_back("f", type, storage, scale);
    made->rows = 12;
    ResultColumn& column = made->columns.back();
    const std::size_t nulls = Below(2) == 0 ? 6 : 1000000;
    for (std::size_t row = 0; row < made->rows; ++row) {
      if (Below(nulls) == 0) {
        column.AppendNull();
      } else if (storage == Storage::kScaled) {
        column.AppendScaled(Scaled());
      } else if (storage == Storage::kDouble) {
        column.AppendDouble(Double());
      } else {
        column.AppendText(Text());
      }
    }
    return made;
  }

 private:
  std::mt19937_64 random_;
};

template <typename Read>
auto Got(const Read& read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const Error&) {
    return std::nullopt;
  }
}

TEST(FieldSource, ReadsWhatItsTextsSay) {
  for (unsigned seed = 1; seed <= 6000 && !testing::Test::HasFailure(); ++seed) {
    Values values(seed);
    const ResultSetPtr result = values.Column();
    const auto form = static_cast<CellForm>(values.Below(5));
    const FieldSource source(result, 0, nullptr, form);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", form " +
                 std::to_string(static_cast<int>(form)) + ", type " +
                 std::to_string(result->columns[0].AdoType()));
    std::string scratch;
    const auto text = [&](std::size_t row) {
      return Got([&] { return std::string(source.View(row, scratch)); });
    };
    for (std::size_t row = 0; row < result->rows; ++row) {
      const std::optional<std::string> shown = text(row);
      if (!shown) continue;
      std::string appended = "x";
      source.Append(row, appended);
      EXPECT_EQ(appended, "x" + *shown);
      EXPECT_EQ(UnformatNumber(source.Plain(row, scratch)), UnformatNumber(*shown)) << *shown;
      EXPECT_EQ(source.Number(row), CellNumber(*shown)) << *shown;
      EXPECT_EQ(Got([&] { return source.Fixed(row); }), Got([&] { return CellFixedPoint(*shown); }))
          << *shown;
      const std::size_t other = values.Below(result->rows);
      const std::optional<std::string> beside = text(other);
      if (!beside) continue;
      EXPECT_EQ(source.SameText(row, other), *shown == *beside) << *shown << ", " << *beside;
      const auto changes =
          source.Changes({static_cast<std::uint32_t>(other), static_cast<std::uint32_t>(row)});
      EXPECT_EQ(changes, (std::vector<bool>{true, *shown != *beside})) << *shown << ", " << *beside;
    }
  }
}

}  // namespace
}  // namespace vorek
