#ifndef VOREK_TESTS_SQL_ROW_QUERY_H_
#define VOREK_TESTS_SQL_ROW_QUERY_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/sqlite/exact.h"

namespace vorek {

// Two small tables and a query over them, made from bytes, with the rows that it has to give: by
// loops over rows in memory, which know nothing of types, indexes or SQLite.
class RowQuery {
 public:
  explicit RowQuery(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {
    for (Table& table : tables_) {
      const std::size_t rows = Pick(7);
      for (std::size_t i = 0; i < rows; ++i) table.push_back(MakeRow(static_cast<int>(i) + 1));
    }
    index_ = Pick(3) == 0;
    Make();
  }

  std::string Setup() const {
    std::string sql;
    for (const char* name : {"a", "b"}) {
      sql += std::string("create table ") + name + " (id int not null, k " +
             (name[0] == 'a' ? "char(6)" : "nvarchar(8)") +
             ", n int, d decimal(9,2), w decimal(38,4))\n";
      if (index_) sql += std::string("create index i") + name + " on " + name + " (k, n)\n";
      for (const Row& row : tables_[name[0] - 'a']) {
        sql += std::string("insert ") + name + " values (" + std::to_string(row.id) + ", " +
               (row.key < 0 ? "null" : "N'" + row.spelling + "'");
        for (const Number& number : row.numbers) sql += ", " + (number ? Text(*number) : "null");
        sql += ")\n";
      }
    }
    return sql;
  }
  const std::string& Query() const { return sql_; }
  // Values between "|", NULL for NULL; sorted as texts, since no order is asked for.
  const std::vector<std::string>& Rows() const { return rows_; }

 private:
  using Number = std::optional<sqlite::Wide>;  // in ten-thousandths
  struct Row {
    int id = 0;
    int key = -1;  // which text, whatever its spelling; -1 for NULL
    std::string spelling;
    std::vector<Number> numbers;  // n, d, w
  };
  using Table = std::vector<Row>;
  using Env = std::vector<const Row*>;  // a row of each source; null beside an outer join
  enum class Truth { kFalse, kTrue, kUnknown };
  template <typename T>
  struct Node {
    std::string sql;
    std::function<T(const Env&)> value;
  };
  using NumberNode = Node<Number>;
  using KeyNode = Node<int>;
  using TruthNode = Node<Truth>;

  static constexpr std::size_t kKeys = 4;

  std::size_t Pick(std::size_t count) { return at_ < bytes_.size() ? bytes_[at_++] % count : 0; }

  static std::string Text(sqlite::Wide units) {
    std::string text = sqlite::WideText(units, 4);
    text.resize(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
  }
  static Truth Of(bool value) { return value ? Truth::kTrue : Truth::kFalse; }

  std::string Spelling(std::size_t key) {
    static const std::vector<std::vector<std::string>> kSpellings = {
        {"ab", "AB", "aB "}, {"کد", "کد ", "کد"}, {"كد", "كد ", "كد"}, {"é", "É", "É  "}};
    return kSpellings[key][Pick(3)];
  }

  Row MakeRow(int id) {
    Row row;
    row.id = id;
    const std::size_t key = Pick(kKeys + 1);
    if (key < kKeys) {
      row.key = static_cast<int>(key);
      row.spelling = Spelling(key);
    }
    const auto small = [this] { return static_cast<int>(Pick(9)) - 4; };
    row.numbers.push_back(Pick(5) == 0 ? Number() : Number(small() * 10000));
    row.numbers.push_back(Pick(5) == 0 ? Number() : Number(small() * 5000));
    const sqlite::Wide wide = sqlite::WidePower(18) * small() * 7 + small();
    row.numbers.push_back(Pick(5) == 0 ? Number() : Number(Pick(2) == 0 ? wide : wide * 1000));
    return row;
  }

  // The sources that are in sight.
  std::vector<std::string> names_;

  NumberNode MakeNumber(int depth) {
    switch (Pick(depth > 0 ? 9 : 4)) {
      case 0: {
        const int value = static_cast<int>(Pick(7)) - 3;
        return {"(" + std::to_string(value) + ")",
                [value](const Env&) { return Number(sqlite::Wide{value} * 10000); }};
      }
      case 4: {
        NumberNode a = MakeNumber(depth - 1);
        NumberNode b = MakeNumber(depth - 1);
        const bool plus = Pick(2) == 0;
        return {"(" + a.sql + (plus ? " + " : " - ") + b.sql + ")", [=](const Env& env) {
                  const Number x = a.value(env);
                  const Number y = b.value(env);
                  return x && y ? Number(plus ? *x + *y : *x - *y) : Number();
                }};
      }
      case 5: {
        NumberNode a = MakeNumber(depth - 1);
        return {"(- " + a.sql + ")", [=](const Env& env) {
                  const Number x = a.value(env);
                  return x ? Number(-*x) : x;
                }};
      }
      case 6: {
        TruthNode when = MakeTruth(depth - 1);
        NumberNode a = MakeNumber(depth - 1);
        NumberNode b = MakeNumber(depth - 1);
        return {"case when " + when.sql + " then " + a.sql + " else " + b.sql + " end",
                [=](const Env& env) {
                  return when.value(env) == Truth::kTrue ? a.value(env) : b.value(env);
                }};
      }
      case 7: {
        NumberNode a = MakeNumber(depth - 1);
        return {"isnull(" + a.sql + ", 2)", [=](const Env& env) {
                  const Number x = a.value(env);
                  return x ? x : Number(20000);
                }};
      }
      case 8: {
        NumberNode a = MakeNumber(depth - 1);
        return {"(" + a.sql + " * 2)", [=](const Env& env) {
                  const Number x = a.value(env);
                  return x ? Number(*x * 2) : x;
                }};
      }
      default: {
        const std::size_t source = Pick(names_.size());
        const std::size_t column = Pick(3);
        return {names_[source] + "." + "ndw"[column], [=](const Env& env) {
                  return env[source] == nullptr ? Number() : env[source]->numbers[column];
                }};
      }
    }
  }

  KeyNode MakeKey() {
    if (Pick(4) == 0) {
      const std::size_t key = Pick(kKeys);
      return {"N'" + Spelling(key) + "'", [key](const Env&) { return static_cast<int>(key); }};
    }
    const std::size_t source = Pick(names_.size());
    return {names_[source] + ".k",
            [source](const Env& env) { return env[source] == nullptr ? -1 : env[source]->key; }};
  }

  TruthNode MakeComparison(int depth) {
    static const std::vector<std::string> kOperators = {"=", "<>", "<", "<=", ">", ">="};
    const std::size_t op = Pick(6);
    NumberNode a = MakeNumber(depth - 1);
    NumberNode b = MakeNumber(depth - 1);
    return {
        a.sql + " " + kOperators[op] + " " + b.sql, [=](const Env& env) {
          const Number x = a.value(env);
          const Number y = b.value(env);
          if (!x || !y) return Truth::kUnknown;
          const std::vector<bool> holds = {*x == *y, *x != *y, *x<*y, *x <= *y, *x> * y, *x >= *y};
          return Of(holds[op]);
        }};
  }

  TruthNode MakeSubquery(int depth) {
    const std::size_t table = Pick(2);
    const std::string name = "s" + std::to_string(names_.size());
    const bool exists = Pick(2) == 0;
    const bool negated = Pick(2) == 0;
    KeyNode key = exists ? KeyNode{"", nullptr} : MakeKey();
    names_.push_back(name);
    TruthNode where = MakeTruth(depth - 1);
    names_.pop_back();
    const Table& rows = tables_[table];
    const std::string from =
        std::string(" from ") + "ab"[table] + " " + name + " where " + where.sql + ")";
    const auto matches = [=, &rows](const Env& env) {
      std::vector<const Row*> found;
      Env inner = env;
      inner.push_back(nullptr);
      for (const Row& row : rows) {
        inner.back() = &row;
        if (where.value(inner) == Truth::kTrue) found.push_back(&row);
      }
      return found;
    };
    if (exists) {
      return {(negated ? "not exists (select 1" : "exists (select 1") + from,
              [=](const Env& env) { return Of(matches(env).empty() == negated); }};
    }
    return {key.sql + (negated ? " not in (select " : " in (select ") + name + ".k" + from,
            [=](const Env& env) {
              const int wanted = key.value(env);
              bool unknown = false;
              const std::vector<const Row*> found = matches(env);
              for (const Row* row : found) {
                if (wanted >= 0 && row->key == wanted) return Of(!negated);
                unknown = unknown || wanted < 0 || row->key < 0;
              }
              return unknown ? Truth::kUnknown : Of(negated);
            }};
  }

  TruthNode MakeTruth(int depth) {
    switch (Pick(depth > 0 ? 8 : 3)) {
      case 0: {
        KeyNode a = MakeKey();
        KeyNode b = MakeKey();
        const bool equal = Pick(3) != 0;
        return {a.sql + (equal ? " = " : " <> ") + b.sql, [=](const Env& env) {
                  const int x = a.value(env);
                  const int y = b.value(env);
                  return x < 0 || y < 0 ? Truth::kUnknown : Of((x == y) == equal);
                }};
      }
      case 1: {
        NumberNode a = MakeNumber(0);
        const bool negated = Pick(2) == 0;
        return {a.sql + (negated ? " is not null" : " is null"),
                [=](const Env& env) { return Of(a.value(env).has_value() == negated); }};
      }
      case 3:
      case 4: {
        TruthNode a = MakeTruth(depth - 1);
        TruthNode b = MakeTruth(depth - 1);
        const Truth decides = Pick(2) == 0 ? Truth::kFalse : Truth::kTrue;
        return {"(" + a.sql + (decides == Truth::kFalse ? " and " : " or ") + b.sql + ")",
                [=](const Env& env) {
                  const Truth x = a.value(env);
                  const Truth y = b.value(env);
                  if (x == decides || y == decides) return decides;
                  return x == Truth::kUnknown ? x : y;
                }};
      }
      case 5: {
        TruthNode a = MakeTruth(depth - 1);
        return {"not (" + a.sql + ")", [=](const Env& env) {
                  const Truth x = a.value(env);
                  return x == Truth::kUnknown ? x : Of(x == Truth::kFalse);
                }};
      }
      case 6:
        return MakeSubquery(depth);
      default:
        return MakeComparison(depth > 0 ? depth : 1);
    }
  }

  // FROM with one table or two that are joined, and its rows.
  std::string MakeFrom(std::vector<Env>& rows) {
    const std::size_t kind = Pick(5);
    const std::size_t first = Pick(2);
    std::string sql = std::string(" from ") + "ab"[first] + " x";
    names_ = {"x"};
    if (kind == 0) {
      for (const Row& row : tables_[first]) rows.push_back({&row});
      return sql;
    }
    const std::size_t second = Pick(2);
    names_.emplace_back("y");
    TruthNode on = MakeTruth(2);
    const bool keeps_left = kind == 2 || kind == 4;
    const bool keeps_right = kind == 3 || kind == 4;
    sql += kind == 1   ? " join "
           : kind == 2 ? " left join "
           : kind == 3 ? " right join "
                       : " full join ";
    sql += std::string(1, "ab"[second]) + " y on " + on.sql;
    std::vector<bool> met(tables_[second].size());
    for (const Row& left : tables_[first]) {
      bool any = false;
      for (std::size_t i = 0; i < tables_[second].size(); ++i) {
        if (on.value({&left, &tables_[second][i]}) != Truth::kTrue) continue;
        any = met[i] = true;
        rows.push_back({&left, &tables_[second][i]});
      }
      if (!any && keeps_left) rows.push_back({&left, nullptr});
    }
    for (std::size_t i = 0; keeps_right && i < met.size(); ++i) {
      if (!met[i]) rows.push_back({nullptr, &tables_[second][i]});
    }
    return sql;
  }

  static std::string Shown(const Number& number) { return number ? Text(*number) : "NULL"; }

  // count, sum, least and greatest of the rows' numbers.
  static std::string Aggregates(const std::vector<Env>& rows, const NumberNode& number) {
    Number sum;
    Number least;
    Number most;
    for (const Env& env : rows) {
      const Number x = number.value(env);
      if (!x) continue;
      sum = sum.value_or(0) + *x;
      least = least ? std::min(*least, *x) : *x;
      most = most ? std::max(*most, *x) : *x;
    }
    return std::to_string(rows.size()) + "|" + Shown(sum) + "|" + Shown(least) + "|" + Shown(most);
  }

  void Make() {
    std::vector<Env> all;
    const std::string from = MakeFrom(all);
    TruthNode where = MakeTruth(3);
    NumberNode number = MakeNumber(2);
    std::vector<Env> rows;
    for (const Env& env : all) {
      if (where.value(env) == Truth::kTrue) rows.push_back(env);
    }
    const std::string tail = from + " where " + where.sql;
    const std::string aggregates =
        "count(*), sum(" + number.sql + "), min(" + number.sql + "), max(" + number.sql + ")";
    switch (Pick(4)) {
      case 0:
        sql_ = "select " + aggregates + tail;
        rows_ = {Aggregates(rows, number)};
        break;
      case 1: {
        KeyNode key{names_.back() + ".k", nullptr};
        const std::size_t source = names_.size() - 1;
        std::map<int, std::vector<Env>> groups;
        for (const Env& env : rows) {
          groups[env[source] == nullptr ? -1 : env[source]->key].push_back(env);
        }
        sql_ = "select " + aggregates + tail + " group by " + key.sql;
        for (const auto& [value, group] : groups) rows_.push_back(Aggregates(group, number));
        break;
      }
      case 2:
        sql_ = "select distinct " + number.sql + tail;
        for (const Env& env : rows) rows_.push_back(Shown(number.value(env)));
        std::sort(rows_.begin(), rows_.end());
        rows_.erase(std::unique(rows_.begin(), rows_.end()), rows_.end());
        break;
      default:
        sql_ = "select x.id, " + number.sql + tail;
        for (const Env& env : rows) {
          rows_.push_back((env[0] == nullptr ? "NULL" : std::to_string(env[0]->id)) + "|" +
                          Shown(number.value(env)));
        }
    }
    std::sort(rows_.begin(), rows_.end());
  }

  std::vector<std::uint8_t> bytes_;
  std::size_t at_ = 0;
  Table tables_[2];
  bool index_ = false;
  std::string sql_;
  std::vector<std::string> rows_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_SQL_ROW_QUERY_H_
