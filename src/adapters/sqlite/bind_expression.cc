#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/exact.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

constexpr int kMaxBinding = 2000;  // frames of the walk over a tree that the parser let through

}  // namespace

Bound MakeBound(std::string sql, const Type& type, int tightness) {
  Bound bound;
  bound.sql = std::move(sql);
  bound.type = type;
  bound.tightness = tightness;
  return bound;
}

std::string Wrap(const Bound& value, int tightness) {
  return value.tightness < tightness ? "(" + value.sql + ")" : value.sql;
}

Bound NumberLiteral(long long units, const Type& type) {
  Bound bound = MakeBound(std::to_string(units), type, units < 0 ? kPrefix : kTight);
  bound.literal = Bound::Literal::kNumber;
  bound.value = bound.sql;
  bound.nullable = false;
  return bound;
}

double MostOf(const Bound& value) {
  if (value.literal == Bound::Literal::kNull) return 0;
  if (value.literal == Bound::Literal::kNumber) {
    return std::abs(std::strtod(value.value.c_str(), nullptr));
  }
  return value.most < 0 ? MostUnits(value.type) : value.most;
}

bool IsWide(const Bound& value) { return value.type.IsDecimal() && MostOf(value) > kMostInteger; }

Bound Ordered(Bound value) {
  if (IsWide(value)) return CallOf("vk_order", {value.sql}, value.type);
  return Collated(std::move(value));
}

Bound Checked(Bound value) {
  if (!value.unchecked) return value;
  Bound checked = CallOf("vk_in_" + TypeName(value.type), {value.sql}, value.type);
  checked.nullable = value.nullable;
  return checked;
}

Bound TextLiteral(const std::string& text, const Type& type) {
  Bound bound = MakeBound(QuoteText(text), type);
  if (text.find('\0') != std::string::npos) {
    // SQLite ends a statement's text at a NUL character.
    std::string hex = "CAST(x'";
    for (const char c : text) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      hex += kDigits[static_cast<unsigned char>(c) >> 4U];
      hex += kDigits[static_cast<unsigned char>(c) & 15U];
    }
    bound.sql = hex + "' AS TEXT)";
  }
  bound.literal = Bound::Literal::kText;
  bound.value = text;
  bound.nullable = false;
  return bound;
}

Bound CallOf(std::string_view name, std::initializer_list<std::string> arguments,
             const Type& type) {
  std::string sql(name);
  sql += "(";
  for (const std::string& argument : arguments) {
    if (sql.back() != '(') sql += ", ";
    sql += argument;
  }
  return MakeBound(sql + ")", type);
}

Bound Collated(Bound value) {
  if (value.collated || !value.type.IsText()) return value;
  value.sql = Wrap(value, kCollation) + " COLLATE VOREK";
  value.tightness = kCollation;
  value.collated = true;
  return value;
}

void Binder::Refuse(std::size_t at, const std::string& message) const {
  vorek::sqlite::Refuse(source_, at, message);
}

Bound Binder::Bind(const Expr& expr) { return Checked(BindUnchecked(expr)); }

Bound Binder::BindUnchecked(const Expr& expr) {
  if (++depth_ > kMaxBinding) Refuse(expr.at, "The expression is nested too deeply");
  schema_.KeepTime();
  const std::size_t before = scope_ == nullptr ? 0 : scope_->ungrouped.size();
  // Of the queries around, which have groups of their own.
  std::vector<std::pair<Scope*, std::size_t>> around;
  for (Scope* scope = scope_ == nullptr ? nullptr : scope_->outer; scope != nullptr;
       scope = scope->outer) {
    if (!scope->group_keys.empty()) around.emplace_back(scope, scope->ungrouped.size());
  }
  Bound bound = BindAny(expr);
  --depth_;
  // Whatever a GROUP BY names may stand as a whole; what was noted inside of it is no offence.
  if (scope_ != nullptr && !scope_->group_keys.empty() &&
      scope_->group_keys.count(bound.sql) != 0) {
    scope_->ungrouped.resize(before);
  }
  for (const auto& [scope, count] : around) {
    if (scope->group_keys.count(bound.sql) != 0) scope->ungrouped.resize(count);
  }
  const bool absent = scope_ != nullptr && scope_->inside_aggregate == 0 &&
                      scope_->absent_keys.count(bound.sql) != 0;
  if (absent) {
    scope_->ungrouped.resize(before);
    const std::string name = bound.name;
    bound = MakeBound("NULL", bound.type);
    bound.name = name;
  }
  return bound;
}

