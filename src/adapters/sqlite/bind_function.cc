#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"
#include "vorek/error.h"

// The dialect's scalar functions. A rule writes a call in SQLite's own functions where they do the
// same, otherwise by a function that functions_*.cc gives to SQLite (they begin with "vk_").
namespace vorek::sqlite {

// A call with its arguments bound.
struct Binder::Call {
  Binder& binder;
  const Expr& expr;
  std::vector<Bound> arguments;

  std::size_t Count() const { return arguments.size(); }
  const Bound& operator[](std::size_t i) const { return arguments[i]; }

  // Arguments converted where they aren't of the kind that the function takes.
  Bound Text(std::size_t i) {
    const Bound& value = arguments[i];
    if (value.type.IsText()) return value;
    return binder.Convert(value, MakeText(TypeKind::kVarChar, Type::kMax), Mode::kImplicit,
                          expr.at);
  }
  Bound As(std::size_t i, TypeKind kind) {
    return binder.Convert(arguments[i], Make(kind), Mode::kImplicit, expr.at);
  }
  Bound Whole(std::size_t i) { return arguments[i].type.IsWhole() ? arguments[i] : Int(i); }
  Bound Int(std::size_t i) {
    return binder.Convert(arguments[i], Make(TypeKind::kInt), Mode::kCast, expr.at);
  }
  Bound Moment(std::size_t i) {
    if (arguments[i].type.IsDate()) return arguments[i];
    return As(i, TypeKind::kDateTime);
  }
  Bound Number(std::size_t i) {
    if (arguments[i].type.IsNumber()) return arguments[i];
    return As(i, TypeKind::kFloat);
  }
  // How many characters argument i has at most, written as a text.
  int Room(std::size_t i) const {
    constexpr int kOfNumbers = 41;  // the longest: a decimal of 38 digits, its sign and point
    return arguments[i].type.IsText() ? arguments[i].type.length : kOfNumbers;
  }
  bool IsNational(std::initializer_list<std::size_t> among) const {
    return std::any_of(among.begin(), among.end(),
                       [this](std::size_t i) { return arguments[i].type.IsNational(); });
  }
  // The type of a text that is made of argument i, with as much room or as told.
  Type Like(std::size_t i) const { return TextOf(IsNational({i}), Room(i)); }
  Type Like(std::size_t i, int length) const {
    return TextOf(IsNational({i}), Room(i) == Type::kMax ? Type::kMax : length);
  }
  static Type TextOf(bool national, int length) {
    return MakeText(national ? TypeKind::kNVarChar : TypeKind::kVarChar, length);
  }
  // The text with all room that there is, cut where it ends; "max" if argument i is.
  Bound Longest(Bound text, bool national, std::size_t i) const {
    text.type = TextOf(national, Room(i) == Type::kMax ? Type::kMax : LongestText(national));
    return CutToRoom(std::move(text));
  }
  bool IsCount(std::size_t i) const {  // a whole number as it stands, not negative
    return arguments[i].literal == Bound::Literal::kNumber && arguments[i].type.IsWhole() &&
           arguments[i].value[0] != '-';
  }
};

struct Binder::Rule {
  std::string_view name;
  std::size_t least;
  std::size_t most;
  Bound (*write)(Call&);
};

struct FunctionRules {
  using Call = Binder::Call;
  using Rule = Binder::Rule;
  static constexpr std::size_t kMany = 120;

  static Bound IsNull(Call& call) {
    const Bound& first = call[0];
    if (first.type.IsNull()) return call[1];
    if (!first.nullable) return first;
    Bound instead = call.binder.Convert(call[1], first.type, Binder::Mode::kCast, call.expr.at);
    Bound result = CallOf("ifnull", {first.sql, instead.sql}, first.type);
    result.nullable = call[1].nullable;
    return result;
  }

  static Bound Coalesce(Call& call) {
    Type type;
    for (const Bound& argument : call.arguments) type = CommonType(type, argument.type);
    std::string sql = "coalesce(";
    bool nullable = true;
    for (std::size_t i = 0; i < call.Count(); ++i) {
      nullable = nullable && call[i].nullable;
      sql += (i == 0 ? "" : ", ") +
             call.binder.Convert(call[i], type, Binder::Mode::kImplicit, call.expr.at).sql;
    }
    Bound result = MakeBound(sql + ")", type);
    result.nullable = nullable;
    return result;
  }

