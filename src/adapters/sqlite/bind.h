#ifndef VOREK_ADAPTERS_SQLITE_BIND_H_
#define VOREK_ADAPTERS_SQLITE_BIND_H_

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/sqlite/schema.h"
#include "adapters/sqlite/syntax.h"
#include "adapters/sqlite/token.h"
#include "adapters/sqlite/type.h"

namespace vorek::sqlite {

// How tightly a piece of SQLite's SQL holds together, from loose to tight.
enum Tightness : int {
  kLooseOr = 1,
  kLooseAnd,
  kLooseNot,
  kEquality,
  kRelation,
  kBitwise,
  kAdditive,
  kMultiplicative,
  kConcatenation,
  kCollation,
  kPrefix,
  kTight,
};

// An expression in SQLite's SQL with what the dialect knows of it.
struct Bound {
  enum class Literal { kNone, kNumber, kText, kNull };

  std::string sql;
  Type type;
  int tightness = kTight;
  Literal literal = Literal::kNone;
  std::string value;      // of a literal: the text, or the units of the number as an integer
  bool column = false;    // a column as it stands
  bool collated = false;  // compared by the collation VOREK without being told
  bool nullable = true;
  bool unchecked = false;  // bigint or money that is a real number where it has left 63 bits
  double most = -1;        // of its units, if that is told closer than by the type
  std::string factors;     // "a, b" of an exact product, which a sum multiplies by itself
  std::string name;        // the name that a select list gives it
};

struct Variable {
  Type type;
  std::string table;  // the temporary table behind a table variable
};
using Variables = std::map<std::string, Variable>;  // by lower-case name with its "@"

struct OutputColumn {
  std::string name;
  Type type;
  bool nullable = true;
  bool collated = false;
};

struct Translation;

// A function of several statements that gives a table: it runs before the statement that reads it,
// and its rows go into a temporary table made for that place.
struct Filled {
  std::string function;
  std::string table;
  std::vector<OutputColumn> columns;
  std::shared_ptr<Translation> arguments;  // one row of them, behind a number
};

// A statement in SQLite's SQL.
struct Translation {
  std::string sql;
  std::vector<OutputColumn> columns;    // empty if it gives no rows
  std::vector<std::string> parameters;  // names of the variables behind ?1, ?2, ...
  std::vector<std::string> assigned;    // SELECT @x = ..: the variable of each column
  bool assigns = false;                 // they are assigned by the statement itself, row by row
  bool temporary = false;               // reads or writes a temporary table
  std::vector<Filled> filled;
};

// Binds names and types of one statement and writes it for SQLite. Throws Error with the place of
// what isn't there or isn't translated.
class Binder {
 public:
  Binder(Schema& schema, const Variables& variables, const SourceText& source)
      : schema_(schema), variables_(variables), source_(source) {}

  // Before all else; without it a text with such functions can be looked at, not run.
  void SetPlace(const std::string& place) { view_tables_->place = place; }

  Translation Select(const Query& query);
  // Name and types of a query's columns; a view's own column names are put over them.
  std::vector<OutputColumn> Describe(const Query& query, const std::vector<std::string>& names);
  Translation Insert(const Statement& statement);
  Translation Update(const Statement& statement);
  Translation Delete(const Statement& statement);
  // SELECT INTO, in two steps: the table's columns, then the rows that go into it.
  Translation InsertInto(const Query& query, const std::string& table);
  // A select of one value, converted to the type; and one of a condition as 1 or 0.
  Translation Value(const Expr& expr, const Type& type);
  Translation UntypedValue(const Expr& expr);
  Translation Condition(const Expr& expr);
  // A constant or a condition inside a definition, for SQLite's own CREATE.
  std::string ConditionOn(const Expr& expr, const TableInfo& table);
  Bound ComputedColumn(const Expr& expr, const TableInfo& table);

 private:
  struct Source {
    std::string name;  // what the columns are called by
    std::string sql;   // the name for SQLite, quoted
    std::vector<ColumnInfo> own;
    const std::vector<ColumnInfo>* columns = nullptr;
    bool nullable = false;           // on the side of an outer join that may be missing
    bool bare = false;               // columns are written without the source's name
    std::vector<Bound> expressions;  // that stand for the columns, if they are none of a table