Bound Binder::BindAny(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::kNull:
    case ExprKind::kNumber:
    case ExprKind::kMoney:
    case ExprKind::kText:
    case ExprKind::kBytes:
      return BindLiteral(expr);
    case ExprKind::kVariable:
      return BindVariable(expr);
    case ExprKind::kColumn:
      return BindColumn(expr);
    case ExprKind::kStar:
      Refuse(expr.at, "Incorrect syntax near '*'");
    case ExprKind::kUnary:
      return BindUnary(expr);
    case ExprKind::kBinary:
      return BindBinary(expr);
    case ExprKind::kCompare:
      return BindCompare(expr);
    case ExprKind::kAll:
    case ExprKind::kAny:
      return BindChain(expr);
    case ExprKind::kNot:
      return MakeBound("NOT " + BindCondition(*expr.operands[0], kLooseNot),
                       Make(TypeKind::kCondition), kLooseNot);
    case ExprKind::kBetween:
      return BindBetween(expr);
    case ExprKind::kIn:
      return BindIn(expr);
    case ExprKind::kLike:
      return BindLike(expr);
    case ExprKind::kIsNull:
      return BindIsNull(expr);
    case ExprKind::kExists:
      return MakeBound("EXISTS (" + BindQuery(*expr.query).sql + ")", Make(TypeKind::kCondition));
    case ExprKind::kQuantified:
      return BindQuantified(expr);
    case ExprKind::kSubquery:
      return BindSubquery(expr);
    case ExprKind::kCase:
      return BindCase(expr);
    case ExprKind::kFunction:
      return BindFunction(expr);
    case ExprKind::kCast:
      return BindCast(expr);
    case ExprKind::kCollate:
      return BindValue(*expr.operands[0]);  // there is one collation
  }
  Refuse(expr.at, "Incorrect syntax");
}

Bound Binder::BindOperand(const Expr& expr) {
  Bound bound = BindUnchecked(expr);
  if (bound.type.IsCondition()) Refuse(expr.at, "A condition stands where a value is expected");
  return bound;
}

Bound Binder::BindValue(const Expr& expr) { return Checked(BindOperand(expr)); }

std::string Binder::BindCondition(const Expr& expr, int tightness) {
  const Bound bound = Bind(expr);
  if (!bound.type.IsCondition()) {
    Refuse(expr.at, "An expression of non-boolean type stands where a condition is expected");
  }
  return Wrap(bound, tightness);
}

namespace {

// 'x' = 'x', by which an empty parameter switches a condition off: "Date >= 1 or ''=''". The server
// drops such a chain before it looks at any row, so that the rest of it can't fail.
bool IsAlwaysTrue(const Expr& expr) {
  return expr.kind == ExprKind::kCompare && expr.text == "=" &&
         expr.operands[0]->kind == ExprKind::kText && expr.operands[1]->kind == ExprKind::kText &&
         expr.operands[0]->text == expr.operands[1]->text;
}

}  // namespace

Bound Binder::BindChain(const Expr& expr) {
  const bool all = expr.kind == ExprKind::kAll;
  const int tightness = all ? kLooseAnd : kLooseOr;
  std::vector<std::string> terms;
  for (const ExprPtr& operand : expr.operands) {
    terms.push_back(IsAlwaysTrue(*operand) ? "1"
                                           : BindCondition(*operand, tightness + (all ? 0 : 1)));
  }
  // SQLite limits how deep a chain may be: pairs of pairs keep a long one flat.
  const std::string link = all ? " AND " : " OR ";
  constexpr std::size_t kLongChain = 200;
  while (terms.size() > kLongChain) {
    std::vector<std::string> pairs;
    for (std::size_t i = 0; i + 1 < terms.size(); i += 2) {
      pairs.push_back("(" + terms[i] + link + terms[i + 1] + ")");
    }
    if (terms.size() % 2 != 0) pairs.push_back(terms.back());
    terms = std::move(pairs);
  }
  std::string sql = terms[0];
  for (std::size_t i = 1; i < terms.size(); ++i) sql += link + terms[i];
  return MakeBound(std::move(sql), Make(TypeKind::kCondition), tightness);
}