  static Bound NullIf(Call& call) {
    Bound a = call[0];
    Bound b = call[1];
    const Bound equal = call.binder.Compare("=", a, b, call.expr);
    return MakeBound("CASE WHEN " + equal.sql + " THEN NULL ELSE " + a.sql + " END", a.type);
  }

  static Bound Len(Call& call) {
    return CallOf("vk_len", {call.Text(0).sql}, Make(TypeKind::kInt));
  }

  static Bound DataLength(Call& call) {
    const Type& type = call[0].type;
    const Type whole = Make(TypeKind::kInt);
    if (type.IsText()) {
      const Bound letters = CallOf("vk_letters", {call[0].sql}, whole);
      if (!type.IsNational()) return letters;
      return MakeBound(letters.sql + " * 2", whole, kMultiplicative);
    }
    if (type.IsBinary()) return CallOf("length", {call[0].sql}, whole);
    call.binder.Refuse(call.expr.at, "DATALENGTH of " + TypeName(type) + " is not supported");
  }

  static Bound Left(Call& call) {
    const Bound text = call.Text(0);
    if (!call.IsCount(1)) return CallOf("vk_left", {text.sql, call.Whole(1).sql}, call.Like(0));
    return CallOf(
        "substr", {text.sql, "1", call[1].sql},
        call.Like(0, std::clamp(std::atoi(call[1].value.c_str()), 1, LongestText(false))));
  }

  static Bound Right(Call& call) {
    const Bound text = call.Text(0);
    return CallOf("vk_right", {text.sql, call.Whole(1).sql}, call.Like(0));
  }

  static Bound Substring(Call& call) {
    if (call[0].type.IsBinary()) {
      return CallOf("vk_subbytes", {call[0].sql, call.Whole(1).sql, call.Whole(2).sql},
                    call[0].type);
    }
    const Bound text = call.Text(0);
    const bool plain = call.IsCount(1) && call.IsCount(2) && call[1].value != "0";
    return CallOf(plain ? "substr" : "vk_substring",
                  {text.sql, call.Whole(1).sql, call.Whole(2).sql}, call.Like(0));
  }

  static Bound CharIndex(Call& call) {
    const std::string start = call.Count() == 3 ? call.Whole(2).sql : "1";
    return CallOf("vk_charindex", {call.Text(0).sql, call.Text(1).sql, start},
                  Make(TypeKind::kInt));
  }

  static Bound PatIndex(Call& call) {
    return CallOf("vk_patindex", {call.Text(0).sql, call.Text(1).sql}, Make(TypeKind::kInt));
  }

  static Bound Replace(Call& call) {
    const Bound text =
        CallOf("vk_replace", {call.Text(0).sql, call.Text(1).sql, call.Text(2).sql}, {});
    return call.Longest(text, call.IsNational({0, 2}), 0);
  }

  static Bound Stuff(Call& call) {
    const Bound text = CallOf(
        "vk_stuff", {call.Text(0).sql, call.Whole(1).sql, call.Whole(2).sql, call.Text(3).sql}, {});
    const bool national = call.IsNational({0, 3});
    const Type type = call.Longest(text, national, call.Room(3) == Type::kMax ? 3 : 0).type;
    if (type.length == Type::kMax) return MakeBound(text.sql, type);
    return CallOf("vk_fit_text", {text.sql, std::to_string(type.length)}, type);
  }

