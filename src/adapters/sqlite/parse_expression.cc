#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "adapters/sqlite/parser.h"
#include "text/utf8.h"

namespace vorek::sqlite {

ExprPtr Parser::New(ExprKind kind, std::size_t at) const {
  auto expr = std::make_unique<Expr>();
  expr->kind = kind;
  expr->at = at;
  return expr;
}

void Parser::Adopt(Expr& parent, ExprPtr child) const {
  parent.depth = std::max(parent.depth, child->depth + 1);
  if (parent.depth > kMaxTreeDepth) {
    Refuse(source_, parent.at, "The expression is nested too deeply");
  }
  parent.operands.push_back(std::move(child));
}

ExprPtr Parser::Binary(ExprKind kind, std::string op, ExprPtr left, ExprPtr right) const {
  ExprPtr expr = New(kind, left->at);
  expr->text = std::move(op);
  Adopt(*expr, std::move(left));
  Adopt(*expr, std::move(right));
  return expr;
}

std::vector<ExprPtr> Parser::ExpressionList() {
  std::vector<ExprPtr> list;
  do list.push_back(Expression());
  while (TakeSymbol(","));
  return list;
}

std::vector<ExprPtr> Parser::Arguments() {
  std::vector<ExprPtr> list;
  do list.push_back(TakeWord("default") ? nullptr : Expression());
  while (TakeSymbol(","));
  return list;
}

ExprPtr Parser::Expression() {
  const Level level(*this);
  ExprPtr first = AndChain();
  if (!AtWord("or")) return first;
  ExprPtr any = New(ExprKind::kAny, first->at);
  Adopt(*any, std::move(first));
  while (TakeWord("or")) Adopt(*any, AndChain());
  return any;
}

ExprPtr Parser::AndChain() {
  ExprPtr first = NotChain();
  if (!AtWord("and")) return first;
  ExprPtr all = New(ExprKind::kAll, first->at);
  Adopt(*all, std::move(first));
  while (TakeWord("and")) Adopt(*all, NotChain());
  return all;
}

ExprPtr Parser::NotChain() {
  if (!AtWord("not")) return Predicate();
  const Level level(*this);
  ExprPtr expr = New(ExprKind::kNot, Take().begin);
  Adopt(*expr, NotChain());
  return expr;
}

ExprPtr Parser::Predicate() {
  if (AtWord("exists")) {
    ExprPtr expr = New(ExprKind::kExists, Take().begin);
    NeedSymbol("(");
    expr->query = ParseQuery();
    NeedSymbol(")");
    return expr;
  }
  return PredicateRest(Sum());
}

ExprPtr Parser::PredicateRest(ExprPtr left) {
  if (TakeWord("is")) {
    ExprPtr expr = New(ExprKind::kIsNull, left->at);
    expr->negated = TakeWord("not");
    NeedWord("null");
    Adopt(*expr, std::move(left));
    return expr;
  }
  const bool negated = AtWord("not");
  if (negated) Take();
  if (TakeWord("in")) return InRest(std::move(left), negated);
  if (TakeWord("like")) return LikeRest(std::move(left), negated);
  if (TakeWord("between")) {
    ExprPtr expr = New(ExprKind::kBetween, left->at);
    expr->negated = negated;
    Adopt(*expr, std::move(left));
    Adopt(*expr, Sum());
    NeedWord("and");
    Adopt(*expr, Sum());
    return expr;
  }
  if (negated) RefuseHere();
  return CompareRest(std::move(left));
}

ExprPtr Parser::InRest(ExprPtr left, bool negated) {
  ExprPtr expr = New(ExprKind::kIn, left->at);
  expr->negated = negated;
  Adopt(*expr, std::move(left));
  NeedSymbol("(");
  if (AtQuery()) {
    expr->query = ParseQuery();
  } else {
    for (ExprPtr& item : ExpressionList()) Adopt(*expr, std::move(item));
  }
  NeedSymbol(")");
  return expr;
}

ExprPtr Parser::LikeRest(ExprPtr left, bool negated) {
  ExprPtr expr = New(ExprKind::kLike, left->at);
  expr->negated = negated;
  Adopt(*expr, std::move(left));
  Adopt(*expr, Sum());
  if (TakeWord("escape")) Adopt(*expr, Primary());
  return expr;
}

ExprPtr Parser::CompareRest(ExprPtr left) {
  constexpr std::array<std::array<std::string_view, 2>, 9> kOperators = {{{"=", "="},
                                                                          {"<>", "<>"},
                                                                          {"!=", "<>"},
                                                                          {"<", "<"},
                                                                          {"<=", "<="},
                                                                          {">", ">"},
                                                                          {">=", ">="},
                                                                          {"!<", ">="},
                                                                          {"!>", "<="}}};
  // The two marks of an operator may stand apart: "> =".
  const auto at = [this](std::string_view symbol) {
    if (AtSymbol(symbol)) return 1;
    const bool apart =
        symbol.size() == 2 && AtSymbol(symbol.substr(0, 1)) && Peek(1).Is(symbol.substr(1));
    return apart ? 2 : 0;
  };
  const auto* found = kOperators.end();
  int tokens = 0;
  for (const auto* row = kOperators.begin(); row != kOperators.end(); ++row) {
    if (at((*row)[0]) <= tokens) continue;
    found = row;
    tokens = at((*row)[0]);
  }
  if (found == kOperators.end()) return left;
  for (int i = 0; i < tokens; ++i) Take();
  const bool all = AtWord("all");
  if (all || AtWord("any") || AtWord("some")) {
    ExprPtr expr = New(ExprKind::kQuantified, left->at);
    Take();
    expr->text = std::string((*found)[1]);
    expr->path = {all ? "all" : "any"};
    Adopt(*expr, std::move(left));
    NeedSymbol("(");
    expr->query = ParseQuery();
    NeedSymbol(")");
    return expr;
  }
  return Binary(ExprKind::kCompare, std::string((*found)[1]), std::move(left), Sum());
}

ExprPtr Parser::Sum() {
  ExprPtr left = Product();
  while (AtSymbol("+") || AtSymbol("-") || AtSymbol("&") || AtSymbol("|") || AtSymbol("^")) {
    std::string op = Take().value;
    left = Binary(ExprKind::kBinary, std::move(op), std::move(left), Product());
  }
  return left;
}

ExprPtr Parser::Product() {
  ExprPtr left = Unary();
  while (AtSymbol("*") || AtSymbol("/") || AtSymbol("%")) {
    std::string op = Take().value;
    left = Binary(ExprKind::kBinary, std::move(op), std::move(left), Unary());
  }
  return left;
}

ExprPtr Parser::Unary() {
  if (AtSymbol("-") || AtSymbol("+") || AtSymbol("~")) {
    const Level level(*this);
    ExprPtr expr = New(ExprKind::kUnary, Here());
    expr->text = Take().value;
    Adopt(*expr, Unary());
    return expr;
  }
  ExprPtr expr = Primary();
  while (AtWord("collate")) {
    ExprPtr collate = New(ExprKind::kCollate, Take().begin);
    collate->text = Collation();
    Adopt(*collate, std::move(expr));
    expr = std::move(collate);
  }
  return expr;
}

ExprPtr Parser::Primary() {
  if (AtSymbol("(")) return Bracketed();
  if (Peek().kind != TokenKind::kName && Peek().kind != TokenKind::kQuotedName) return Literal();
  if (AtWord("null")) return New(ExprKind::kNull, Take().begin);
  if (AtWord("case")) return Case();
  const bool call = Peek(1).Is("(");
  if (call && (AtWord("cast") || AtWord("try_cast"))) return Cast();
  if (call && (AtWord("convert") || AtWord("try_convert"))) return Convert();
  return NameOrCall();
}

ExprPtr Parser::Literal() {
  constexpr std::array<std::pair<TokenKind, ExprKind>, 5> kLiterals = {{
      {TokenKind::kText, ExprKind::kText},
      {TokenKind::kNumber, ExprKind::kNumber},
      {TokenKind::kMoney, ExprKind::kMoney},
      {TokenKind::kBytes, ExprKind::kBytes},
      {TokenKind::kVariable, ExprKind::kVariable},
  }};
  const auto* found = std::find_if(kLiterals.begin(), kLiterals.end(),
                                   [&](const auto& pair) { return pair.first == Peek().kind; });
  if (found == kLiterals.end()) RefuseHere();
  ExprPtr expr = New(found->second, Here());
  expr->national = Peek().national;
  expr->text = Take().value;
  return expr;
}

ExprPtr Parser::Bracketed() {
  const Level level(*this);
  const std::size_t at = Take().begin;
  if (AtQuery()) {
    // "((select ..))" is a subquery as well as "(select ..)" is.
    ExprPtr expr = New(ExprKind::kSubquery, at);
    expr->query = ParseQuery();
    NeedSymbol(")");
    return XmlValue(std::move(expr));
  }
  ExprPtr expr = Expression();
  NeedSymbol(")");
  return expr;
}

ExprPtr Parser::Case() {
  const Level level(*this);
  ExprPtr expr = New(ExprKind::kCase, Take().begin);
  expr->has_base = !AtWord("when");
  if (expr->has_base) Adopt(*expr, Expression());
  if (!AtWord("when")) RefuseHere();
  while (TakeWord("when")) {
    Adopt(*expr, Expression());
    NeedWord("then");
    Adopt(*expr, Expression());
  }
  expr->has_else = TakeWord("else");
  if (expr->has_else) Adopt(*expr, Expression());
  NeedWord("end");
  return expr;
}

ExprPtr Parser::Cast() {
  ExprPtr expr = New(ExprKind::kCast, Here());
  expr->text = LowerWord(Take().value);
  NeedSymbol("(");
  Adopt(*expr, Expression());
  NeedWord("as");
  expr->type = TypeWords(30);
  NeedSymbol(")");
  return expr;
}

ExprPtr Parser::Convert() {
  ExprPtr expr = New(ExprKind::kCast, Here());
  expr->text = LowerWord(Take().value);
  NeedSymbol("(");
  expr->type = TypeWords(30);
  NeedSymbol(",");
  Adopt(*expr, Expression());
  if (TakeSymbol(",")) Adopt(*expr, Expression());
  NeedSymbol(")");
  return expr;
}

int Parser::TypeNumber() {
  if (TakeWord("max")) return Type::kMax;
  if (Peek().kind != TokenKind::kNumber) RefuseHere();
  int value = 0;
  const std::string& digits = Peek().value;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) RefuseHere();
  Take();
  return value;
}

