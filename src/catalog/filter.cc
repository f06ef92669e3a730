#include "catalog/filter.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <compare>
#include <limits>
#include <system_error>
#include <utility>

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

enum class Op { kEqual, kNotEqual, kLess, kGreater, kLessEqual, kGreaterEqual, kLike };
enum class Kind { kTest, kAnd, kOr };
constexpr int kDeepest = 100;

[[noreturn]] void Refuse(std::string_view text, const std::string& reason) {
  throw Error(ErrorNumber::kBadFilter,
              "The filter \"" + text::Left(text, 200) + "\" can't be used: " + reason);
}

// A text against a pattern in which "*" and "%" stand for any run of characters.
bool Like(std::string_view s, std::string_view pattern) {
  std::size_t at = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t resume = 0;
  while (at < s.size()) {
    const bool wild = p < pattern.size() && (pattern[p] == '*' || pattern[p] == '%');
    if (wild) {
      star = p++;
      resume = at;
    } else if (p < pattern.size() && pattern[p] == s[at]) {
      ++p;
      ++at;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      at = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && (pattern[p] == '*' || pattern[p] == '%')) ++p;
  return p == pattern.size();
}

bool Holds(Op op, std::partial_ordering order) {
  switch (op) {
    case Op::kEqual:
      return order == 0;
    case Op::kNotEqual:
      return order != 0;
    case Op::kLess:
      return order < 0;
    case Op::kGreater:
      return order > 0;
    case Op::kLessEqual:
      return order <= 0;
    case Op::kGreaterEqual:
      return order >= 0;
    case Op::kLike:
      break;
  }
  return false;
}

}  // namespace

struct RecordFilter::Node {
  Kind kind = Kind::kTest;
  std::unique_ptr<Node> left;
  std::unique_ptr<Node> right;
  const ResultColumn* column = nullptr;
  std::size_t ordinal = 0;
  Op op = Op::kEqual;
  bool null = false;
  std::int64_t scaled = 0;  // the value in units of the column, if that keeps such
  int rest = 0;             // 1 for a value a little above scaled, -1 for one below it
  double number = 0;
  std::string text;  // in small letters
};

namespace {

// False if no letter of the text has another small form, as Persian ones haven't.
bool MayHaveCapitals(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 'A' && byte <= 'Z') || (byte >= 0xC3 && byte <= 0xD3) || byte == 0xE1;
  });
}

bool TextMatches(const RecordFilter::Node& test, std::string_view value) {
  std::string small;
  if (MayHaveCapitals(value)) value = small = text::ToLower(value);
  if (test.op == Op::kLike) return Like(value, test.text);
  return Holds(test.op, value.compare(test.text) <=> 0);
}

std::partial_ordering OrderOf(std::int64_t units, const RecordFilter::Node& test) {
  return units == test.scaled ? 0 <=> test.rest : units <=> test.scaled;
}

bool TestMatches(const RecordFilter::Node& test, std::size_t row) {
  const ResultColumn& column = *test.column;
  if (test.null) return column.IsNull(row) == (test.op == Op::kEqual);
  if (column.IsNull(row)) return test.op == Op::kNotEqual;
  switch (column.Kind()) {
    case ResultColumn::Storage::kText:
      return TextMatches(test, column.Text(row));
    case ResultColumn::Storage::kScaled:
      if (test.op == Op::kLike) return Like(column.Display(row), test.text);
      return Holds(test.op, OrderOf(column.Scaled(row), test));
    case ResultColumn::Storage::kDouble:
      if (test.op == Op::kLike) return Like(column.Display(row), test.text);
      return Holds(test.op, column.Double(row) <=> test.number);
  }
  return false;
}

bool NodeMatches(const RecordFilter::Node& node, std::size_t row) {
  switch (node.kind) {
    case Kind::kTest:
      return TestMatches(node, row);
    case Kind::kAnd:
      return NodeMatches(*node.left, row) && NodeMatches(*node.right, row);
    case Kind::kOr:
      return NodeMatches(*node.left, row) || NodeMatches(*node.right, row);
  }
  return false;
}

class Parser {
 public:
  Parser(std::string_view text, const ResultSet& result) : text_(text), result_(result) {}

  std::unique_ptr<RecordFilter::Node> Parse() {
    std::unique_ptr<RecordFilter::Node> root = Or(0);
    SkipBlanks();
    if (at_ < text_.size()) Fail("it goes on after its end");
    return root;
  }

 private:
  using NodePtr = std::unique_ptr<RecordFilter::Node>;

  [[noreturn]] void Fail(const std::string& reason) {
    Refuse(text_,
           reason + " at character " +
               std::to_string(text::Length(text_.substr(0, std::min(at_, text_.size()))) + 1));
  }