  static Bound LTrim(Call& call) {
    return CallOf("ltrim", {call.Text(0).sql, "' '"}, call.Like(0));
  }
  static Bound RTrim(Call& call) {
    return CallOf("rtrim", {call.Text(0).sql, "' '"}, call.Like(0));
  }
  static Bound Trim(Call& call) { return CallOf("trim", {call.Text(0).sql, "' '"}, call.Like(0)); }
  static Bound Upper(Call& call) { return CallOf("vk_upper", {call.Text(0).sql}, call.Like(0)); }
  static Bound Lower(Call& call) { return CallOf("vk_lower", {call.Text(0).sql}, call.Like(0)); }
  static Bound Reverse(Call& call) {
    return CallOf("vk_reverse", {call.Text(0).sql}, call.Like(0));
  }
  static Bound Replicate(Call& call) {
    const Bound text = CallOf("vk_replicate", {call.Text(0).sql, call.Whole(1).sql}, {});
    return call.Longest(text, call.IsNational({0}), 0);
  }
  static Bound Space(Call& call) {
    return CutToRoom(CallOf("vk_replicate", {"' '", call.Whole(0).sql},
                            MakeText(TypeKind::kVarChar, LongestText(false))));
  }
  static Bound Str(Call& call) {
    const std::string length = call.Count() > 1 ? call.Whole(1).sql : "10";
    const std::string places = call.Count() > 2 ? call.Whole(2).sql : "0";
    return CallOf("vk_str", {call.As(0, TypeKind::kFloat).sql, length, places},
                  MakeText(TypeKind::kVarChar, 40));
  }
  static Bound Char(Call& call) {
    return CallOf("vk_char", {call.Whole(0).sql}, MakeText(TypeKind::kChar, 1));
  }
  static Bound NChar(Call& call) {
    return CallOf("vk_nchar", {call.Whole(0).sql}, MakeText(TypeKind::kNChar, 1));
  }
  static Bound Ascii(Call& call) {
    return CallOf("vk_ascii", {call.Text(0).sql}, Make(TypeKind::kInt));
  }
  static Bound Unicode(Call& call) {
    return CallOf("unicode", {call.Text(0).sql}, Make(TypeKind::kInt));
  }
  static Bound QuoteName(Call& call) {
    return CallOf("vk_quotename", {call.Text(0).sql}, MakeText(TypeKind::kNVarChar, 258));
  }
  // A text of the arguments from one on, each as often as told.
  static Type Together(const Call& call, std::size_t times) {
    int room = 0;
    bool national = false;
    bool unlimited = false;
    for (std::size_t i = 0; i < call.Count(); ++i) {
      national = national || call.IsNational({i});
      unlimited = unlimited || call.Room(i) == Type::kMax;
      room += call.Room(i) * static_cast<int>(i == 0 ? times : 1);
    }
    return Call::TextOf(national, unlimited ? Type::kMax : std::min(room, LongestText(national)));
  }
  static Bound Concat(Call& call) {
    std::string sql;
    for (std::size_t i = 0; i < call.Count(); ++i) {
      sql += (i == 0 ? "" : " || ") + ("ifnull(" + call.Text(i).sql + ", '')");
    }
    Bound text = CutToRoom(MakeBound(sql, Together(call, 1), kConcatenation));
    text.nullable = false;
    return text;
  }

  static Bound ConcatWs(Call& call) {
    // NULLs are left out with their separators: each value brings the one in front of it along.
    const std::string separator = "ifnull(" + call.Text(0).sql + ", '')";
    std::string sql;
    for (std::size_t i = 1; i < call.Count(); ++i) {
      sql += (i == 1 ? "" : " || ") + ("ifnull(" + separator + " || " + call.Text(i).sql + ", '')");
    }
    Bound text = CutToRoom(
        CallOf("substr", {sql, "length(" + separator + ") + 1"}, Together(call, call.Count() - 1)));
    text.nullable = false;
    return text;
  }
  static Bound Choose(Call& call) {
    Type type;
    for (std::size_t i = 1; i < call.Count(); ++i) type = CommonType(type, call[i].type);
    std::string sql = "CASE " + call.Whole(0).sql;
    for (std::size_t i = 1; i < call.Count(); ++i) {
      const Bound value = call.binder.Convert(call[i], type, Binder::Mode::kImplicit, call.expr.at);
      sql += " WHEN " + std::to_string(i) + " THEN " + value.sql;
    }
    return MakeBound(sql + " END", type);
  }

  // Dates.
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
  static Bound IsNumeric(Call& call) {
    if (call[0].type.IsNumber()) {
      return MakeBound(Wrap(call[0], kEquality + 1) + " IS NOT NULL", Make(TypeKind::kInt),
                       kEquality);
    }
    return CallOf("vk_isnumeric", {call.Text(0).sql}, Make(TypeKind::kInt));
  }

