#include <algorithm>
#include <array>
#include <vector>

#include "adapters/sqlite/moment.h"
#include "text/gregorian_date.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A text cut into runs of digits, words and single marks.
struct Piece {
  enum class Kind { kDigits, kWord, kMark } kind;
  std::string_view text;
  int number = 0;
};

std::vector<Piece> Cut(std::string_view text) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    const char c = text[at];
    const auto letter = [](char x) { return (x >= 'a' && x <= 'z') || (x >= 'A' && x <= 'Z'); };
    if (c == ' ') {
      at = end;
      continue;
    }
    Piece piece{Piece::Kind::kMark, {}, 0};
    if (IsDigit(c)) {
      while (end < text.size() && IsDigit(text[end])) ++end;
      piece.kind = Piece::Kind::kDigits;
      for (std::size_t i = at; i < std::min(end, at + 9); ++i) {
        piece.number = piece.number * 10 + (text[i] - '0');
      }
    } else if (letter(c)) {
      while (end < text.size() && letter(text[end])) ++end;
      piece.kind = Piece::Kind::kWord;
    }
    piece.text = text.substr(at, end - at);
    pieces.push_back(piece);
    at = end;
  }
  return pieces;
}

class Reader {
 public:
  Reader(std::string_view text, int style) : pieces_(Cut(text)), style_(style % 100) {}

  std::optional<Moment> Read() {
    if (pieces_.empty()) return Moment{};
    if (!AtTime() && !ReadDate()) return std::nullopt;
    const bool joined = Is("T");
    if (joined) ++at_;
    if ((joined || at_ < pieces_.size()) && !ReadTime()) return std::nullopt;
    if (at_ != pieces_.size()) return std::nullopt;
    if (year_ < 1 || year_ > 9999 || month_ < 1 || month_ > 12 || day_ < 1 ||
        day_ > text::GregorianMonthLength(year_, month_)) {
      return std::nullopt;
    }
    return Moment{DayOf({year_, month_, day_}), millisecond_};
  }

 private:
  bool Is(std::string_view text, std::size_t ahead = 0) const {
    return at_ + ahead < pieces_.size() && text::EqualsIgnoreCase(pieces_[at_ + ahead].text, text);
  }
  bool IsDigits(std::size_t ahead = 0) const {
    return at_ + ahead < pieces_.size() && pieces_[at_ + ahead].kind == Piece::Kind::kDigits;
  }
  bool AtTime() const { return IsDigits() && (Is(":", 1) || Is("AM", 1) || Is("PM", 1)); }

  void Year(const Piece& piece) {
    year_ = piece.number;
    if (piece.text.size() <= 2) year_ += year_ < 50 ? 2000 : 1900;
  }

  bool ReadDate() {
    if (IsDigits() && (pieces_[at_].text.size() == 8 || pieces_[at_].text.size() == 6) &&
        !IsSeparator(1)) {
      const std::string_view digits = pieces_[at_].text;
      const int value = pieces_[at_++].number;
      year_ = value / 10000;
      if (digits.size() == 6) year_ += year_ < 50 ? 2000 : 1900;
      month_ = value / 100 % 100;
      day_ = value % 100;
      return true;
    }
    if (IsDigits() && pieces_.size() == 1 && pieces_[at_].text.size() == 4) {
      year_ = pieces_[at_++].number;
      return true;
    }
    if (IsDigits() && IsSeparator(1)) return ReadThreeNumbers();
    return ReadNamedMonth();
  }

  bool IsSeparator(std::size_t ahead) const {
    return Is("/", ahead) || Is("-", ahead) || Is(".", ahead);
  }

  bool ReadThreeNumbers() {
    if (!IsDigits(2)) {  // 15-Jan-2024
      return ReadNamedMonth();
    }
    if (!IsSeparator(3) || !IsDigits(4)) return false;
    const Piece first = pieces_[at_];
    const Piece second = pieces_[at_ + 2];
    const Piece third = pieces_[at_ + 4];
    at_ += 5;
    const bool dotted = style_ == kDayFirst || style_ == kDayFirstIsoYear;
    const bool day_first = dotted || style_ == 3 || style_ == 4 || style_ == 5 || style_ == 13;
    const bool year_first = first.text.size() == 4 || style_ == 2 || style_ == 11 ||
                            (style_ == kYearFirst && third.text.size() != 4);
    if (IsOtherOrder(year_first, day_first && !dotted)) return false;
    if (year_first) {
      // A year in front doesn't bring the month along, but in the form with a T.
      const bool turned = style_ == kDayFirst && !Is("T");
      Year(first);
      month_ = turned ? third.number : second.number;
      day_ = turned ? second.number : third.number;
    } else {
      Year(third);
      month_ = day_first ? second.number : first.number;
      day_ = day_first ? first.number : second.number;
    }
    return true;
  }