  void SkipBlanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
  }
  char Peek() {
    SkipBlanks();
    return at_ < text_.size() ? text_[at_] : '\0';
  }

  static bool IsNameByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           c == '.' || static_cast<unsigned char>(c) >= 0x80;
  }

  bool Word(std::string_view word) {
    SkipBlanks();
    const std::size_t end = at_ + word.size();
    if (end > text_.size() || !text::EqualsIgnoreCase(text_.substr(at_, word.size()), word) ||
        (end < text_.size() && IsNameByte(text_[end]))) {
      return false;
    }
    at_ = end;
    return true;
  }

  NodePtr Join(Kind kind, NodePtr left, NodePtr right) {
    auto node = std::make_unique<RecordFilter::Node>();
    node->kind = kind;
    node->left = std::move(left);
    node->right = std::move(right);
    return node;
  }

  NodePtr Or(int depth) {
    NodePtr left = And(depth);
    while (Word("or")) {
      Limit();
      left = Join(Kind::kOr, std::move(left), And(depth));
    }
    return left;
  }

  NodePtr And(int depth) {
    NodePtr left = Factor(depth);
    while (Word("and")) {
      Limit();
      left = Join(Kind::kAnd, std::move(left), Factor(depth));
    }
    return left;
  }

  // A chain of terms nests to the left, so its length is a depth as well.
  void Limit() {
    if (++joins_ > 1000) Fail("it has more than 1000 conditions");
  }

  NodePtr Factor(int depth) {
    if (Peek() != '(') return Test();
    if (depth >= kDeepest) Fail("its brackets nest too deep");
    ++at_;
    NodePtr inner = Or(depth + 1);
    if (Peek() != ')') Fail("a closing bracket is missing");
    ++at_;
    return inner;
  }

  NodePtr Test() {
    auto node = std::make_unique<RecordFilter::Node>();
    Column(*node);
    node->op = Operator();
    Value(*node);
    return node;
  }

  std::string Name() {
    if (Peek() == '[') {
      const std::size_t end = text_.find(']', at_);
      if (end == std::string_view::npos) Fail("the bracket of a name isn't closed");
      std::string name(text_.substr(at_ + 1, end - at_ - 1));
      at_ = end + 1;
      return name;
    }
    const std::size_t begin = at_;
    while (at_ < text_.size() && IsNameByte(text_[at_])) ++at_;
    if (at_ == begin) Fail("a field's name is missing");
    return std::string(text_.substr(begin, at_ - begin));
  }

  void Column(RecordFilter::Node& node) {
    const std::string name = Name();
    const auto found =
        std::find_if(result_.columns.begin(), result_.columns.end(),
                     [&](const ResultColumn& c) { return text::EqualsIgnoreCase(c.Name(), name); });
    if (found == result_.columns.end()) Fail("there is no field " + name);
    node.column = &*found;
    node.ordinal = static_cast<std::size_t>(found - result_.columns.begin());
  }

  Op Operator() {
    SkipBlanks();
    static constexpr std::pair<std::string_view, Op> kOperators[] = {
        {"<>", Op::kNotEqual}, {"<=", Op::kLessEqual}, {">=", Op::kGreaterEqual},
        {"=", Op::kEqual},     {"<", Op::kLess},       {">", Op::kGreater}};
    for (const auto& [sign, op] : kOperators) {
      if (text_.substr(at_, sign.size()) != sign) continue;
      at_ += sign.size();
      return op;
    }
    if (!Word("like")) Fail("an operator is missing");
    return Op::kLike;
  }

  void Value(RecordFilter::Node& node) {
    const char first = Peek();
    if (first == '\'' || first == '#') {
      SetText(node, Quoted(first));
    } else if (Word("null")) {
      if (node.op != Op::kEqual && node.op != Op::kNotEqual) Fail("NULL goes with = and <> alone");
      node.null = true;
    } else {
      SetNumber(node);
    }
  }

  std::string Quoted(char quote) {
    std::string value;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] != quote) {
        value += text_[at_];
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == quote) {
        value += text_[at_++];
      } else {
        ++at_;
        return value;
      }
    }
    Fail("a text isn't closed");
  }

  void SetText(RecordFilter::Node& node, const std::string& value) {
    node.text = text::ToLower(value);
    if (node.op == Op::kLike || node.column->Kind() == ResultColumn::Storage::kText) return;
    SetParsedNumber(node, value);
  }

  void SetNumber(RecordFilter::Node& node) {
    const std::size_t begin = at_;
    while (at_ < text_.size() && text_[at_] != ' ' && text_[at_] != '\t' && text_[at_] != ')')
      ++at_;
    const std::string_view number = text_.substr(begin, at_ - begin);
    if (number.empty()) Fail("a value is missing");
    node.text = std::string(number);
    SetParsedNumber(node, number);
  }

  void SetParsedNumber(RecordFilter::Node& node, std::string_view value) {
    if (value.starts_with('+') && !value.starts_with("+-")) value.remove_prefix(1);
    const char* const end = value.data() + value.size();
    const auto [read, error] = std::from_chars(value.data(), end, node.number);
    if (read != end || value.empty() || !std::isfinite(node.number)) {
      Fail("\"" + std::string(value) + "\" is no number, as " + node.column->Name() + " needs");
    }
    if (error != std::errc()) Fail("\"" + std::string(value) + "\" is beyond all numbers");
    if (node.column->Kind() != ResultColumn::Storage::kScaled) return;
    SetUnits(node, node.number == 0 ? "0" : WithoutExponent(value));
  }

  static std::string WithoutExponent(std::string_view value) {
    const std::size_t mark = value.find_first_of("eE");
    if (mark == std::string_view::npos) return std::string(value);
    const std::string_view sign = value.starts_with('-') ? "-" : "";
    std::string digits(value.substr(sign.size(), mark - sign.size()));
    const std::size_t point = std::min(digits.find('.'), digits.size());
    digits.erase(point, 1);
    std::string_view exponent = value.substr(mark + 1);
    if (exponent.starts_with('+')) exponent.remove_prefix(1);
    std::int64_t at = 0;
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), at);
    at += static_cast<std::int64_t>(point);
    if (at < 0) digits.insert(0, static_cast<std::size_t>(-at), '0');
    const auto whole = static_cast<std::size_t>(std::max<std::int64_t>(at, 0));
    if (digits.size() < whole) digits.resize(whole, '0');
    return std::string(sign) + digits.insert(whole, ".");
  }

  // A plain decimal number, exactly, in units of the column.
  static void SetUnits(RecordFilter::Node& node, std::string_view value) {
    const auto scale = static_cast<std::size_t>(node.column->Scale());
    const std::size_t point = std::min(value.find('.'), value.size());
    std::string decimals(value.substr(std::min(point + 1, value.size())));
    if (decimals.size() < scale) decimals.resize(scale, '0');
    const std::string digits = std::string(value.substr(0, point)) + decimals.substr(0, scale);
    const bool negative = value.starts_with('-');
    using Limits = std::numeric_limits<std::int64_t>;
    const auto error =
        std::from_chars(digits.data(), digits.data() + digits.size(), node.scaled).ec;
    const bool beyond = error == std::errc::result_out_of_range;
    if (beyond) node.scaled = negative ? Limits::min() : Limits::max();
    if (beyond || decimals.find_first_not_of('0', scale) != std::string::npos) {
      node.rest = negative ? -1 : 1;
    }
  }

  std::string_view text_;
  const ResultSet& result_;
  std::size_t at_ = 0;
  int joins_ = 0;
};

}  // namespace

