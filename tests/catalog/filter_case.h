#ifndef VOREK_TESTS_CATALOG_FILTER_CASE_H_
#define VOREK_TESTS_CATALOG_FILTER_CASE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/memory_database.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek {

// Bytes that make a few rows and a filter, with the rows that match by a plain reading of its
// rules.
class FilterCase {
 public:
  explicit FilterCase(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {
    for (std::size_t i = Pick(6) + 1; i > 0; --i) rows_.push_back(MakeRow());
    Node root = Or(3);
    text_ = root.text;
    for (const Row& row : rows_) matches_.push_back(root.holds(row));
  }

  const std::string& Text() const { return text_; }
  const std::vector<bool>& Matches() const { return matches_; }

  ResultSetPtr Result() const {
    std::vector<MemoryRow> rows;
    for (const Row& row : rows_) {
      MemoryRow cells;
      for (std::size_t i = 0; i < kNumbers; ++i) {
        cells.push_back(row.numbers[i] ? std::optional(Written(*row.numbers[i])) : std::nullopt);
      }
      cells.push_back(row.name);
      rows.push_back(std::move(cells));
    }
    return MakeResult(
        {{"ID", kInteger}, {"Amount", kCurrency}, {"Two Words", kDouble}, {"نام", kVarWChar}},
        rows);
  }

 private:
  __extension__ using Wide = __int128;
  static constexpr std::size_t kNumbers = 3;
  static constexpr Wide kUnit = 100'000'000;  // a number is kept in hundred-millionths

  struct Row {
    std::optional<Wide> numbers[kNumbers];
    std::optional<std::string> name;
  };
  struct Node {
    std::string text;
    std::function<bool(const Row&)> holds;
  };

  std::size_t Pick(std::size_t count) { return at_ < bytes_.size() ? bytes_[at_++] % count : 0; }
  template <typename T, std::size_t size>
  const T& One(const T (&all)[size]) {
    return all[Pick(size)];
  }

  static std::string Written(Wide value) {
    std::string digits;
    Wide rest = value < 0 ? -value : value;
    for (int i = 0; i < 9 || rest > 0; ++i, rest /= 10) {
      if (i == 8) digits.insert(0, ".");
      digits.insert(0, 1, static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    digits.resize(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return (value < 0 ? "-" : "") + digits;
  }

  // A number in units of the column: whole, ten-thousandths, quarters.
  Wide Number(std::size_t column) {
    static constexpr std::int64_t kParts[] = {0, 1, -1, 2, 5, 7, 10, -100000, 2'000'000'000};
    Wide value = One(kParts);
    if (column == 0) return value * kUnit;
    if (column == 2) return value * kUnit / 4;
    if (Pick(4) == 0) value += Wide{9'000'000'000'000} * 100'000;  // where a double ends
    return value * kUnit / 10000;
  }
  std::string Name() {
    std::string name;
    static constexpr const char* kPieces[] = {"a", "A", "b", "ك", "ی", "É",
                                              "é", "Ḁ", "ḁ", " ", "'", "Z"};
    for (std::size_t i = Pick(4); i > 0; --i) name += One(kPieces);
    return name;
  }
  Row MakeRow() {
    Row row;
    for (std::size_t i = 0; i < kNumbers; ++i) {
      if (Pick(5) != 0) row.numbers[i] = Number(i);
    }
    if (Pick(5) != 0) row.name = Name();
    return row;
  }

  std::string Blanks(bool needed) {
    static constexpr const char* kBlanks[] = {"", " ", "  ", "\t"};
    const std::string blanks = One(kBlanks);
    return needed && blanks.empty() ? " " : blanks;
  }

  Node Or(std::size_t depth) { return Chain(depth, false); }
  Node Chain(std::size_t depth, bool all) {
    static constexpr const char* kAnd[] = {"and", "AND", "And"};
    static constexpr const char* kOr[] = {"or", "OR", "oR"};
    const auto part = [&] { return all ? Factor(depth) : Chain(depth, true); };
    Node node = part();
    for (std::size_t i = Pick(3); i > 0; --i) {
      const std::string word = all ? One(kAnd) : One(kOr);
      Node right = part();
      node = {node.text + " " + word + Blanks(true) + right.text,
              [all, a = node.holds, b = right.holds](const Row& row) {
                return all ? a(row) && b(row) : a(row) || b(row);
              }};
    }
    return node;
  }
  Node Factor(std::size_t depth) {
    if (depth == 0 || Pick(3) != 0) return Test();
    Node inner = Or(depth - 1);
    inner.text = "(" + Blanks(false) + inner.text + Blanks(false) + ")";
    return inner;
  }

  Node Test() {
    const std::size_t column = Pick(kNumbers + 1);
    static const std::vector<std::vector<std::string>> kNames = {{"ID", "id", "[Id]"},
                                                                 {"Amount", "AMOUNT", "[amount]"},
                                                                 {"[Two Words]", "[TWO WORDS]"},
                                                                 {"نام", "[نام]"}};
    const std::string name = kNames[column][Pick(kNames[column].size())];
    if (Pick(6) == 0) return NullTest(name, column);
    if (column == kNumbers) return TextTest(name);
    static constexpr const char* kOperators[] = {"=", "<>", "<", ">", "<=", ">="};
    const std::size_t op = Pick(6);
    Wide wanted = Number(column);
    if (Pick(4) == 0) wanted += kUnit / (column == 2 ? 4 : 10000);
    const bool between = column == 1 && Pick(4) == 0;  // finer than the column
    if (between) wanted += 1;
    const std::string sign = wanted >= 0 && Pick(5) == 0 ? "+" : "";
    const bool exponent = Pick(5) == 0;
    const std::string number = exponent ? Written(wanted * kUnit) + "e-8" : Written(wanted);
    return {name + Blanks(false) + kOperators[op] + Blanks(false) + sign + number,
            [column, op, wanted](const Row& row) {
              const auto& value = row.numbers[column];
              if (!value) return op == 1;
              return Holds(op, *value < wanted ? -1 : *value > wanted ? 1 : 0);
            }};
  }
  static bool Holds(std::size_t op, int order) {
    const bool holds[] = {order == 0, order != 0, order<0, order> 0, order <= 0, order >= 0};
    return holds[op];
  }

  Node NullTest(const std::string& name, std::size_t column) {
    const bool equal = Pick(2) == 0;
    return {name + (equal ? " =" : "<>") + Blanks(false) + (Pick(2) == 0 ? "NULL" : "null"),
            [column, equal](const Row& row) {
              const bool null = column == kNumbers ? !row.name : !row.numbers[column];
              return null == equal;
            }};
  }

  Node TextTest(const std::string& name) {
    static constexpr const char* kOperators[] = {"=",  "<>", "<",      ">",
                                                 "<=", ">=", " like ", " LIKE "};
    const std::size_t op = Pick(8);
    std::string value = Name();
    if (op >= 6 && Pick(2) == 0) value += Pick(2) == 0 ? "*" : "%";
    if (op >= 6 && Pick(2) == 0) value = (Pick(2) == 0 ? "*" : "%") + value + Name();
    const std::string literal = "'" + text::Replace(value, "'", "''") + "'";
    return {name + kOperators[op] + Blanks(false) + literal, [op, value](const Row& row) {
              if (!row.name) return op == 1;
              const std::u32string a = Letters(*row.name);
              const std::u32string b = Letters(value);
              return op >= 6 ? Like(a, b) : Holds(op, a.compare(b));
            }};
  }
  static std::u32string Letters(std::string_view s) {
    std::u32string letters;
    for (std::size_t at = 0; at < s.size();) letters += text::ToLower(text::DecodeAt(s, at));
    return letters;
  }
  static bool Like(std::u32string_view s, std::u32string_view pattern) {
    if (pattern.empty()) return s.empty();
    if (pattern[0] == U'*' || pattern[0] == U'%') {
      return Like(s, pattern.substr(1)) || (!s.empty() && Like(s.substr(1), pattern));
    }
    return !s.empty() && s[0] == pattern[0] && Like(s.substr(1), pattern.substr(1));
  }

  std::vector<std::uint8_t> bytes_;
  std::size_t at_ = 0;
  std::vector<Row> rows_;
  std::string text_;
  std::vector<bool> matches_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_CATALOG_FILTER_CASE_H_
