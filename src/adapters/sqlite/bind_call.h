#ifndef VOREK_ADAPTERS_SQLITE_BIND_CALL_H_
#define VOREK_ADAPTERS_SQLITE_BIND_CALL_H_

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/sqlite/bind.h"

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

// The rules by subject; each knows those of its own file.
struct FunctionRules {
  struct Texts;
  struct Dates;
  struct Numbers;
  struct Others;
  static constexpr std::size_t kMany = 120;  // arguments

  // Null for a name that isn't one.
  static const Binder::Rule* Find(std::string_view name);
  static std::span<const Binder::Rule> OfTexts();
  static std::span<const Binder::Rule> OfDates();
  static std::span<const Binder::Rule> OfNumbers();
  static std::span<const Binder::Rule> OfOthers();
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_BIND_CALL_H_