Bound Binder::BindLiteral(const Expr& expr) {
  if (expr.kind == ExprKind::kNull) {
    Bound bound = MakeBound("NULL", Type{});
    bound.literal = Bound::Literal::kNull;
    return bound;
  }
  if (expr.kind == ExprKind::kText) {
    const int length = std::max(1, static_cast<int>(text::Length(expr.text)));
    return TextLiteral(expr.text,
                       MakeText(expr.national ? TypeKind::kNVarChar : TypeKind::kVarChar, length));
  }
  if (expr.kind == ExprKind::kBytes) {
    std::string digits = expr.text.substr(2);
    if (digits.size() % 2 != 0) digits.insert(0, "0");
    return MakeBound(
        "x'" + digits + "'",
        MakeText(TypeKind::kVarBinary, std::max(1, static_cast<int>(digits.size() / 2))));
  }
  return BindNumber(expr);
}

Bound Binder::BindNumber(const Expr& expr, bool negative) {
  std::string digits = (negative ? "-" : "") + expr.text;
  if (digits.find_first_of("eE") != std::string::npos) {
    const double value = std::strtod(digits.c_str(), nullptr);
    if (!(std::abs(value) < 1e308)) Refuse(expr.at, "The number " + digits + " is out of range");
    Bound bound = MakeBound(digits, Make(TypeKind::kFloat), negative ? kPrefix : kTight);
    bound.nullable = false;
    return bound;
  }
  const std::size_t point = digits.find('.');
  const int scale = point == std::string::npos ? 0 : static_cast<int>(digits.size() - point - 1);
  const bool money = expr.kind == ExprKind::kMoney;
  if (money && scale > 4) {
    Refuse(expr.at, "The number " + expr.text + " has more than four places");
  }
  const DecimalText number = ReadDecimal(digits, money ? 4 : scale);
  const bool fits = number.fits && scale <= kMostDigits &&
                    (!money || (number.units >= INT64_MIN && number.units <= INT64_MAX));
  if (!fits) Refuse(expr.at, "The number " + expr.text + " is out of range");
  const auto size =
      static_cast<int>(WideText(number.units < 0 ? -number.units : number.units, 0).size());
  Type type = MakeDecimal(std::max({size, scale, 1}), scale);
  if (money) type = Make(TypeKind::kMoney);
  // A whole number beyond int is a decimal without places.
  const bool is_int =
      point == std::string::npos && number.units >= INT32_MIN && number.units <= INT32_MAX;
  if (!money && is_int) type = Make(TypeKind::kInt);
  if (number.units > INT64_MIN && number.units <= INT64_MAX) {
    return NumberLiteral(static_cast<long long>(number.units), type);
  }
  Bound bound = MakeBound(WideSql(number.units), type, kPrefix);
  bound.nullable = false;
  return bound;
}

std::string Binder::Parameter(const std::string& name) {
  const auto found = std::find(parameters_.begin(), parameters_.end(), name);
  const auto index = found - parameters_.begin();
  if (found == parameters_.end()) parameters_.push_back(name);
  return "?" + std::to_string(index + 1);
}