Type Parser::TypeWords(int length) {
  const Token token = Peek();
  std::string name = Object().Last();  // dbo.type, [int]
  if (SameWord(name, "double") && TakeWord("precision")) name = "float";
  if (TakeWord("varying")) name = SameWord(name.substr(0, 1), "n") ? "nvarchar" : "varchar";
  int first = 0;
  int second = 0;
  if (TakeSymbol("(")) {
    first = TypeNumber();
    if (TakeSymbol(",")) second = TypeNumber();
    NeedSymbol(")");
  }
  Type type = TypeFromName(name, first, second);
  if ((type.IsText() || type.IsBinary()) && type.length == 0) type.length = length;
  if (type.IsNull()) {
    Refuse(source_, token.begin, "Type " + text::Left(name, 60) + " is not supported");
  }
  if (type.IsDecimal() && (first > 38 || second > (first == 0 ? 18 : first))) {
    Refuse(source_, token.begin,
           "The precision or the scale of " + name + " is beyond decimal(38,38)");
  }
  return type;
}

ExprPtr Parser::NameOrCall() {
  ExprPtr expr = New(ExprKind::kColumn, Here());
  const bool function_word = Peek(1).Is("(") && Peek().kind == TokenKind::kName;
  const bool bare_function = AtBareFunction();
  expr->path.push_back(function_word ? Take().value : Name());
  while (TakeSymbol(".")) {
    if (TakeSymbol("*")) {
      expr->kind = ExprKind::kStar;
      return expr;
    }
    if (TakeSymbol(".")) expr->path.emplace_back();
    expr->path.push_back(Name());
  }
  if (AtSymbol("(")) return Call(std::move(expr));
  if (bare_function && expr->path.size() == 1) expr->kind = ExprKind::kFunction;
  return expr;
}