    const std::vector<ColumnInfo>& Columns() const { return columns != nullptr ? *columns : own; }
  };
  struct Violation {
    std::size_t at;
    std::string name;
  };
  struct Scope {
    Scope* outer = nullptr;
    std::vector<Source> sources;
    std::set<std::string> group_keys;
    std::set<std::string> absent_keys;  // of other grouping sets: NULL in this one
    const std::vector<std::size_t>* grouping_set = nullptr;
    std::vector<Violation> ungrouped;  // columns outside of aggregates and of the group keys
    int inside_aggregate = 0;
    bool has_aggregate = false;
    bool takes_aggregates = false;  // select list, HAVING and ORDER BY do
    // Columns that a subquery in order hands on, while the select list is bound that runs over it.
    std::vector<std::string>* carried = nullptr;
  };
  struct CommonTableInfo {
    std::string name;
    std::vector<ColumnInfo> columns;
  };
  // The views that a statement reads, each written once, as a common table in front of it all.
  struct ViewTable {
    CommonTableInfo info;
    int tables = 0;  // that SQLite reads for it
    bool temporary = false;
  };
  struct ViewTables {
    std::map<std::string, ViewTable> by_name;
    std::string sql;
    std::vector<Filled> filled;  // in them and in the statement itself
    std::string place;           // tells the statement from others, for the names of those tables
  };
  struct SelectParts {
    std::vector<Bound> items;
    std::string prefix;  // "SELECT DISTINCT "
    std::string tail;    // from FROM to HAVING
    std::string order;
    std::string limit;
    std::vector<std::vector<Bound>> rows;  // VALUES in place of all that
  };
  struct BoundQuery {
    std::string sql;
    std::vector<OutputColumn> columns;
    std::vector<std::string> assigned;
    bool assigns = false;
  };
  struct Target {
    Type type;
    std::string name;
  };
  using Targets = std::vector<Target>;

  class ScopeGuard {
   public:
    ScopeGuard(Binder& binder, Scope& scope) : binder_(binder), saved_(binder.scope_) {
      scope.outer = saved_;
      binder_.scope_ = &scope;
    }
    ~ScopeGuard() { binder_.scope_ = saved_; }
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

   private:
    Binder& binder_;
    Scope* saved_;
  };

  static constexpr std::string_view kRowOfTable = "row of the table";

  [[noreturn]] void Refuse(std::size_t at, const std::string& message) const;
  [[noreturn]] void RefuseOperands(const Expr& expr, const Bound& a, const Bound& b) const;
  [[noreturn]] void MissingObject(const ObjectName& name) const;
  Translation Finish(BoundQuery query);

  // Queries (bind_query.cc, bind_compound.cc, bind_order.cc).
  BoundQuery BindQuery(const Query& query, const Targets* targets = nullptr);
  BoundQuery JoinTexts(const Query& query, BoundQuery rows);
  std::string BindWith(const std::vector<CommonTable>& tables);
  std::string BindCommonTable(const CommonTable& table);
  SelectParts BindSelect(const Query& query, const vorek::sqlite::Select& select);
  SelectParts BindValues(const vorek::sqlite::Select& select, const Targets* targets);
  void BindItems(const vorek::sqlite::Select& select, SelectParts& parts,
                 std::vector<std::string>* assigned);
  void AssignItems(const Query& query, const vorek::sqlite::Select& select, SelectParts& parts,
                   const std::vector<std::string>& assigned);
  void ExpandStar(const Expr& star, std::vector<Bound>& items);
  void HandRow(const vorek::sqlite::Select& select, SelectParts& parts);
  BoundQuery GroupingSets(const Query& query, const vorek::sqlite::Select& select,
                          const Targets* targets);
  void BindGroup(const vorek::sqlite::Select& select, SelectParts& parts);
  void CheckGrouping(const vorek::sqlite::Select& select) const;
  std::string BindOrder(const std::vector<OrderItem>& order, const std::vector<Bound>& items,
                        bool ordinals_only);
  std::string OrderTerm(const OrderItem& item, const std::vector<Bound>& items, bool ordinals_only);
  // TOP ... WITH TIES and TOP n PERCENT, by the rank of each row.
  void RankRows(const Query& query, const vorek::sqlite::Select& select, SelectParts& parts);
  std::string BindLimit(const Query& query, const vorek::sqlite::Select* select);
  static void CollateItems(std::vector<Bound>& items);
  std::string Render(SelectParts& parts) const;
  std::string WriteItems(const std::vector<Bound>& items) const;
  BoundQuery Compound(const Query& query, const Targets* targets);
  static SelectParts Derived(BoundQuery query);
  SelectParts BranchParts(const Query& query, const Branch& branch);
  void Unify(std::vector<SelectParts>& branches, const Targets* targets, std::size_t at);

