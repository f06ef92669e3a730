#include <array>
#include <string>
#include <utility>

#include "adapters/sqlite/bind_call.h"

// Functions of numbers. ABS, CEILING, FLOOR, ROUND and SIGN keep the type of what they are given.
namespace vorek::sqlite {

struct FunctionRules::Numbers {
  using Call = Binder::Call;

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

  static Bound IsNumeric(Call& call) {
    if (call[0].type.IsNumber()) {
      return MakeBound(Wrap(call[0], kEquality + 1) + " IS NOT NULL", Make(TypeKind::kInt),
                       kEquality);
    }
    return CallOf("vk_isnumeric", {call.Text(0).sql}, Make(TypeKind::kInt));
  }

  static constexpr std::array<Binder::Rule, 17> kRules = {{
      {"isnumeric", 1, 1, IsNumeric},
      {"abs", 1, 1, Abs},
      {"sign", 1, 1, Sign},
      {"ceiling", 1, 1, Ceiling},
      {"floor", 1, 1, Floor},
      {"round", 2, 3, Round},
      {"power", 2, 2, Power},
      {"sqrt", 1, 1, Sqrt},
      {"square", 1, 1, Square},
      {"exp", 1, 1, Exp},
      {"log", 1, 2, Log},
      {"log10", 1, 1, Log10},
      {"sin", 1, 1, Sin},
      {"cos", 1, 1, Cos},
      {"tan", 1, 1, Tan},
      {"atan", 1, 1, Atan},
      {"pi", 0, 0, Pi},
  }};
};

std::span<const Binder::Rule> FunctionRules::OfNumbers() { return Numbers::kRules; }

}  // namespace vorek::sqlite
