#include "adapters/sqlite/failure.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <variant>

#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

constexpr std::array<std::pair<std::string_view, int>, 16> kNumbers = {{
    {"UNIQUE constraint failed: index", 2601},
    {"UNIQUE constraint failed", 2627},
    {"NOT NULL constraint failed", 515},
    {"Cannot insert the value NULL", 515},
    {"CHECK constraint failed", 547},
    {"FOREIGN KEY constraint failed", 547},
    {"The statement conflicted", 547},
    {"String or binary data would be truncated", 8152},
    {"Arithmetic overflow", 8115},
    {"Divide by zero", 8134},
    {"Subquery returned more than 1 value", 512},
    {"Conversion failed when converting date", 241},
    {"Conversion failed", 245},
    {"Error converting data type", 8114},
    {"Invalid object name", 208},
    {"Could not find stored procedure", 2812},
}};

// "%-8.3s": what stands between the mark and its letter.
struct Field {
  bool left = false;
  bool zeros = false;
  std::string_view plus;  // "+" or " " before a signed number that has no minus
  std::size_t width = 0;
  std::size_t precision = std::string_view::npos;

  std::string Fill(std::string text) const {
    const std::size_t size = text::Length(text);
    if (size >= width) return text;
    if (left) return text.append(width - size, ' ');
    const bool sign = zeros && text.find_first_of("+- ") == 0;
    return text.insert(sign ? 1 : 0, width - size, zeros ? '0' : ' ');
  }
};

std::string NumberText(std::int64_t value, char letter) {
  const auto low = static_cast<unsigned>(value);
  std::array<char, 32> digits{};
  switch (letter) {
    case 'u':
      return std::to_string(low);
    case 'x':
      std::snprintf(digits.data(), digits.size(), "%x", low);
      return digits.data();
    case 'X':
      std::snprintf(digits.data(), digits.size(), "%X", low);
      return digits.data();
    case 'o':
      std::snprintf(digits.data(), digits.size(), "%o", low);
      return digits.data();
    default:
      return std::to_string(value);
  }
}

std::string Filled(const Field& field, char letter, const Cell& value) {
  if (std::holds_alternative<std::monostate>(value)) return field.Fill("(null)");
  const auto* whole = std::get_if<std::int64_t>(&value);
  if (whole != nullptr) {
    const bool plus = *whole >= 0 && (letter == 'd' || letter == 'i');
    return field.Fill((plus ? std::string(field.plus) : "") + NumberText(*whole, letter));
  }
  const auto* text = std::get_if<std::string>(&value);
  return field.Fill(text == nullptr ? "" : text::Left(*text, field.precision));
}

class Formatter {
 public:
  Formatter(std::string_view pattern, const std::vector<Cell>& values)
      : pattern_(pattern), values_(values) {}

  std::string Run() {
    while (at_ < pattern_.size()) {
      if (pattern_[at_] == '%') {
        Mark();
      } else {
        out_ += pattern_[at_++];
      }
    }
    return std::move(out_);
  }

 private:
  char Peek() const { return at_ < pattern_.size() ? pattern_[at_] : '\0'; }
  bool Take(std::string_view text) {
    if (pattern_.substr(at_, text.size()) != text) return false;
    at_ += text.size();
    return true;
  }
  std::size_t Digits() {
    constexpr std::size_t kMost = 8000;
    std::size_t number = 0;
    while (Peek() >= '0' && Peek() <= '9') {
      number = std::min(number * 10 + static_cast<std::size_t>(pattern_[at_++] - '0'), kMost);
    }
    return number;
  }

  void Mark() {
    const std::size_t begin = at_++;
    if (Take("%")) {
      out_ += '%';
      return;
    }
    Field field;
    while (Peek() == '-' || Peek() == '0' || Peek() == '+' || Peek() == '#' || Peek() == ' ') {
      field.left = field.left || Peek() == '-';
      field.zeros = field.zeros || Peek() == '0';
      if (Peek() == '+') field.plus = "+";
      if (Peek() == ' ' && field.plus.empty()) field.plus = " ";
      ++at_;
    }
    field.width = Digits();
    if (Take(".")) field.precision = Digits();
    if (!Take("I64") && !Take("l")) Take("h");
    const char letter = Peek();
    const bool known =
        letter != '\0' && std::string_view("sdiuxXo").find(letter) != std::string_view::npos;
    if (!known) {  // no mark: stands for itself
      at_ = begin + 1;
      out_ += '%';
      return;
    }
    ++at_;
    out_ += Filled(field, letter, next_ < values_.size() ? values_[next_] : Cell{});
    ++next_;
  }

  std::string_view pattern_;
  const std::vector<Cell>& values_;
  std::size_t at_ = 0;
  std::size_t next_ = 0;
  std::string out_;
};

}  // namespace

int ServerNumber(std::string_view message) {
  constexpr int kOther = 50000;
  const auto* found = std::find_if(kNumbers.begin(), kNumbers.end(), [message](const auto& row) {
    return message.substr(0, row.first.size()) == row.first;
  });
  return found == kNumbers.end() ? kOther : found->second;
}

bool EndsStatementOnly(int number) {
  constexpr std::array<int, 8> kThose = {2601, 2627, 515, 547, 8152, 8115, 8134, 512};
  return std::find(kThose.begin(), kThose.end(), number) != kThose.end();
}

std::string FormatMessage(std::string_view pattern, const std::vector<Cell>& values) {
  return Formatter(pattern, values).Run();
}

}  // namespace vorek::sqlite