  // Tables (bind_from.cc).
  std::string BindFrom(const std::vector<TableRef>& tables);
  std::string BindTable(const TableRef& table, bool nullable, bool after_comma);
  std::string BindJoin(const TableRef& join, bool nullable, bool after_comma);
  std::string BindNamedTable(const TableRef& table, bool nullable);
  // What stands behind APPLY, as a join (bind_apply.cc).
  std::string BindApply(const TableRef& join, bool nullable);
  std::string ApplyQuery(const TableRef& join, Binder& in, const Query& query, Source source);
  std::string ApplyFirstRow(Binder& in, const Query& query, const std::string& prefix);
  std::string BindView(const ModuleInfo& view, Source source);
  std::string BindTableFunction(const TableRef& table, Source source);
  std::string BindFilled(const TableRef& table, const ModuleInfo& module, Source source);
  Translation ArgumentsOf(const ModuleInfo& module, const TableRef& table);
  const ModuleInfo& TableFunction(const TableRef& table);
  Bound ArgumentOf(const ModuleInfo& module, std::size_t index, const Expr* given);
  const ViewTable& WriteView(const ModuleInfo& view);
  void CountTables(int tables, std::size_t at);
  std::string BindSubquery(const TableRef& table, bool nullable);
  std::string BindPivot(const TableRef& table, bool nullable);
  BoundQuery PivotRows(const TableRef& table, const std::string& from);
  BoundQuery UnpivotRows(const TableRef& table, const std::string& from);
  const CommonTableInfo* FindCommonTable(const ObjectName& name) const;
  std::string CatalogueView(const ObjectName& name);
  void AddSource(Source source, std::size_t at);
  void AddBareTable(const TableInfo& table,
                    std::size_t at);  // whose columns go by their names alone
  static std::vector<ColumnInfo> AsColumns(const std::vector<OutputColumn>& outputs);
  std::vector<ColumnInfo> NamedColumns(const std::vector<OutputColumn>& outputs,
                                       const std::vector<std::string>& names,
                                       const std::string& table, std::size_t at) const;

  // Changes (bind_change.cc).
  const TableInfo& TargetTable(const ObjectName& name);
  std::string TableOf(const ObjectName& name) const;  // as the schema knows it
  std::vector<const ColumnInfo*> InsertColumns(const Statement& statement, const TableInfo& table);
  void AddDefaults(const TableInfo& table, std::vector<const ColumnInfo*>& columns,
                   std::vector<std::string>& defaults);
  std::string NextIdentity(const TableInfo& table, const ColumnInfo& column);
  std::string RowsInto(const std::vector<const ColumnInfo*>& columns,
                       const std::vector<std::string>& defaults, const Query* rows);
  // The common table that a change names as its target, or null; the table whose rows it holds.
  const CommonTable* CommonTarget(const Statement& statement) const;
  const TableInfo& TableBehind(const Statement& statement, const CommonTable& common);
  Translation DeleteThrough(const Statement& statement, const CommonTable& common);
  std::string RowCount(const Expr& top);
  const TableRef* FindTarget(const std::vector<TableRef>& from, const ObjectName& name) const;
  std::string SetList(const Statement& statement, const TableInfo& table, bool inner,
                      std::string& names, std::string& values);
  Bound Assigned(Bound value, const ColumnInfo& column, std::size_t at);
  std::string RowIdOf(const TableInfo& table) const;

  // Expressions (bind_expression.cc, bind_literal.cc, bind_predicate.cc, bind_subquery.cc).
  Bound Bind(const Expr& expr);
  Bound BindUnchecked(const Expr& expr);
  Bound BindOperand(const Expr& expr);  // for an operator that goes on computing with it
  Bound BindAny(const Expr& expr);      // without the look at the group keys
  Bound BindValue(const Expr& expr);
  std::string BindCondition(const Expr& expr, int tightness);
  Bound BindChain(const Expr& expr);
  Bound BindLiteral(const Expr& expr);
  Bound BindNumber(const Expr& expr, bool negative = false);
  Bound BindVariable(const Expr& expr);
  Bound BindColumn(const Expr& expr);
  Bound ColumnOf(Scope& scope, const Source& source, const ColumnInfo& column, const Expr& expr);
  Bound BindUnary(const Expr& expr);
  Bound BindCompare(const Expr& expr);
  Bound BindBetween(const Expr& expr);
  Bound BindIn(const Expr& expr);
  Bound InQuery(const Expr& expr, Bound value);
  Bound InList(const Expr& expr, Bound value);
  static Bound AmongThem(const Expr& expr, Bound value, const std::string& them);
  Bound BindLike(const Expr& expr);
  Bound BindIsNull(const Expr& expr);
  Bound BindSubquery(const Expr& expr);
  bool GivesOneRow(const Query& query);  // it can't give two
  bool NamesRowKey(const vorek::sqlite::Select& select);
  Bound BindQuantified(const Expr& expr);
  Bound BindCase(const Expr& expr);
  Bound BindCast(const Expr& expr);
  std::string Parameter(const std::string& name);