  // Numbers. ABS, CEILING, FLOOR, ROUND and SIGN keep the type of what they are given.
  static Bound Abs(Call& call) {
    const Bound number = call.Number(0);
    if (IsWide(number)) return CallOf("vk_abs", {number.sql}, number.type);
    Bound result = CallOf("abs", {number.sql}, number.type);
    // The least number has no positive one.
    result.unchecked = number.type.IsWhole() && number.type.kind != TypeKind::kTinyInt;
    return Checked(std::move(result));
  }
  static Bound Sign(Call& call) {
    const Bound number = call.Number(0);
    Bound sign = CallOf(IsWide(number) ? "vk_sign" : "sign", {number.sql}, Make(TypeKind::kInt));
    sign.most = 1;
    return call.binder.Convert(std::move(sign), number.type, Binder::Mode::kImplicit, call.expr.at);
  }
  static Bound Integral(Call& call, bool up) {
    const Bound number = call.Number(0);
    if (number.type.IsWhole()) return number;
    if (number.type.IsFloat()) return CallOf(up ? "ceil" : "floor", {number.sql}, number.type);
    Bound whole =
        CallOf("vk_integral", {number.sql, std::to_string(number.type.scale), up ? "1" : "0"},
               MakeDecimal(number.type.precision, 0));
    if (number.type.IsDecimal()) return whole;
    whole.type = Make(TypeKind::kBigInt);
    return call.binder.Convert(std::move(whole), number.type, Binder::Mode::kImplicit,
                               call.expr.at);
  }
  static Bound Ceiling(Call& call) { return Integral(call, true); }
  static Bound Floor(Call& call) { return Integral(call, false); }
  static Bound Round(Call& call) {
    const Bound number = call.Number(0);
    const std::string places = call.Whole(1).sql;
    const std::string cut = call.Count() > 2 ? call.Whole(2).sql : "0";
    if (number.type.IsFloat()) return CallOf("vk_round", {number.sql, places, cut}, number.type);
    Bound rounded =
        CallOf("vk_round_exact", {number.sql, std::to_string(number.type.scale), places, cut},
               number.type);
    // 99.9 is rounded to four digits, and has room for three.
    rounded.unchecked = number.type.IsWhole();
    if (rounded.unchecked) return Checked(std::move(rounded));
    return CallOf(
        "vk_fit",
        {rounded.sql, std::to_string(number.type.precision), QuoteText(TypeName(number.type))},
        number.type);
  }
  static Bound Power(Call& call) {
    const Bound base = call.Number(0);
    Bound result =
        CallOf("vk_power", {call.As(0, TypeKind::kFloat).sql, call.As(1, TypeKind::kFloat).sql},
               Make(TypeKind::kFloat));
    if (base.type.IsFloat()) return result;
    const Type to = base.type.IsDecimal() ? MakeDecimal(38, base.type.scale) : base.type;
    return call.binder.Convert(std::move(result), to, Binder::Mode::kCast, call.expr.at);
  }
  static Bound Float1(Call& call, const char* name) {
    return CallOf(name, {call.As(0, TypeKind::kFloat).sql}, Make(TypeKind::kFloat));
  }
  static Bound Sqrt(Call& call) { return Float1(call, "vk_sqrt"); }
  static Bound Square(Call& call) {
    const std::string x = call.As(0, TypeKind::kFloat).sql;
    return CallOf("vk_power", {x, "2.0"}, Make(TypeKind::kFloat));
  }
  static Bound Exp(Call& call) { return Float1(call, "exp"); }
  static Bound Log(Call& call) {
    if (call.Count() == 1) return Float1(call, "vk_log");
    return CallOf("vk_divide",
                  {Float1(call, "vk_log").sql, "vk_log(" + call.As(1, TypeKind::kFloat).sql + ")"},
                  Make(TypeKind::kFloat));
  }
  static Bound Log10(Call& call) { return Float1(call, "vk_log10"); }
  static Bound Sin(Call& call) { return Float1(call, "sin"); }
  static Bound Cos(Call& call) { return Float1(call, "cos"); }
  static Bound Tan(Call& call) { return Float1(call, "tan"); }
  static Bound Atan(Call& call) { return Float1(call, "atan"); }
  static Bound Pi(Call&) { return MakeBound("pi()", Make(TypeKind::kFloat)); }