RecordFilter::RecordFilter(std::string_view text, const ResultSet& result)
    : root_(Parser(text, result).Parse()) {}
RecordFilter::~RecordFilter() = default;
RecordFilter::RecordFilter(RecordFilter&&) noexcept = default;
RecordFilter& RecordFilter::operator=(RecordFilter&&) noexcept = default;

bool RecordFilter::Matches(std::size_t row) const { return NodeMatches(*root_, row); }

bool RecordFilter::IsKeyTest(KeyTest& test) const {
  const bool simple = root_->kind == Kind::kTest && root_->op == Op::kEqual && !root_->null &&
                      root_->column->Kind() == ResultColumn::Storage::kScaled && root_->rest == 0;
  if (simple) test = {root_->ordinal, root_->scaled};
  return simple;
}

KeyIndex::KeyIndex(const ResultColumn& column) : column_(column) {
  heads_.assign(std::bit_ceil(column.Size() * 2 + 1), kNone);
  next_.assign(column.Size(), kNone);
  for (std::size_t row = column.Size(); row-- > 0;) {
    if (column.IsNull(row)) continue;
    std::uint32_t& head = heads_[Slot(column.Scaled(row))];
    next_[row] = head;
    head = static_cast<std::uint32_t>(row);
  }
}

std::size_t KeyIndex::Slot(std::int64_t key) const {
  const std::size_t mask = heads_.size() - 1;
  std::uint64_t hash = static_cast<std::uint64_t>(key) * 0x9E3779B97F4A7C15U;
  hash ^= hash >> 32U;
  std::size_t slot = hash & mask;
  while (heads_[slot] != kNone && column_.Scaled(heads_[slot]) != key) slot = (slot + 1) & mask;
  return slot;
}

std::uint32_t KeyIndex::First(std::int64_t key) const { return heads_[Slot(key)]; }

}  // namespace vorek
