#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"

namespace vorek::sqlite {

bool Parser::AtQuery() const {
  int brackets = 0;
  std::size_t at = 0;
  while (Peek(at).Is("(")) {
    ++brackets;
    ++at;
  }
  if (!Peek(at).IsWord("select")) return false;
  if (brackets == 0) return true;
  // "((select 1) + 2)" is an expression: what follows the bracket that closes the select decides.
  for (int open = brackets; open >= brackets; ++at) {
    if (Peek(at).kind == TokenKind::kEnd) return false;
    if (Peek(at).Is("(")) ++open;
    if (Peek(at).Is(")")) --open;
  }
  const Token& next = Peek(at);
  return next.Is(")") || next.IsWord("union") || next.IsWord("except") ||
         next.IsWord("intersect") || next.IsWord("order");
}

bool Parser::AtBracketedSelect() const {
  std::size_t at = 0;
  while (Peek(at).Is("(")) ++at;
  return Peek(at).IsWord("select");
}

std::unique_ptr<Query> Parser::ParseQuery() {
  const Level level(*this);
  return QueryBody(With());
}

std::vector<CommonTable> Parser::With() {
  std::vector<CommonTable> tables;
  if (!TakeWord("with")) return tables;
  do {
    CommonTable table;
    table.at = Here();
    table.name = Name();
    if (AtSymbol("(")) table.columns = NameList();
    NeedWord("as");
    NeedSymbol("(");
    table.query = ParseQuery();
    NeedSymbol(")");
    tables.push_back(std::move(table));
  } while (TakeSymbol(","));
  return tables;
}

std::unique_ptr<Query> Parser::QueryBody(std::vector<CommonTable> with) {
  auto query = std::make_unique<Query>();
  query->at = Here();
  query->with = std::move(with);
  query->branches.push_back(ParseBranch());
  for (;;) {
    std::string link;
    if (TakeWord("union")) {
      link = TakeWord("all") ? "UNION ALL" : "UNION";
    } else if (TakeWord("except")) {
      link = "EXCEPT";
    } else if (TakeWord("intersect")) {
      link = "INTERSECT";
    } else {
      break;
    }
    query->branches.push_back(ParseBranch());
    query->branches.back().link = std::move(link);
  }
  OrderAndPaging(*query);
  Option();
  return query;
}

Branch Parser::ParseBranch() {
  Branch branch;
  if (TakeSymbol("(")) {
    branch.query = ParseQuery();
    NeedSymbol(")");
  } else if (AtWord("values")) {
    branch.select = Values();
  } else {
    branch.select = ParseSelect();
  }
  return branch;
}

std::unique_ptr<Select> Parser::Values() {
  auto select = std::make_unique<Select>();
  select->at = Here();
  NeedWord("values");
  do {
    NeedSymbol("(");
    std::vector<ExprPtr> row;
    do {
      // DEFAULT stands as a null pointer.
      row.push_back(TakeWord("default") ? nullptr : Expression());
    } while (TakeSymbol(","));
    select->values.push_back(std::move(row));
    NeedSymbol(")");
  } while (TakeSymbol(","));
  return select;
}

void Parser::Top(ExprPtr& top, bool* percent, bool* ties) {
  if (!TakeWord("top")) return;
  if (TakeSymbol("(")) {
    top = Expression();
    NeedSymbol(")");
  } else {
    top = Literal();
  }
  if (AtWord("percent")) {
    if (percent == nullptr) RefuseWord(Peek());
    Take();
    *percent = true;
  }
  if (!AtWords({"with", "ties"})) return;
  if (ties == nullptr) RefuseWord(Peek(1));
  *ties = TakeWords({"with", "ties"});
}

std::unique_ptr<Select> Parser::ParseSelect() {
  auto select = std::make_unique<Select>();
  select->at = Here();
  NeedWord("select");
  if (!TakeWord("all")) select->distinct = TakeWord("distinct");
  Top(select->top, &select->top_percent, &select->top_ties);
  do select->items.push_back(Item());
  while (TakeSymbol(","));
  if (TakeWord("into")) select->into = Object();
  if (TakeWord("from")) select->from = FromList();
  if (TakeWord("where")) select->where = Expression();
  if (TakeWords({"group", "by"})) GroupBy(*select);
  if (TakeWord("having")) select->having = Expression();
  if (AtWord("compute")) RefuseWord(Peek());
  return select;
}

namespace {

using Sets = std::vector<std::vector<std::size_t>>;

// The sets of ROLLUP and CUBE over so many keys, the fullest first.
Sets SetsOf(std::size_t keys, bool cube) {
  Sets sets;
  if (!cube) {
    for (std::size_t size = keys + 1; size-- > 0;) {
      sets.emplace_back();
      for (std::size_t i = 0; i < size; ++i) sets.back().push_back(i);
    }
    return sets;
  }
  for (std::size_t mask = std::size_t{1} << keys; mask-- > 0;) {
    sets.emplace_back();
    for (std::size_t i = 0; i < keys; ++i) {
      if ((mask >> i & 1U) != 0) sets.back().push_back(i);
    }
  }
  return sets;
}

}  // namespace

void Parser::GroupBy(Select& select) {
  constexpr std::size_t kMostKeys = 10;  // of a CUBE
  const std::size_t at = Here();
  if (TakeWords({"grouping", "sets"})) {
    NeedSymbol("(");
    do {
      select.grouping_sets.emplace_back();
      const bool brackets = TakeSymbol("(");
      if (brackets && TakeSymbol(")")) continue;
      do {
        select.grouping_sets.back().push_back(select.group.size());
        select.group.push_back(Expression());
      } while (brackets && TakeSymbol(","));
      if (brackets) NeedSymbol(")");
    } while (TakeSymbol(","));
    NeedSymbol(")");
    return;
  }
  bool cube = AtWord("cube") && Peek(1).Is("(");
  bool sets = cube || (AtWord("rollup") && Peek(1).Is("("));
  if (sets) {
    Take();
    NeedSymbol("(");
    select.group = ExpressionList();
    NeedSymbol(")");
    if (AtSymbol(",")) RefuseHere();
  } else {
    TakeWord("all");
    select.group = ExpressionList();
    if (TakeWord("with")) {
      sets = true;
      cube = TakeWord("cube");
      if (!cube) NeedWord("rollup");
    }
  }
  if (!sets) return;
  if (select.group.size() > kMostKeys) Refuse(source_, at, "Too many keys of ROLLUP or CUBE");
  select.grouping_sets = SetsOf(select.group.size(), cube);
}

SelectItem Parser::Item() {
  SelectItem item;
  if (AtSymbol("*")) {
    item.expr = New(ExprKind::kStar, Take().begin);
    return item;
  }
  const bool assigns = Peek(1).Is("=");
  if (assigns && Peek().kind == TokenKind::kVariable) {
    item.variable = Take().value;
    Take();
    item.expr = Expression();
    return item;
  }
  if (assigns && (AtName() || Peek().kind == TokenKind::kText)) {
    item.alias = AliasName();
    Take();
    item.expr = Expression();
    return item;
  }
  item.expr = Expression();
  if (TakeWord("as") || AtName() || Peek().kind == TokenKind::kText) item.alias = AliasName();
  return item;
}

std::vector<TableRef> Parser::FromList() {
  std::vector<TableRef> tables;
  do tables.push_back(Joined());
  while (TakeSymbol(","));
  return tables;
}

bool Parser::JoinWord(TableRef::Join& join) {
  constexpr std::array<std::pair<std::string_view, TableRef::Join>, 5> kWords = {{
      {"inner", TableRef::Join::kInner},
      {"left", TableRef::Join::kLeft},
      {"right", TableRef::Join::kRight},
      {"full", TableRef::Join::kFull},
      {"cross", TableRef::Join::kCross},
  }};
  join = TableRef::Join::kInner;
  if (TakeWord("join")) return true;
  if (TakeWords({"cross", "apply"})) {
    join = TableRef::Join::kCrossApply;
    return true;
  }
  if (TakeWords({"outer", "apply"})) {
    join = TableRef::Join::kOuterApply;
    return true;
  }
  for (const auto& [word, kind] : kWords) {
    if (!AtWord(word)) continue;
    Take();
    join = kind;
    if (kind != TableRef::Join::kInner && kind != TableRef::Join::kCross) TakeWord("outer");
    // A hint on how to join changes no result.
    if (!TakeWord("hash") && !TakeWord("loop")) TakeWord("merge");
    NeedWord("join");
    return true;
  }
  return false;
}

TableRef Parser::Joined() {
  const Level level(*this);
  TableRef table = JoinTail(TableOrQuery());
  return table;
}

TableRef Parser::JoinTail(TableRef left) {
  TableRef::Join kind{};
  while (JoinWord(kind)) {
    TableRef join;
    join.kind = TableRef::Kind::kJoin;
    join.at = left.at;
    join.join = kind;
    join.depth = left.depth + 1;
    if (join.depth > kMaxTreeDepth) RefuseHere("The text is nested too deeply");
    join.left = std::make_unique<TableRef>(std::move(left));
    TableRef right = TableOrQuery();
    const bool open = kind == TableRef::Join::kCross || kind == TableRef::Join::kCrossApply ||
                      kind == TableRef::Join::kOuterApply;
    if (!open && !AtWord("on")) {
      // "a join b join c on .. on ..": the inner join is closed by the first ON.
      const Level level(*this);
      right = JoinTail(std::move(right));
    }
    join.right = std::make_unique<TableRef>(std::move(right));
    if (!open) {
      NeedWord("on");
      join.on = Expression();
    }
    left = std::move(join);
  }
  return left;
}

TableRef Parser::TableOrQuery() {
  TableRef table = PlainTable();
  while (AtWord("pivot") || AtWord("unpivot")) table = Pivot(std::move(table));
  return table;
}

TableRef Parser::Pivot(TableRef rows) {
  const Level level(*this);
  TableRef pivot;
  pivot.at = Here();
  pivot.kind = Take().IsWord("pivot") ? TableRef::Kind::kPivot : TableRef::Kind::kUnpivot;
  NeedSymbol("(");
  pivot.on = pivot.kind == TableRef::Kind::kPivot ? NameOrCall() : New(ExprKind::kColumn, Here());
  if (pivot.kind == TableRef::Kind::kUnpivot) pivot.on->path = {Name()};
  NeedWord("for");
  pivot.turned = Object().parts;
  NeedWord("in");
  pivot.columns = NameList();
  NeedSymbol(")");
  TakeWord("as");
  pivot.alias = Name();
  pivot.depth = rows.depth + 1;
  pivot.left = std::make_unique<TableRef>(std::move(rows));
  return pivot;
}

TableRef Parser::PlainTable() {
  TableRef table;
  table.at = Here();
  if (AtSymbol("(") && (AtQuery() || Peek(1).IsWord("select") || Peek(1).IsWord("values"))) {
    Take();
    table.kind = TableRef::Kind::kQuery;
    table.query = ParseQuery();
    NeedSymbol(")");
    TableAlias(table);
    if (table.alias.empty()) RefuseHere();
    return table;
  }
  if (TakeSymbol("(")) {
    table = Joined();
    NeedSymbol(")");
    return table;
  }
  table.name = TableName();
  table.call = !table.name.IsVariable() && AtSymbol("(") && !Peek(1).IsWord("nolock") &&
               !Peek(1).IsWord("index");
  if (table.call) {
    const Level level(*this);
    NeedSymbol("(");
    if (!AtSymbol(")")) table.arguments = Arguments();
    NeedSymbol(")");
  }
  Hints();
  TableAlias(table);
  Hints();
  return table;
}

void Parser::TableAlias(TableRef& table) {
  if (TakeWord("as")) {
    table.alias = AliasName();
  } else if (AtName() && !AtWord("nolock")) {
    table.alias = Name();
  }
  if (!table.alias.empty() && AtSymbol("(") && !Peek(1).IsWord("nolock")) {
    table.columns = NameList();
  }
}

void Parser::Hints() {
  // WITH (NOLOCK), (NOLOCK): they say how to lock or which index to take, never what is read.
  const bool with = AtWord("with") && Peek(1).Is("(");
  if (!with && !(AtSymbol("(") && Peek(1).IsWord("nolock"))) return;
  if (with) Take();
  Take();
  int open = 1;
  while (open > 0) {
    if (Peek().kind == TokenKind::kEnd) RefuseHere();
    if (AtSymbol("(")) ++open;
    if (AtSymbol(")")) --open;
    Take();
  }
}

std::vector<OrderItem> Parser::OrderList() {
  NeedWord("order");
  NeedWord("by");
  std::vector<OrderItem> items;
  do {
    OrderItem item;
    if (Peek().kind == TokenKind::kText) {
      // ORDER BY 'alias': an alias in quotes is taken for the column that bears it.
      item.expr = New(ExprKind::kColumn, Here());
      item.expr->path = {AliasName()};
    } else {
      item.expr = Expression();
    }
    if (!TakeWord("asc")) item.descending = TakeWord("desc");
    items.push_back(std::move(item));
  } while (TakeSymbol(","));
  return items;
}

void Parser::OrderAndPaging(Query& query) {
  if (AtWord("order")) query.order = OrderList();
  if (TakeWord("offset")) {
    query.offset = Expression();
    if (!TakeWord("rows")) NeedWord("row");
    if (TakeWord("fetch")) {
      if (!TakeWord("next")) NeedWord("first");
      query.fetch = Expression();
      if (!TakeWord("rows")) NeedWord("row");
      NeedWord("only");
    }
  }
  if (AtWord("for") && (Peek(1).IsWord("xml") || Peek(1).IsWord("json"))) ForXml(query);
}

void Parser::ForXml(Query& query) {
  query.joins_texts = TakeWords({"for", "xml", "path"}) && TakeSymbol("(") &&
                      Peek().kind == TokenKind::kText && Take().value.empty() && TakeSymbol(")");
  if (!query.joins_texts)
    RefuseHere("FOR XML and JSON are not supported, but for FOR XML PATH('')");
  if (!TakeSymbol(",")) return;
  query.xml_value = TakeWord("type");
  if (!query.xml_value) RefuseWord(Peek());
}

ExprPtr Parser::XmlValue(ExprPtr subquery) {
  // (select .. for xml path(''), type).value('.', 'nvarchar(max)')
  if (!subquery->query->xml_value) return subquery;
  constexpr std::array<std::string_view, 5> kWhole = {".", "text()[1]", "./text()[1]",
                                                      "(./text())[1]", "(text())[1]"};
  NeedSymbol(".");
  NeedWord("value");
  NeedSymbol("(");
  const std::string path = Peek().kind == TokenKind::kText ? Take().value : "";
  NeedSymbol(",");
  const std::string type = Peek().kind == TokenKind::kText ? LowerWord(Take().value) : "";
  NeedSymbol(")");
  const bool known = std::find(kWhole.begin(), kWhole.end(), path) != kWhole.end() &&
                     (type == "nvarchar(max)" || type == "varchar(max)");
  if (!known)
    Refuse(source_, subquery->at, "Only .value('.', 'nvarchar(max)') is supported of XML");
  subquery->query->xml_value = false;
  ExprPtr cast = New(ExprKind::kCast, subquery->at);
  cast->text = "cast";
  cast->type = MakeText(type[0] == 'n' ? TypeKind::kNVarChar : TypeKind::kVarChar, Type::kMax);
  subquery->query->xml_taken = true;
  Adopt(*cast, std::move(subquery));
  return cast;
}

void Parser::Option() {
  if (!TakeWord("option")) return;
  if (!AtSymbol("(")) RefuseHere();
  int open = 0;
  do {
    if (Peek().kind == TokenKind::kEnd) RefuseHere();
    if (AtSymbol("(")) ++open;
    if (AtSymbol(")")) --open;
    Take();
  } while (open > 0);
}

}  // namespace vorek::sqlite