  // The session and the catalogue.
  static Bound ObjectIdOf(Call& call) {
    return CallOf("vk_object_id", {call.Text(0).sql}, Make(TypeKind::kInt));
  }
  static Bound ObjectProperty(Call& call) {
    return CallOf("vk_object_property", {call.Whole(0).sql, call.Text(1).sql},
                  Make(TypeKind::kInt));
  }
  static Bound ScopeIdentity(Call& call) {
    return MakeBound(call.binder.Parameter("@@scope_identity"), MakeDecimal(38, 0));
  }
  static Bound OfError(Call& call, const char* name, TypeKind kind) {
    Type type = Make(kind);
    if (type.IsText()) type.length = 4000;
    return MakeBound(call.binder.Parameter(name), type);
  }
  static Bound ErrorMessage(Call& call) {
    return OfError(call, "@@error_message", TypeKind::kNVarChar);
  }
  static Bound ErrorProcedure(Call& call) {
    return OfError(call, "@@error_procedure", TypeKind::kNVarChar);
  }
  static Bound ErrorNumber(Call& call) { return OfError(call, "@@error_number", TypeKind::kInt); }
  static Bound ErrorSeverity(Call& call) {
    return OfError(call, "@@error_severity", TypeKind::kInt);
  }
  static Bound ErrorState(Call& call) { return OfError(call, "@@error_state", TypeKind::kInt); }
  static Bound ErrorLine(Call& call) { return OfError(call, "@@error_line", TypeKind::kInt); }
  static Bound XactState(Call& call) { return OfError(call, "@@xact_state", TypeKind::kSmallInt); }
  static Bound NewId(Call&) { return MakeBound("vk_newid()", Make(TypeKind::kGuid)); }
  static Bound UserName(Call&) { return TextLiteral("dbo", MakeText(TypeKind::kNVarChar, 128)); }
  static Bound DbName(Call&) { return TextLiteral("main", MakeText(TypeKind::kNVarChar, 128)); }

