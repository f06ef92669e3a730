#ifndef VOREK_ADAPTERS_SQLITE_SYNTAX_H_
#define VOREK_ADAPTERS_SQLITE_SYNTAX_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/sqlite/type.h"

// The syntax tree of the dialect: what was written, nothing bound yet. Every node knows the byte
// offset at which it begins, for messages.
namespace vorek::sqlite {

struct Query;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

// "server.database.owner.object" as written; what stands in front of the object counts only where
// columns are looked up.
struct ObjectName {
  std::vector<std::string> parts;
  std::size_t at = 0;

  bool Empty() const { return parts.empty(); }
  const std::string& Last() const { return parts.back(); }
  bool IsVariable() const { return !parts.empty() && parts.back().rfind('@', 0) == 0; }
  bool IsTemporary() const {
    return IsVariable() || (!parts.empty() && parts.back().rfind('#', 0) == 0);
  }
};

enum class ExprKind {
  kNull,
  kNumber,    // text: the digits
  kMoney,     // text: the digits
  kText,      // text; national
  kBytes,     // text: "0x.."
  kVariable,  // text: "@name" or "@@NAME"
  kColumn,    // path
  kStar,      // path: the qualifier, if any; only inside count(*) and select lists
  kUnary,     // text: "-", "+", "~"; one operand
  kBinary,    // text: an operator of arithmetic; two operands
  kCompare,   // text: "=", "<>", "<", ...; two operands
  kAll,       // two or more conditions joined by AND
  kAny,       // two or more conditions joined by OR
  kNot,
  kBetween,  // operand, low, high
  kIn,       // operand and a list, or operand and a query
  kLike,     // operand, pattern, perhaps an escape text
  kIsNull,
  kExists,      // query
  kQuantified,  // operand, query; text: the operator; path: "all" or "any"
  kSubquery,    // a value: query
  kCase,        // operands: [base,] when, then, ..., [else]
  kFunction,    // path; operands
  kCast,        // operand, perhaps a style; text: "cast", "convert", "try_cast", "try_convert"
  kCollate,     // operand; text: the collation's name
};

struct OrderItem {
  ExprPtr expr;
  bool descending = false;
};

// The OVER clause of a function.
struct Window {
  std::vector<ExprPtr> partition;
  std::vector<OrderItem> order;
  std::string frame;  // in words that both dialects share: "ROWS BETWEEN ... AND ..."
};

struct Expr {
  ExprKind kind = ExprKind::kNull;
  std::size_t at = 0;
  int depth = 1;  // of the tree below and with this node
  std::string text;
  std::vector<std::string> path;
  std::vector<ExprPtr> operands;  // null for the word DEFAULT as an argument
  std::unique_ptr<Query> query;
  std::unique_ptr<Window> window;
  Type type;              // of a cast
  bool national = false;  // N'text'
  bool negated = false;   // NOT IN, IS NOT NULL, ...
  bool distinct = false;  // count(distinct x)
  bool has_base = false;  // CASE x WHEN ...
  bool has_else = false;
};

struct SelectItem {
  ExprPtr expr;
  std::string alias;
  std::string variable;  // SELECT @x = expr
};

struct TableRef {
  // A pivot has its rows in `left`; in `columns` the columns that it makes or takes apart, in `on`
  // the aggregate, or the name of the values' column; in `turned` that of the names.
  enum class Kind { kTable, kQuery, kJoin, kPivot, kUnpivot };
  enum class Join { kInner, kLeft, kRight, kFull, kCross, kCrossApply, kOuterApply };

  Kind kind = Kind::kTable;
  std::size_t at = 0;
  int depth = 1;
  ObjectName name;
  std::string alias;
  std::vector<std::string> columns;  // alias(column, ...)
  std::vector<std::string> turned;
  bool call = false;               // of a function that gives a table
  std::vector<ExprPtr> arguments;  // null for the word DEFAULT
  std::unique_ptr<Query> query;
  Join join = Join::kInner;
  std::unique_ptr<TableRef> left;
  std::unique_ptr<TableRef> right;
  ExprPtr on;
};

// One SELECT ... FROM ... WHERE ... GROUP BY ... HAVING, or a list of VALUES.
struct Select {
  std::size_t at = 0;
  bool distinct = false;
  ExprPtr top;
  bool top_percent = false;
  bool top_ties = false;
  std::vector<SelectItem> items;
  ObjectName into;
  std::vector<TableRef> from;
  ExprPtr where;
  std::vector<ExprPtr> group;
  std::vector<std::vector<std::size_t>> grouping_sets;  // of the group's keys
  ExprPtr having;
  std::vector<std::vector<ExprPtr>> values;  // VALUES (..), (..) in place of all that
};

struct CommonTable {
  std::string name;
  std::size_t at = 0;
  std::vector<std::string> columns;
  std::unique_ptr<Query> query;
};

// One branch of a UNION: a select or a query in brackets.
struct Branch {
  std::string link;  // what joins it to the branches before: "UNION ALL", "UNION", "EXCEPT", ...
  std::unique_ptr<Select> select;
  std::unique_ptr<Query> query;
};

struct Query {
  std::size_t at = 0;
  std::vector<CommonTable> with;
  std::vector<Branch> branches;
  std::vector<OrderItem> order;
  ExprPtr offset;
  ExprPtr fetch;
  bool joins_texts = false;  // FOR XML PATH(''): all texts of the one column in a row
  bool xml_value = false;    // ", TYPE": its .value('.', ..) must stand behind it
  bool xml_taken = false;    // and does: nothing is written as &amp;
};

struct ColumnDefinition {
  std::string name;
  std::size_t at = 0;
  Type type;
  bool nullable = true;
  bool not_null_told = false;
  bool identity = false;
  long long seed = 1;
  long long increment = 1;
  ExprPtr computed;
  ExprPtr default_value;
  std::string default_source;  // in its own words
  std::string computed_source;
};

struct Constraint {
  enum class Kind { kPrimaryKey, kUnique, kForeignKey, kCheck, kDefault };