Bound Binder::BindVariable(const Expr& expr) {
  const std::string name = LowerWord(expr.text);
  const auto argument = arguments_.find(name);
  if (argument != arguments_.end()) return argument->second;
  const auto found = variables_.find(name);
  if (found != variables_.end() && !found->second.table.empty()) {
    Refuse(expr.at, "Must declare the scalar variable \"" + expr.text + "\"");
  }
  if (found != variables_.end() && running_.count(name) != 0) {
    // "SELECT @x = @x + ..": each row sees what the row before has left.
    uses_running_ = true;
    return CallOf("vk_variable", {QuoteText(name)}, found->second.type);
  }
  if (found != variables_.end()) return MakeBound(Parameter(name), found->second.type);
  if (name == "@@rowcount" || name == "@@error" || name == "@@trancount" ||
      name == "@@fetch_status") {
    return MakeBound(Parameter(name), Make(TypeKind::kInt));
  }
  if (name == "@@identity") return MakeBound(Parameter(name), MakeDecimal(18, 0));
  if (name == "@@servername" || name == "@@version") {
    return TextLiteral("VorekSQLite", MakeText(TypeKind::kNVarChar, 128));
  }
  if (name.rfind("@@", 0) == 0) Refuse(expr.at, "'" + expr.text + "' is not supported");
  Refuse(expr.at, "Must declare the scalar variable \"" + expr.text + "\"");
}

Bound Binder::ColumnOf(Scope& scope, const Source& source, const ColumnInfo& column,
                       const Expr& expr) {
  Bound bound =
      MakeBound((source.bare ? "" : source.sql + ".") + QuoteName(column.name), column.type);
  if (!source.expressions.empty()) {
    bound = source.expressions[static_cast<std::size_t>(&column - source.Columns().data())];
  } else {
    bound.column = true;
    bound.collated = column.collated;
  }
  bound.nullable = column.nullable || source.nullable;
  bound.name = column.name;
  if (scope.carried != nullptr) {
    std::vector<std::string>& carried = *scope.carried;
    const auto found = std::find(carried.begin(), carried.end(), bound.sql);
    const auto index = found - carried.begin();
    if (found == carried.end()) carried.push_back(bound.sql);
    bound.sql = QuoteName("rows in order") + ".\"c" + std::to_string(index) + "\"";
  }
  if (scope.inside_aggregate == 0 && scope.group_keys.count(bound.sql) == 0) {
    scope.ungrouped.push_back({expr.at, source.name + "." + column.name});
  }
  return bound;
}

Bound Binder::BindColumn(const Expr& expr) {
  const std::string& name = expr.path.back();
  const bool qualified = expr.path.size() > 1;
  const std::string* qualifier = qualified ? &expr.path[expr.path.size() - 2] : nullptr;
  bool found_source = false;
  for (Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
    const Source* source = nullptr;
    const ColumnInfo* hit = nullptr;
    for (const Source& candidate : scope->sources) {
      if (qualified && !text::EqualsIgnoreCase(candidate.name, *qualifier)) continue;
      found_source = true;
      for (const ColumnInfo& column : candidate.Columns()) {
        if (!text::EqualsIgnoreCase(column.name, name)) continue;
        if (hit != nullptr) Refuse(expr.at, "Ambiguous column name '" + name + "'");
        hit = &column;
        source = &candidate;
        break;
      }
    }
    if (hit != nullptr) return ColumnOf(*scope, *source, *hit, expr);
  }
  if (qualified && !found_source) {
    std::string path;
    for (const std::string& part : expr.path) path += (path.empty() ? "" : ".") + part;
    Refuse(expr.at, "The multi-part identifier \"" + path + "\" could not be bound");
  }
  Refuse(expr.at, "Invalid column name '" + name + "'");
}