// Words of functions that take no brackets.
bool Parser::AtBareFunction() const {
  static constexpr std::array<std::string_view, 5> kWords = {"current_timestamp", "current_user",
                                                             "session_user", "system_user", "user"};
  return Peek().kind == TokenKind::kName &&
         std::any_of(kWords.begin(), kWords.end(),
                     [this](std::string_view word) { return Peek().IsWord(word); });
}

ExprPtr Parser::Call(ExprPtr function) {
  const Level level(*this);
  static constexpr std::array<std::string_view, 10> kNotCalls = {
      "and", "or", "in", "exists", "select", "where", "on", "from", "values", "top"};
  if (function->path.size() == 1 &&
      std::any_of(kNotCalls.begin(), kNotCalls.end(),
                  [&](std::string_view word) { return SameWord(word, function->path[0]); })) {
    Refuse(source_, function->at, "Incorrect syntax near '" + function->path[0] + "'");
  }
  function->kind = ExprKind::kFunction;
  NeedSymbol("(");
  if (TakeWord("distinct")) {
    function->distinct = true;
  } else {
    TakeWord("all");
  }
  if (AtSymbol("*")) {
    Adopt(*function, New(ExprKind::kStar, Take().begin));
  } else if (!AtSymbol(")")) {
    for (ExprPtr& argument : Arguments()) {
      // DEFAULT goes to functions of the database alone, which are looked up when they are bound.
      if (argument == nullptr) function->operands.push_back(nullptr);
      if (argument != nullptr) Adopt(*function, std::move(argument));
    }
  }
  NeedSymbol(")");
  if (AtWord("within")) RefuseWord(Peek());
  if (AtWord("over")) function->window = Over();
  return function;
}

std::unique_ptr<Window> Parser::Over() {
  auto window = std::make_unique<Window>();
  NeedWord("over");
  NeedSymbol("(");
  if (TakeWords({"partition", "by"})) window->partition = ExpressionList();
  if (AtWord("order")) window->order = OrderList();
  if (AtWord("rows") || AtWord("range")) window->frame = Frame();
  NeedSymbol(")");
  return window;
}

std::string Parser::Frame() {
  std::string frame = LowerWord(Take().value);
  const auto bound = [&] {
    if (TakeWords({"current", "row"})) return std::string(" current row");
    std::string text = " ";
    if (TakeWord("unbounded")) {
      text += "unbounded";
    } else {
      text += std::to_string(TypeNumber());
    }
    if (!AtWord("preceding") && !AtWord("following")) RefuseHere();
    return text + " " + LowerWord(Take().value);
  };
  if (!TakeWord("between")) return frame + bound();
  frame += " between" + bound();
  NeedWord("and");
  return frame + " and" + bound();
}

}  // namespace vorek::sqlite
