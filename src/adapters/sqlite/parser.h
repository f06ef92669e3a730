#ifndef VOREK_ADAPTERS_SQLITE_PARSER_H_
#define VOREK_ADAPTERS_SQLITE_PARSER_H_

#include <functional>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/syntax.h"
#include "adapters/sqlite/token.h"

namespace vorek::sqlite {

// Reads a text of the dialect into its tree by recursive descent, with a limit on how deep it may
// nest. Throws Error(kSyntax) with the word that isn't understood, its line and column.
class Parser {
 public:
  // checkpoint is called at bounded steps; it throws to stop.
  explicit Parser(const SourceText& source, std::function<void()> checkpoint = {});

  std::shared_ptr<Batch> ParseBatch();
  // The parameters that sp_executesql is told of: "@a int, @b int output".
  std::vector<Parameter> ParseParameters();
  // One expression that fills the whole text: a default kept in the database.
  ExprPtr ParseWholeExpression();

 private:
  static constexpr int kMaxDepth = 120;      // of brackets, subqueries and blocks
  static constexpr int kMaxTreeDepth = 900;  // of a chain of operators

  // Counts a level of nesting while it lives.
  class Level {
   public:
    explicit Level(Parser& parser);
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  // Tokens (parser.cc).
  const Token& Peek(std::size_t ahead = 0) const;
  const Token& Take();
  bool AtWord(std::string_view word) const { return Peek().IsWord(word); }
  bool AtWords(std::initializer_list<std::string_view> words) const;
  bool AtSymbol(std::string_view symbol) const { return Peek().Is(symbol); }
  bool TakeWord(std::string_view word);
  bool TakeWords(std::initializer_list<std::string_view> words);
  bool TakeSymbol(std::string_view symbol);
  void NeedWord(std::string_view word);
  void NeedSymbol(std::string_view symbol);
  [[noreturn]] void RefuseHere() const;
  [[noreturn]] void RefuseHere(const std::string& message) const;
  [[noreturn]] void RefuseWord(const Token& token) const;  // a word that isn't translated
  bool AtName() const;  // a quoted name or a word that isn't reserved
  bool AtLabel() const;
  std::string Name();
  std::string Collation();
  std::string AliasName();  // a name or a text
  ObjectName Object();
  ObjectName TableName();               // or a table variable's
  std::vector<std::string> NameList();  // (a, b)
  std::string SourceOf(std::size_t begin, std::size_t end) const;
  std::size_t Here() const { return Peek().begin; }
  std::size_t LastEnd() const;

  // Expressions (parse_expression.cc).
  ExprPtr Expression();
  ExprPtr AndChain();
  ExprPtr NotChain();
  ExprPtr Predicate();
  ExprPtr PredicateRest(ExprPtr left);
  ExprPtr InRest(ExprPtr left, bool negated);
  ExprPtr LikeRest(ExprPtr left, bool negated);
  ExprPtr CompareRest(ExprPtr left);
  ExprPtr Sum();
  ExprPtr Product();
  ExprPtr Unary();
  ExprPtr Primary();
  ExprPtr Literal();
  ExprPtr Bracketed();
  ExprPtr Case();
  ExprPtr Cast();
  ExprPtr Convert();
  ExprPtr NameOrCall();
  bool AtBareFunction() const;
  ExprPtr Call(ExprPtr function);
  std::unique_ptr<Window> Over();
  std::string Frame();
  Type TypeWords(int length = 1);  // of texts that tell none
  int TypeNumber();
  ExprPtr New(ExprKind kind, std::size_t at) const;
  ExprPtr Binary(ExprKind kind, std::string op, ExprPtr left, ExprPtr right) const;
  void Adopt(Expr& parent, ExprPtr child) const;
  std::vector<ExprPtr> ExpressionList();
  std::vector<ExprPtr> Arguments();

  // Queries (parse_query.cc).
  std::unique_ptr<Query> ParseQuery();
  std::vector<CommonTable> With();
  std::unique_ptr<Query> QueryBody(std::vector<CommonTable> with);
  Branch ParseBranch();
  bool AtQuery() const;
  bool AtBracketedSelect() const;
  std::unique_ptr<Select> ParseSelect();
  std::unique_ptr<Select> Values();
  void Top(ExprPtr& top, bool* percent, bool* ties);
  SelectItem Item();
  std::vector<TableRef> FromList();
  TableRef Joined();
  TableRef JoinTail(TableRef left);
  bool JoinWord(TableRef::Join& join);
  TableRef TableOrQuery();
  TableRef PlainTable();
  TableRef Pivot(TableRef rows);
  void GroupBy(Select& select);
  void TableAlias(TableRef& table);
  void Hints();
  std::vector<OrderItem> OrderList();
  void OrderAndPaging(Query& query);
  void ForXml(Query& query);
  ExprPtr XmlValue(ExprPtr subquery);
  void Option();

  // Statements (parse_statement.cc, parse_change.cc, parse_variable.cc, parse_setting.cc,
  // parse_call.cc).
  StatementPtr ParseStatement();
  StatementPtr NewStatement(StatementKind kind) const;
  StatementPtr StatementByWord();
  StatementPtr SelectStatement(std::vector<CommonTable> with);
  StatementPtr Insert();
  StatementPtr Update();
  StatementPtr Delete();
  StatementPtr Declare();
  StatementPtr DeclareCursor();
  StatementPtr Cursor();
  StatementPtr Set();
  void Setting(Statement& set);
  StatementPtr Try();
  StatementPtr Note(const std::string& what);
  StatementPtr If();
  StatementPtr While();
  StatementPtr Block();
  StatementPtr Return();
  StatementPtr Execute();
  StatementPtr Print();
  StatementPtr Raise();
  StatementPtr Transaction();
  StatementPtr Simple(StatementKind kind);
  StatementPtr Labelled(StatementKind kind);
  // A GOTO leads to a label beside it or beside a statement that it stands in.
  void CheckLabels(const std::vector<StatementPtr>& statements, std::set<std::string> labels) const;
  Argument ExecuteArgument();
  Assignment ParseAssignment();
  void SkipStatementEnd();

  // Definitions (parse_definition.cc).
  StatementPtr Create();
  StatementPtr Alter();
  StatementPtr Drop();
  StatementPtr Truncate();
  StatementPtr CreateTable();
  StatementPtr CreateIndex();
  StatementPtr Module(std::size_t at, bool alter, bool or_alter);
  void ViewBody(Statement& view);
  void ProcedureBody(Statement& procedure);
  void FunctionBody(Statement& function);
  StatementPtr ReturnTable(Statement& function);
  void RefuseEffects(const Statement& statement, bool fills_table) const;
  StatementPtr AlterTable();
  void TableParts(Statement& table);
  ColumnDefinition Column();
  void ColumnOptions(ColumnDefinition& column, Statement& table);
  bool ColumnConstraint(ColumnDefinition& column, Statement& table);
  Constraint TableConstraint();
  void ConstraintColumns(Constraint& constraint);
  void References(Constraint& constraint);
  void IndexOptions();
  std::vector<Parameter> Parameters();
  std::string DefaultSource(ExprPtr& expr);

  SourceText source_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  std::size_t taken_ = 0;
  int depth_ = 0;
  std::function<void()> checkpoint_;
};

// True for words that can't be names without brackets.
bool IsReserved(std::string_view word);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_PARSER_H_