Bound Binder::BindUnary(const Expr& expr) {
  const Expr& operand = *expr.operands[0];
  const bool literal = operand.kind == ExprKind::kNumber || operand.kind == ExprKind::kMoney;
  // "-2147483648" is an int although its digits alone aren't.
  if (literal && expr.text == "-") return BindNumber(operand, true);
  Bound value = BindOperand(operand);
  if (expr.text == "+" && value.type.IsText()) return value;
  if (!value.type.IsNumber() && !value.type.IsNull()) {
    Refuse(expr.at, "The data type " + TypeName(value.type) + " is invalid for the operator '" +
                        expr.text + "'");
  }
  if (expr.text == "+" || value.type.IsNull()) return value;
  if (expr.text == "~") {
    if (!value.type.IsWhole()) Refuse(expr.at, "'~' takes whole numbers only");
    value = Checked(std::move(value));
    if (value.type.kind == TypeKind::kBit || value.type.kind == TypeKind::kTinyInt) {
      const char* const all = value.type.kind == TypeKind::kBit ? "1 - " : "255 - ";
      return MakeBound(all + Wrap(value, kAdditive + 1), value.type, kAdditive);
    }
    return MakeBound("~" + Wrap(value, kPrefix), value.type, kPrefix);
  }
  if (value.type.kind == TypeKind::kTinyInt) {  // which has no negative ones
    value = Convert(std::move(value), Make(TypeKind::kSmallInt), Mode::kImplicit, expr.at);
  }
  return Negated(std::move(value));
}

Bound Binder::BindBetween(const Expr& expr) {
  Bound value = BindValue(*expr.operands[0]);
  Bound low = BindValue(*expr.operands[1]);
  Bound high = BindValue(*expr.operands[2]);
  Bound from = Compare(">=", value, std::move(low), expr);
  Bound to = Compare("<=", std::move(value), std::move(high), expr);
  Bound both = MakeBound(from.sql + " AND " + to.sql, Make(TypeKind::kCondition), kLooseAnd);
  if (!expr.negated) return both;
  return MakeBound("NOT (" + both.sql + ")", both.type, kLooseNot);
}

Bound Binder::BindIn(const Expr& expr) {
  const Type condition = Make(TypeKind::kCondition);
  const std::string in = expr.negated ? " NOT IN (" : " IN (";
  Bound value = BindValue(*expr.operands[0]);
  if (expr.query != nullptr) {
    BoundQuery query = BindQuery(*expr.query);
    if (query.columns.size() != 1) {
      Refuse(expr.at, "A subquery behind IN must have one column");
    }
    // Both sides take one type; the subquery is bound again if it is the one that changes.
    const Type common = CommonType(value.type, query.columns[0].type);
    const Type& theirs = query.columns[0].type;
    const bool same_units = common.IsWhole() || common.IsText() || common.IsNull() ||
                            (theirs.kind == common.kind && theirs.scale == common.scale);
    if (!same_units || (common.IsWhole() && !theirs.IsWhole())) {
      const Targets targets = {{common, ""}};
      query = BindQuery(*expr.query, &targets);
    }
    const bool convert = common.IsText()
                             ? value.type.IsText() == false
                             : value.type.kind != common.kind || value.type.scale != common.scale;
    if (convert && !(common.IsWhole() && value.type.IsWhole())) {
      value = Convert(std::move(value), common, Mode::kImplicit, expr.at);
    }
    value = Collated(std::move(value));
    return MakeBound(Wrap(value, kEquality + 1) + in + query.sql + ")", condition, kEquality);
  }
  std::string list;
  bool plain = true;
  std::vector<Bound> items;
  for (std::size_t i = 1; i < expr.operands.size(); ++i) {
    items.push_back(BindValue(*expr.operands[i]));
    Bound left = value;
    Bound right = items.back();
    MakeComparable(left, right, expr);
    const bool texts = left.type.IsText() && right.type.IsText();
    plain = plain && (texts || left.sql == value.sql);
    list += (i == 1 ? "" : ", ") + right.sql;
  }
  if (plain) {
    value = Collated(std::move(value));
    return MakeBound(Wrap(value, kEquality + 1) + in + list + ")", condition, kEquality);
  }
  // The left side changes its units with the item beside it: written out as comparisons.
  std::string any;
  for (Bound& item : items) {
    any += (any.empty() ? "" : " OR ") + Compare("=", value, std::move(item), expr).sql;
  }
  if (expr.negated) return MakeBound("NOT (" + any + ")", condition, kLooseNot);
  return MakeBound(any, condition, kLooseOr);
}