  Kind kind = Kind::kPrimaryKey;
  std::string name;
  std::size_t at = 0;
  std::vector<std::string> columns;
  ObjectName references;
  std::vector<std::string> referenced;
  std::string on_delete;  // "CASCADE", "SET NULL", ...; "" for none
  std::string on_update;
  ExprPtr check;
  std::string source;  // of a check or a default, in its own words
};

struct Parameter {
  std::string name;  // with its "@"
  std::size_t at = 0;
  Type type;
  ExprPtr default_value;
  bool output = false;
};

struct Argument {
  std::string name;  // "@x" of "@x = value", or empty
  ExprPtr value;     // null for the word DEFAULT
  bool output = false;
};

struct Assignment {
  std::vector<std::string> path;
  std::string variable;
  ExprPtr value;
  std::size_t at = 0;
};

enum class StatementKind {
  kSelect,
  kInsert,
  kUpdate,
  kDelete,
  kDeclare,
  kSet,
  kIf,
  kWhile,
  kBlock,
  kReturn,
  kBreak,
  kContinue,
  kLabel,  // word
  kGoto,   // word: the label
  kExecute,
  kExecuteText,  // EXEC ('text')
  kPrint,
  kRaise,          // expr: the text; arguments: severity, state, values; word: "throw"
  kDeclareCursor,  // variable: the name; query
  kCursor,   // word: "open", "close", "deallocate", "fetch"; variable: the name; columns: INTO
  kTry,      // body: the block, its CATCH
  kSetting,  // word: the setting; variable: its value
  kNote,     // word: what is passed over
  kCreateTable,
  kCreateIndex,
  kCreateModule,  // a view, procedure or function
  kAlterTable,
  kDropTable,
  kDropIndex,
  kDropModule,
  kBegin,
  kCommit,
  kRollback,
  kTruncate,
  kNothing,  // a setting that changes nothing here
};

struct Statement;
using StatementPtr = std::unique_ptr<Statement>;
struct Plan;  // what the runner keeps of a statement between runs

struct Statement {
  Statement();
  ~Statement();

  StatementKind kind = StatementKind::kNothing;
  std::size_t at = 0;
  std::size_t end = 0;
  ObjectName name;                   // the table, procedure, module or index
  ObjectName on;                     // the table of an index
  std::unique_ptr<Query> query;      // SELECT; the rows of an INSERT
  std::vector<CommonTable> with;     // in front of INSERT, UPDATE and DELETE
  std::vector<std::string> columns;  // of an INSERT or an index
  std::vector<bool> descending;      // of an index's columns
  std::vector<Assignment> assignments;
  std::vector<TableRef> from;
  ExprPtr top;
  ExprPtr expr;                       // WHERE; the condition of IF; the value of RETURN and PRINT
  std::vector<Parameter> parameters;  // of a module, or declared variables
  std::vector<Argument> arguments;    // of EXEC
  std::string variable;               // EXEC @x = procedure
  std::vector<StatementPtr> body;     // of a block, a module; IF: then, else; DECLARE: the tables
  std::vector<ColumnDefinition> definitions;
  std::vector<Constraint> constraints;
  std::vector<std::string> view_columns;
  std::string word;  // a module's kind: "V", "P", "FN", "IF", "TF"; what ALTER does
  Type returns;      // of a function
  bool unique = false;
  bool or_alter = false;
  bool alter = false;
  bool if_exists = false;
  std::unique_ptr<Plan> plan;
};

// A whole text, which its nodes' offsets count in.
struct Batch {
  std::string source;
  int first_line = 1;
  std::vector<StatementPtr> statements;
  std::size_t double_quotes = std::string::npos;  // where the first name in such quotes stands
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_SYNTAX_H_
