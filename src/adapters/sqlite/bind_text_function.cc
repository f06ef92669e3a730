#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "adapters/sqlite/bind_call.h"

// Functions of texts and bytes.
namespace vorek::sqlite {

struct FunctionRules::Texts {
  using Call = Binder::Call;

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
  // The type of all arguments behind one another, the first of them as often as told.
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

  static constexpr std::array<Binder::Rule, 25> kRules = {{
      {"len", 1, 1, Len},
      {"datalength", 1, 1, DataLength},
      {"left", 2, 2, Left},
      {"right", 2, 2, Right},
      {"substring", 3, 3, Substring},
      {"charindex", 2, 3, CharIndex},
      {"patindex", 2, 2, PatIndex},
      {"replace", 3, 3, Replace},
      {"stuff", 4, 4, Stuff},
      {"ltrim", 1, 1, LTrim},
      {"rtrim", 1, 1, RTrim},
      {"trim", 1, 1, Trim},
      {"upper", 1, 1, Upper},
      {"lower", 1, 1, Lower},
      {"reverse", 1, 1, Reverse},
      {"replicate", 2, 2, Replicate},
      {"space", 1, 1, Space},
      {"str", 1, 3, Str},
      {"char", 1, 1, Char},
      {"nchar", 1, 1, NChar},
      {"unicode", 1, 1, Unicode},
      {"ascii", 1, 1, Ascii},
      {"quotename", 1, 1, QuoteName},
      {"concat", 2, kMany, Concat},
      {"concat_ws", 3, kMany, ConcatWs},
  }};
};

std::span<const Binder::Rule> FunctionRules::OfTexts() { return Texts::kRules; }

}  // namespace vorek::sqlite
