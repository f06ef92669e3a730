#include "widgets/typed_date.h"

#include <string>
#include <utility>
#include <vector>

#include "text/utf8.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

constexpr int kFirstYear = 1200;
constexpr int kLastYear = 1499;
constexpr std::size_t kMostGroups = 3;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSeparator(char c) { return c == '/' || c == '-' || c == '.'; }

// The digits between separators; nothing if there is another sign, no digit, a separator at an end
// or two in a row. Blanks around a separator belong to it.
std::vector<std::string> Groups(const std::string& plain) {
  std::vector<std::string> groups(1);
  bool open = true;        // digits may follow the last group's own
  bool separated = false;  // by more than blanks
  for (const char c : plain) {
    if (IsDigit(c)) {
      if (!open) groups.emplace_back();
      groups.back() += c;
      open = true;
      separated = false;
      continue;
    }
    const bool blank = c == ' ';
    if (!blank && (separated || !IsSeparator(c))) return {};
    if (groups.back().empty()) return {};
    open = false;
    separated = separated || !blank;
  }
  if (groups.back().empty() || !open) return {};
  return groups;
}

// A run of digits is parted as a date is written: four or two digits of a year, two, two.
std::vector<std::string> PartRun(const std::string& run) {
  if (run.size() != 6 && run.size() != 8) return {run};
  const std::size_t year = run.size() - 4;
  return {run.substr(0, year), run.substr(year, 2), run.substr(year + 2)};
}

// Six digits that begin like a year of four are the beginning of eight.
bool IsHalfRun(const std::vector<std::string>& groups) {
  return groups.size() == 1 && groups[0].size() == 6 &&
         (groups[0].starts_with("13") || groups[0].starts_with("14"));
}

std::string NoDate(std::string_view typed) {
  return InGuillemets(typed) + " تاريخ نيست؛ سال/ماه/روز بنويسيد، مانند 1404/06/01";
}

std::string BadYear(const std::string& year) {
  return "سال " + text::Left(year, 20) + " شمسي نيست؛ سال را با دو يا چهار رقم بنويسيد، مانند 1404";
}

// Why the calendar hasn't such a day; "" if it has.
std::string BadDay(const text::CalendarDate& date) {
  if (date.month < 1 || date.month > 12) return "ماه " + std::to_string(date.month) + " وجود ندارد";
  const int length = text::PersianMonthLength(date.year, date.month);
  if (date.day >= 1 && date.day <= length) return {};
  return "ماه " + std::to_string(date.month) + " سال " + std::to_string(date.year) + " روز " +
         std::to_string(date.day) + " ندارد";
}

// A year that a person can mean, 0 for another.
int YearMeant(const std::string& digits) {
  if (digits.size() > 4) return 0;
  const int year = std::stoi(digits);
  if (digits.size() <= 2) return year + (year < 50 ? 1400 : 1300);
  return year >= kFirstYear && year <= kLastYear ? year : 0;
}

}  // namespace

TypedDate ParseTypedDate(std::string_view typed, const text::CalendarDate& today) {
  std::vector<std::string> groups = Groups(PlainTyped(typed));
  if (IsHalfRun(groups)) return {std::nullopt, NoDate(typed)};
  if (groups.size() == 1) groups = PartRun(groups[0]);
  if (groups.empty() || groups.size() > kMostGroups || groups.back().size() > 2) {
    return {std::nullopt, NoDate(typed)};
  }
  text::CalendarDate date = today;
  date.day = std::stoi(groups.back());
  if (groups.size() >= 2) {
    const std::string& month = groups[groups.size() - 2];
    if (month.size() > 2) return {std::nullopt, NoDate(typed)};
    date.month = std::stoi(month);
  }
  if (groups.size() == kMostGroups) {
    date.year = YearMeant(groups[0]);
    if (date.year == 0) return {std::nullopt, BadYear(groups[0])};
  }
  std::string refusal = BadDay(date);
  if (!refusal.empty()) return {std::nullopt, std::move(refusal)};
  return {date, {}};
}

bool IsWholeDate(std::string_view typed) {
  const std::vector<std::string> groups = Groups(PlainTyped(typed));
  if (groups.size() == 1)
    return groups[0].size() == 8 || (groups[0].size() == 6 && !IsHalfRun(groups));
  return groups.size() == kMostGroups;
}

}  // namespace vorek