Bound Binder::BindLike(const Expr& expr) {
  const Type wide = MakeText(TypeKind::kNVarChar, Type::kMax);
  const auto as_text = [&](const Expr& operand) {
    Bound value = BindValue(operand);
    if (value.type.IsText() || value.type.IsNull()) return value;
    return Convert(std::move(value), wide, Mode::kImplicit, expr.at);
  };
  Bound value = as_text(*expr.operands[0]);
  const Bound pattern = as_text(*expr.operands[1]);
  std::string escape;
  if (expr.operands.size() == 3) escape = ", " + as_text(*expr.operands[2]).sql;
  const bool national = value.type.IsNational() || pattern.type.IsNational();
  std::string sql =
      (national ? "vk_like(" : "vk_like_char(") + value.sql + ", " + pattern.sql + escape + ")";
  // What stands in front of the first wildcard bounds the column from below, and the whole pattern
  // is the only text if there is none: an index then finds the few rows that are looked at.
  int tightness = kTight;
  if (pattern.literal == Bound::Literal::kText && value.column && escape.empty()) {
    const std::string head = pattern.value.substr(0, pattern.value.find_first_of("%_["));
    const std::string column = Wrap(Collated(value), kRelation + 1);
    const auto literal = [&](const std::string& text) {
      return TextLiteral(text, pattern.type).sql;
    };
    if (head.size() == pattern.value.size()) {
      sql = column + " = " + literal(head) + " AND " + sql;
      tightness = kLooseAnd;
    } else if (!head.empty()) {
      sql = column + " >= " + literal(head) + " AND " + column + " < " +
            literal(head + "\xF4\x8F\xBF\xBF") + " AND " + sql;
      tightness = kLooseAnd;
    }
  }
  const Type condition = Make(TypeKind::kCondition);
  if (expr.negated) {
    return MakeBound(tightness == kTight ? "NOT " + sql : "NOT (" + sql + ")", condition,
                     kLooseNot);
  }
  return MakeBound(std::move(sql), condition, tightness);
}

Bound Binder::BindIsNull(const Expr& expr) {
  const Bound value = BindValue(*expr.operands[0]);
  return MakeBound(Wrap(value, kEquality + 1) + (expr.negated ? " IS NOT NULL" : " IS NULL"),
                   Make(TypeKind::kCondition), kEquality);
}

bool Binder::GivesOneRow(const Query& query) {
  if (query.joins_texts) return true;
  const vorek::sqlite::Select* select =
      query.branches.size() == 1 ? query.branches[0].select.get() : nullptr;
  if (select == nullptr || !select->values.empty()) return false;
  if (select->top != nullptr && select->top->text == "1" && !select->top_percent) return true;
  if (!select->group.empty() || select->items.size() != 1) return false;
  const Expr& item = *select->items[0].expr;
  constexpr std::array<std::string_view, 6> kAggregates = {"max", "min",   "sum",
                                                           "avg", "count", "count_big"};
  const bool aggregate =
      item.kind == ExprKind::kFunction && item.window == nullptr &&
      std::any_of(kAggregates.begin(), kAggregates.end(),
                  [&](std::string_view name) { return SameWord(name, item.path.back()); });
  return aggregate || NamesRowKey(*select);
}

bool Binder::NamesRowKey(const vorek::sqlite::Select& select) {
  // "... from t where t.ID = <something from elsewhere>", ID being the row's number.
  const bool simple = select.where != nullptr && select.from.size() == 1 &&
                      select.from[0].kind == TableRef::Kind::kTable &&
                      FindCommonTable(select.from[0].name) == nullptr;
  if (!simple) return false;
  const TableRef& from = select.from[0];
  const TableInfo* table = schema_.FindTable(from.name.Last());
  if (table == nullptr || schema_.FindModule(from.name.Last()) != nullptr) return false;
  const std::string& name = from.alias.empty() ? from.name.Last() : from.alias;
  const auto own = [&](const Expr& expr) -> const ColumnInfo* {
    if (expr.kind != ExprKind::kColumn) return nullptr;
    const bool other =
        expr.path.size() > 1 && !text::EqualsIgnoreCase(expr.path[expr.path.size() - 2], name);
    return other ? nullptr : table->Find(expr.path.back());
  };
  const auto constant = [&](const Expr& expr) {
    return expr.operands.empty() && expr.query == nullptr && own(expr) == nullptr;
  };
  const auto pins = [&](const Expr& condition) {
    if (condition.kind != ExprKind::kCompare || condition.text != "=") return false;
    for (std::size_t side = 0; side < 2; ++side) {
      const ColumnInfo* key = own(*condition.operands[side]);
      if (key != nullptr && key->row_key && constant(*condition.operands[1 - side])) return true;
    }
    return false;
  };
  if (select.where->kind != ExprKind::kAll) return pins(*select.where);
  return std::any_of(select.where->operands.begin(), select.where->operands.end(),
                     [&](const ExprPtr& condition) { return pins(*condition); });
}

