#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/sqlite/bind_call.h"
#include "vorek/error.h"

// How calls are bound, and the functions of any values, of the session and of the catalogue.
namespace vorek::sqlite {

struct FunctionRules::Others {
  using Call = Binder::Call;

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

  static constexpr std::array<Binder::Rule, 26> kRules = {{
      {"isnull", 2, 2, IsNull},
      {"coalesce", 2, kMany, Coalesce},
      {"nullif", 2, 2, NullIf},
      {"choose", 2, kMany, Choose},
      {"object_id", 1, 2, ObjectIdOf},
      {"objectproperty", 2, 2, ObjectProperty},
      {"scope_identity", 0, 0, ScopeIdentity},
      {"newid", 0, 0, NewId},
      {"error_message", 0, 0, ErrorMessage},
      {"error_procedure", 0, 0, ErrorProcedure},
      {"error_number", 0, 0, ErrorNumber},
      {"error_severity", 0, 0, ErrorSeverity},
      {"error_state", 0, 0, ErrorState},
      {"error_line", 0, 0, ErrorLine},
      {"xact_state", 0, 0, XactState},
      {"user_name", 0, 1, UserName},
      {"suser_sname", 0, 1, UserName},
      {"suser_name", 0, 1, UserName},
      {"db_name", 0, 1, DbName},
      {"current_user", 0, 0, UserName},
      {"system_user", 0, 0, UserName},
      {"user", 0, 0, UserName},
      {"session_user", 0, 0, UserName},
      {"original_login", 0, 0, UserName},
      {"host_name", 0, 0, UserName},
      {"app_name", 0, 0, UserName},
  }};
};

std::span<const Binder::Rule> FunctionRules::OfOthers() { return Others::kRules; }

const Binder::Rule* FunctionRules::Find(std::string_view name) {
  for (const auto rules : {OfTexts(), OfDates(), OfNumbers(), OfOthers()}) {
    const auto found = std::find_if(rules.begin(), rules.end(), [name](const Binder::Rule& rule) {
      return SameWord(rule.name, name);
    });
    if (found != rules.end()) return &*found;
  }
  return nullptr;
}

// Its first argument is a condition, no value.
Bound Binder::BindIif(const Expr& expr) {
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

Bound Binder::BindFunction(const Expr& expr) {
  const std::string name = LowerWord(expr.path.back());
  if (expr.path.size() > 1) return BindUserFunction(expr);
  const bool defaults = std::any_of(expr.operands.begin(), expr.operands.end(),
                                    [](const ExprPtr& operand) { return operand == nullptr; });
  if (defaults) Refuse(expr.at, "DEFAULT goes to functions of the database alone");
  if (name == "iif") return BindIif(expr);
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