  // Operators (bind_operator.cc).
  Bound BindBinary(const Expr& expr);
  static Bound Negated(const Bound& value);
  Bound Arithmetic(const Expr& expr, const std::string& op, Bound a, Bound b);
  Bound Concatenate(const Bound& a, const Bound& b);
  Bound AddOrSubtract(const std::string& op, Bound a, Bound b, const Type& common);
  Bound Multiply(const Bound& a, const Bound& b, const Type& common);
  Bound Divide(const Bound& a, const Bound& b, const Type& common);
  Bound Modulo(Bound a, Bound b, const Type& common);
  Bound DateArithmetic(const Expr& expr, const std::string& op, Bound a, Bound b);
  Bound Compare(const std::string& op, Bound a, Bound b, const Expr& expr);
  void MakeComparable(Bound& a, Bound& b, const Expr& expr);
  static void AlignScales(Bound& a, Bound& b);
  static Bound Rescaled(const Bound& value, int step);
  bool CompareIsNull(const Expr& expr, Bound& result);

  // Functions (bind_function.cc and those of its subjects, bind_aggregate.cc).
  struct Call;
  struct Rule;
  Bound BindFunction(const Expr& expr);
  Bound BindIif(const Expr& expr);
  Bound BindUserFunction(const Expr& expr);
  Bound BindAggregate(const Expr& expr, const std::string& name);
  Bound AggregateOf(const Expr& expr, const std::string& name, Bound argument);
  Bound BindRanking(const Expr& expr, const std::string& name);
  std::string BindWindow(const Expr& expr);
  friend struct FunctionRules;

  // Conversions (convert.cc).
  enum class Mode { kImplicit, kAssign, kCast, kTry };
  Bound Convert(Bound value, const Type& to, Mode mode, std::size_t at, int style = 0);
  Bound ToWhole(Bound value, const Type& to, Mode mode, std::size_t at);
  Bound ToScaled(const Bound& value, const Type& to, Mode mode, std::size_t at);
  Bound ToFloat(Bound value, const Type& to, Mode mode, std::size_t at);
  Bound ToText(Bound value, const Type& to, Mode mode, std::size_t at, int style);
  Bound TextToText(Bound value, const Type& to, Mode mode);
  Bound ToDate(Bound value, const Type& to, Mode mode, std::size_t at, int style);
  int DateStyle(TypeKind kind) const;  // of a text without one
  Bound ToBinary(Bound value, const Type& to, Mode mode, std::size_t at, int style);
  [[noreturn]] void RefuseConversion(const Bound& value, const Type& to, std::size_t at) const;

  Schema& schema_;
  const Variables& variables_;
  SourceText source_;
  Scope* scope_ = nullptr;
  std::vector<CommonTableInfo> common_tables_;
  std::vector<std::string> views_;  // being written out, innermost last
  std::shared_ptr<ViewTables> view_tables_ = std::make_shared<ViewTables>();
  std::vector<std::string> parameters_;
  std::vector<std::string> assigned_;
  std::map<std::string, Bound> arguments_;  // of the function whose query is bound
  std::string prefix_;  // of its tables' names, which the columns in arguments don't meet
  std::set<std::string> running_;  // variables that the select around assigns, row by row
  bool uses_running_ = false;
  // A select that hands the number of its table's row on, behind its columns, as kRowOfTable.
  const vorek::sqlite::Select* row_source_ = nullptr;
  std::string row_id_;
  bool assigns_ = false;
  int tables_ = 0;  // that SQLite reads, those of views each time that the view is named
  bool temporary_ = false;
  bool calls_ = false;  // a function of the database
  int depth_ = 0;
};

// Pieces of SQL.
Bound MakeBound(std::string sql, const Type& type, int tightness = kTight);
std::string Wrap(const Bound& value, int tightness);
Bound NumberLiteral(long long units, const Type& type);
Bound TextLiteral(const std::string& text, const Type& type);
// No value has more units than this.
double MostOf(const Bound& value);
// True if a value may be beyond 63 bits, and no integer of SQLite then.
bool IsWide(const Bound& value);
// What the value is ordered by.
Bound Ordered(Bound value);
// The value, or the error if it is none of its type.
Bound Checked(Bound value);
// name(a, b)
Bound CallOf(std::string_view name, std::initializer_list<std::string> arguments, const Type& type);
// A text whose type has all the room that there is without "max" is cut where that ends.
Bound CutToRoom(Bound text);
// The value with the collation VOREK, unless it carries it by itself.
Bound Collated(Bound value);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_BIND_H_