  static const Rule* Find(std::string_view name);
};

const Binder::Rule* FunctionRules::Find(std::string_view name) {
  using R = FunctionRules;
  static constexpr std::array<Rule, 83> kRules = {{
      {"isnull", 2, 2, R::IsNull},
      {"coalesce", 2, kMany, R::Coalesce},
      {"nullif", 2, 2, R::NullIf},
      {"len", 1, 1, R::Len},
      {"datalength", 1, 1, R::DataLength},
      {"left", 2, 2, R::Left},
      {"right", 2, 2, R::Right},
      {"substring", 3, 3, R::Substring},
      {"charindex", 2, 3, R::CharIndex},
      {"patindex", 2, 2, R::PatIndex},
      {"replace", 3, 3, R::Replace},
      {"stuff", 4, 4, R::Stuff},
      {"ltrim", 1, 1, R::LTrim},
      {"rtrim", 1, 1, R::RTrim},
      {"trim", 1, 1, R::Trim},
      {"upper", 1, 1, R::Upper},
      {"lower", 1, 1, R::Lower},
      {"reverse", 1, 1, R::Reverse},
      {"replicate", 2, 2, R::Replicate},
      {"space", 1, 1, R::Space},
      {"str", 1, 3, R::Str},
      {"char", 1, 1, R::Char},
      {"nchar", 1, 1, R::NChar},
      {"unicode", 1, 1, R::Unicode},
      {"ascii", 1, 1, R::Ascii},
      {"quotename", 1, 1, R::QuoteName},
      {"concat", 2, kMany, R::Concat},
      {"concat_ws", 3, kMany, R::ConcatWs},
      {"choose", 2, kMany, R::Choose},
      {"datefromparts", 3, 3, R::DateFromParts},
      {"dateadd", 3, 3, R::DateAdd},
      {"datediff", 3, 3, R::DateDiff},
      {"datepart", 2, 2, R::DatePart},
      {"datename", 2, 2, R::DateName},
      {"year", 1, 1, R::Year},
      {"month", 1, 1, R::Month},
      {"day", 1, 1, R::Day},
      {"getdate", 0, 0, R::Now},
      {"sysdatetime", 0, 0, R::Now},
      {"getutcdate", 0, 0, R::UtcNow},
      {"sysutcdatetime", 0, 0, R::UtcNow},
      {"eomonth", 1, 2, R::EoMonth},
      {"isdate", 1, 1, R::IsDate},
      {"isnumeric", 1, 1, R::IsNumeric},
      {"abs", 1, 1, R::Abs},
      {"sign", 1, 1, R::Sign},
      {"ceiling", 1, 1, R::Ceiling},
      {"floor", 1, 1, R::Floor},
      {"round", 2, 3, R::Round},
      {"power", 2, 2, R::Power},
      {"sqrt", 1, 1, R::Sqrt},
      {"square", 1, 1, R::Square},
      {"exp", 1, 1, R::Exp},
      {"log", 1, 2, R::Log},
      {"log10", 1, 1, R::Log10},
      {"sin", 1, 1, R::Sin},
      {"cos", 1, 1, R::Cos},
      {"tan", 1, 1, R::Tan},
      {"atan", 1, 1, R::Atan},
      {"pi", 0, 0, R::Pi},
      {"object_id", 1, 2, R::ObjectIdOf},
      {"objectproperty", 2, 2, R::ObjectProperty},
      {"scope_identity", 0, 0, R::ScopeIdentity},
      {"newid", 0, 0, R::NewId},
      {"error_message", 0, 0, R::ErrorMessage},
      {"error_procedure", 0, 0, R::ErrorProcedure},
      {"error_number", 0, 0, R::ErrorNumber},
      {"error_severity", 0, 0, R::ErrorSeverity},
      {"error_state", 0, 0, R::ErrorState},
      {"error_line", 0, 0, R::ErrorLine},
      {"xact_state", 0, 0, R::XactState},
      {"user_name", 0, 1, R::UserName},
      {"suser_sname", 0, 1, R::UserName},
      {"suser_name", 0, 1, R::UserName},
      {"db_name", 0, 1, R::DbName},
      {"current_timestamp", 0, 0, R::Now},
      {"current_user", 0, 0, R::UserName},
      {"system_user", 0, 0, R::UserName},
      {"user", 0, 0, R::UserName},
      {"session_user", 0, 0, R::UserName},
      {"original_login", 0, 0, R::UserName},
      {"host_name", 0, 0, R::UserName},
      {"app_name", 0, 0, R::UserName},
  }};
  const auto* found = std::find_if(kRules.begin(), kRules.end(),
                                   [name](const Rule& rule) { return SameWord(rule.name, name); });
  return found == kRules.end() ? nullptr : found;
}

Bound Binder::BindFunction(const Expr& expr) {
  const std::string name = LowerWord(expr.path.back());
  if (expr.path.size() > 1) return BindUserFunction(expr);
  const bool defaults = std::any_of(expr.operands.begin(), expr.operands.end(),
                                    [](const ExprPtr& operand) { return operand == nullptr; });
  if (defaults) Refuse(expr.at, "DEFAULT goes to functions of the database alone");
  if (name == "iif") {
    if (expr.operands.size() != 3) Refuse(expr.at, "IIF takes three arguments");
    const std::string condition = BindCondition(*expr.operands[0], 0);
    Bound yes = BindValue(*expr.operands[1]);
    Bound no = BindValue(*expr.operands[2]);
    const Type type = CommonType(yes.type, no.type);
    yes = Convert(std::move(yes), type, Mode::kImplicit, expr.at);
    no = Convert(std::move(no), type, Mode::kImplicit, expr.at);
    return MakeBound("CASE WHEN " + condition + " THEN " + yes.sql + " ELSE " + no.sql + " END",
                     type);
  }
  const Rule* rule = FunctionRules::Find(name);
  if (rule == nullptr) return BindAggregate(expr, name);
  if (expr.window != nullptr || expr.distinct) {
    Refuse(expr.at, "The function '" + expr.path[0] + "' takes neither OVER nor DISTINCT");
  }
  const std::size_t count = expr.operands.size();
  if (count < rule->least || count > rule->most) {
    Refuse(expr.at, "The function '" + expr.path[0] + "' takes " + std::to_string(rule->least) +
                        (rule->most == rule->least ? "" : " or more") + " argument(s)");
  }
  const bool has_part = name.rfind("date", 0) == 0 && name != "datefromparts";
  Call call{*this, expr, {}};
  for (std::size_t i = 0; i < count; ++i) {
    // The part of a date is a word, no column.
    call.arguments.push_back(has_part && i == 0 ? Bound{} : BindValue(*expr.operands[i]));
  }
  Bound result = rule->write(call);
  result.name.clear();
  return result;
}

Bound Binder::BindUserFunction(const Expr& expr) {
  const ModuleInfo* module = schema_.FindModule(expr.path.back());
  if (module == nullptr || module->kind != "FN") {
    std::string path;
    for (const std::string& part : expr.path) path += (path.empty() ? "" : ".") + part;
    throw Error(ErrorNumber::kMissingObject, "Cannot find the user-defined function '" + path +
                                                 "' (" + PlaceOf(source_, expr.at) + ").");
  }
  const Statement& definition = module->Definition();
  if (definition.parameters.size() != expr.operands.size()) {
    Refuse(expr.at, "The function '" + module->name + "' takes " +
                        std::to_string(definition.parameters.size()) + " argument(s)");
  }
  calls_ = true;
  std::string sql = "vk_call(" + QuoteText(module->name);
  for (std::size_t i = 0; i < expr.operands.size(); ++i) {
    sql += ", " + ArgumentOf(*module, i, expr.operands[i].get()).sql;
  }
  return MakeBound(sql + ")", definition.returns);
}

}  // namespace vorek::sqlite
