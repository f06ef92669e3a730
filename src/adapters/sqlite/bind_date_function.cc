#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "adapters/sqlite/bind_call.h"

// Functions of dates and times.
namespace vorek::sqlite {

struct FunctionRules::Dates {
  using Call = Binder::Call;

  static Bound DateFromParts(Call& call) {
    return CallOf("vk_date_of_parts", {call.Whole(0).sql, call.Whole(1).sql, call.Whole(2).sql},
                  Make(TypeKind::kDate));
  }
  // The full name of the part, which the type of argument i has to have.
  static std::string_view Part(Call& call, std::size_t i) {
    const Expr& word = *call.expr.operands[0];
    if (word.kind != ExprKind::kColumn || word.path.size() != 1) {
      call.binder.Refuse(word.at, "A part of a date, such as day, is expected");
    }
    struct Spelling {
      std::string_view word;
      std::string_view part;
    };
    static constexpr std::array<Spelling, 33> kParts = {{
        {"year", "year"},       {"yyyy", "year"},
        {"yy", "year"},         {"quarter", "quarter"},
        {"qq", "quarter"},      {"q", "quarter"},
        {"month", "month"},     {"mm", "month"},
        {"m", "month"},         {"dayofyear", "dayofyear"},
        {"dy", "dayofyear"},    {"y", "dayofyear"},
        {"day", "day"},         {"dd", "day"},
        {"d", "day"},           {"week", "week"},
        {"wk", "week"},         {"ww", "week"},
        {"weekday", "weekday"}, {"dw", "weekday"},
        {"w", "weekday"},       {"hour", "hour"},
        {"hh", "hour"},         {"minute", "minute"},
        {"mi", "minute"},       {"n", "minute"},
        {"second", "second"},   {"ss", "second"},
        {"s", "second"},        {"millisecond", "millisecond"},
        {"ms", "millisecond"},  {"iso_week", "iso_week"},
        {"isowk", "iso_week"},
    }};
    const auto* found = std::find_if(kParts.begin(), kParts.end(), [&](const Spelling& spelling) {
      return SameWord(spelling.word, word.path[0]);
    });
    if (found == kParts.end()) {
      call.binder.Refuse(word.at, "'" + word.path[0] + "' is not a recognized part of a date");
    }
    const Type& type = call[i].type;
    const bool lacks =
        IsOfTime(found->part) ? type.kind == TypeKind::kDate : type.kind == TypeKind::kTime;
    if (lacks) RefusePart(call, found->part, type);
    return found->part;
  }
  static bool IsOfTime(std::string_view part) {
    return part == "hour" || part == "minute" || part == "second" || part == "millisecond";
  }
  [[noreturn]] static void RefusePart(Call& call, std::string_view part, const Type& type) {
    call.binder.Refuse(call.expr.operands[0]->at, "The part " + std::string(part) +
                                                      " is not supported by " + call.expr.path[0] +
                                                      " for the type " + TypeName(type));
  }
  // A part that can be counted.
  static std::string Step(Call& call, std::size_t i) {
    const std::string_view part = Part(call, i);
    if (part == "iso_week") RefusePart(call, part, Make(TypeKind::kDateTime));
    return QuoteText(part);
  }
  static Bound DateAdd(Call& call) {
    const Bound moment = call.Moment(2);
    return CallOf("vk_dateadd",
                  {Step(call, 2), call.Int(1).sql, moment.sql, QuoteText(TypeName(moment.type))},
                  moment.type);
  }
  static Bound DateDiff(Call& call) {
    return CallOf("vk_datediff", {Step(call, 0), call.Moment(1).sql, call.Moment(2).sql},
                  Make(TypeKind::kInt));
  }
  static Bound DatePart(Call& call) {
    return CallOf("vk_datepart", {QuoteText(Part(call, 1)), call.Moment(1).sql},
                  Make(TypeKind::kInt));
  }
  static Bound DateName(Call& call) {
    return CallOf("vk_datename", {QuoteText(Part(call, 1)), call.Moment(1).sql},
                  MakeText(TypeKind::kNVarChar, 30));
  }
  static Bound NamedPart(Call& call, std::string_view part) {
    if (call[0].type.kind == TypeKind::kTime) RefusePart(call, part, call[0].type);
    return CallOf("vk_datepart", {QuoteText(part), call.Moment(0).sql}, Make(TypeKind::kInt));
  }
  static Bound Year(Call& call) { return NamedPart(call, "year"); }
  static Bound Month(Call& call) { return NamedPart(call, "month"); }
  static Bound Day(Call& call) { return NamedPart(call, "day"); }
  static Bound Now(Call& call) {
    return MakeBound(call.binder.Parameter("@@now"), Make(TypeKind::kDateTime));
  }
  static Bound UtcNow(Call& call) {
    return MakeBound(call.binder.Parameter("@@utcnow"), Make(TypeKind::kDateTime));
  }
  static Bound EoMonth(Call& call) {
    const std::string months = call.Count() > 1 ? call.Int(1).sql : "0";
    return CallOf("vk_eomonth", {call.Moment(0).sql, months}, Make(TypeKind::kDate));
  }
  static Bound IsDate(Call& call) {
    const std::string style = std::to_string(call.binder.DateStyle(TypeKind::kDateTime));
    return MakeBound("vk_try_date(" + call.Text(0).sql + ", 'datetime', " + style + ") IS NOT NULL",
                     Make(TypeKind::kInt), kEquality);
  }

  static constexpr std::array<Binder::Rule, 15> kRules = {{
      {"datefromparts", 3, 3, DateFromParts},
      {"dateadd", 3, 3, DateAdd},
      {"datediff", 3, 3, DateDiff},
      {"datepart", 2, 2, DatePart},
      {"datename", 2, 2, DateName},
      {"year", 1, 1, Year},
      {"month", 1, 1, Month},
      {"day", 1, 1, Day},
      {"getdate", 0, 0, Now},
      {"sysdatetime", 0, 0, Now},
      {"getutcdate", 0, 0, UtcNow},
      {"sysutcdatetime", 0, 0, UtcNow},
      {"eomonth", 1, 2, EoMonth},
      {"isdate", 1, 1, IsDate},
      {"current_timestamp", 0, 0, Now},
  }};
};

std::span<const Binder::Rule> FunctionRules::OfDates() { return Dates::kRules; }

}  // namespace vorek::sqlite