Bound Binder::BindSubquery(const Expr& expr) {
  BoundQuery query = BindQuery(*expr.query);
  if (query.columns.size() != 1) Refuse(expr.at, "A subquery used as a value must have one column");
  Bound bound = MakeBound("(" + query.sql + ")", query.columns[0].type);
  // More than one row is an error, where SQLite by itself would take the first.
  if (!GivesOneRow(*expr.query)) {
    bound.sql = "(WITH \"one\"(\"v\") AS (" + query.sql + ") SELECT vk_one(\"v\") FROM \"one\")";
  }
  return bound;
}

Bound Binder::BindQuantified(const Expr& expr) {
  const bool all = expr.path[0] == "all";
  if (expr.text == "=" && !all) {
    Refuse(expr.at, "'= ANY' is not supported: write IN");
  }
  Refuse(expr.at, std::string("A comparison with ") + (all ? "ALL" : "ANY") + " is not supported");
}

Bound Binder::BindCase(const Expr& expr) {
  std::size_t at = expr.has_base ? 1 : 0;
  const std::size_t end = expr.operands.size() - (expr.has_else ? 1 : 0);
  Bound base;
  if (expr.has_base) base = BindValue(*expr.operands[0]);
  std::vector<std::string> conditions;
  std::vector<Bound> values;
  for (; at < end; at += 2) {
    if (expr.has_base) {
      Bound when = BindValue(*expr.operands[at]);
      conditions.push_back(Compare("=", base, std::move(when), *expr.operands[at]).sql);
    } else {
      conditions.push_back(BindCondition(*expr.operands[at], 0));
    }
    values.push_back(BindValue(*expr.operands[at + 1]));
  }
  if (expr.has_else) values.push_back(BindValue(*expr.operands.back()));
  Type type;
  for (const Bound& value : values) type = CommonType(type, value.type);
  std::string sql = "CASE";
  bool nullable = !expr.has_else;
  for (std::size_t i = 0; i < values.size(); ++i) {
    nullable = nullable || values[i].nullable;
    const Bound value = Convert(std::move(values[i]), type, Mode::kImplicit, expr.at);
    sql += i < conditions.size() ? " WHEN " + conditions[i] + " THEN " : " ELSE ";
    sql += value.sql;
  }
  Bound bound = MakeBound(sql + " END", type);
  bound.nullable = nullable;
  return bound;
}

Bound Binder::BindCast(const Expr& expr) {
  Bound value = BindValue(*expr.operands[0]);
  int style = 0;
  if (expr.operands.size() == 2) {
    const Bound given = BindValue(*expr.operands[1]);
    if (given.literal != Bound::Literal::kNumber || !given.type.IsWhole() ||
        given.value[0] == '-') {
      Refuse(expr.operands[1]->at, "The style of CONVERT must be a number as it stands");
    }
    style = std::atoi(given.value.c_str());
    if (style == 0 && value.type.IsDate()) style = 100;  // the same, and not that of the kind
  }
  const Mode mode = expr.text.rfind("try_", 0) == 0 ? Mode::kTry : Mode::kCast;
  Bound result = Convert(std::move(value), expr.type, mode, expr.at, style);
  result.name.clear();
  if (result.column) {
    result.column = false;
    result.collated = false;
  }
  return result;
}

}  // namespace vorek::sqlite