  // A style that asks for a day in front, and a year stands there; or the other way round. A server
  // turns the former about, which is rather refused than guessed.
  bool IsOtherOrder(bool year_first, bool by_day) const {
    constexpr std::array<int, 6> kByYear = {20, 21, 23, 25, 26, 27};
    const bool by_year = std::find(kByYear.begin(), kByYear.end(), style_) != kByYear.end();
    return year_first ? by_day && !Is("T") : by_year;
  }

  bool ReadNamedMonth() {
    // "Jan 15 2024", "January 15, 2024", "15 Jan 2024", "15-Jan-24", "Jan 2024"
    std::vector<Piece> numbers;
    bool named = false;
    while (at_ < pieces_.size() && numbers.size() < 2 + (named ? 0U : 1U)) {
      if (AtTime()) break;
      const Piece& piece = pieces_[at_];
      if (piece.kind == Piece::Kind::kDigits) {
        numbers.push_back(piece);
      } else if (piece.kind == Piece::Kind::kWord) {
        if (named || !TakeMonth(piece.text)) return false;
        named = true;
      } else if (piece.text != "," && piece.text != "-" && piece.text != "/") {
        return false;
      }
      ++at_;
      if (named && numbers.size() == 2) break;
    }
    if (!named || numbers.empty()) return false;
    if (numbers.size() == 1) {
      if (numbers[0].text.size() != 4) return false;
      year_ = numbers[0].number;
      return true;
    }
    const bool year_first = numbers[0].text.size() == 4;
    Year(numbers[year_first ? 0 : 1]);
    day_ = numbers[year_first ? 1 : 0].number;
    return true;
  }

  bool TakeMonth(std::string_view word) {
    for (int month = 1; month <= 12; ++month) {
      const std::string_view name = MonthName(month);
      if (text::EqualsIgnoreCase(word, name) || text::EqualsIgnoreCase(word, name.substr(0, 3))) {
        month_ = month;
        return true;
      }
    }
    return false;
  }

  bool ReadTime() {
    if (!IsDigits()) return false;
    std::array<int, 3> parts = {pieces_[at_++].number, 0, 0};
    std::size_t count = 1;
    while (count < 3 && Is(":") && IsDigits(1)) {
      parts[count++] = pieces_[at_ + 1].number;
      at_ += 2;
    }
    int fraction = 0;
    if (count == 3 && (Is(".") || Is(":")) && IsDigits(1)) {
      const std::string digits = std::string(pieces_[at_ + 1].text.substr(0, 3));
      fraction = std::stoi(digits);
      if (Is(".")) {
        for (std::size_t i = digits.size(); i < 3; ++i) fraction *= 10;
      }
      at_ += 2;
    }
    if (Is("AM") || Is("PM")) {
      if (parts[0] < 1 || parts[0] > 12) return false;
      parts[0] = parts[0] % 12 + (Is("PM") ? 12 : 0);
      ++at_;
    } else if (count == 1) {
      return false;
    }
    if (Is("Z")) ++at_;
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
    millisecond_ = ((parts[0] * 60LL + parts[1]) * 60 + parts[2]) * 1000 + fraction;
    return true;
  }

  std::vector<Piece> pieces_;
  std::size_t at_ = 0;
  int style_;
  int year_ = 1900;
  int month_ = 1;
  int day_ = 1;
  std::int64_t millisecond_ = 0;
};

}  // namespace

std::optional<Moment> ParseMoment(std::string_view text, int style) {
  return Reader(text, style).Read();
}

std::optional<Moment> ReadStored(std::string_view text) {
  const auto digits = [text](std::size_t at, std::size_t count, std::int64_t& value) {
    if (at + count > text.size()) return false;
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
      if (!IsDigit(text[i])) return false;
      value = value * 10 + (text[i] - '0');
    }
    return true;
  };
  std::int64_t year = 0;
  std::int64_t month = 0;
  std::int64_t day = 0;
  std::int64_t hour = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  std::int64_t fraction = 0;
  const bool plain = text.size() == 23 && digits(0, 4, year) && digits(5, 2, month) &&
                     digits(8, 2, day) && digits(11, 2, hour) && digits(14, 2, minute) &&
                     digits(17, 2, second) && digits(20, 3, fraction) && month >= 1 &&
                     month <= 12 && day >= 1 && day <= 31;
  if (!plain) return ParseMoment(text, 121);
  return Moment{DayOf({static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)}),
                ((hour * 60 + minute) * 60 + second) * 1000 + fraction};
}

}  // namespace vorek::sqlite
