#ifndef VOREK_CATALOG_FILTER_H_
#define VOREK_CATALOG_FILTER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vorek/result_set.h"

// The filter of a recordset, in ADO's grammar:
//
//   filter     = term { OR term }
//   term       = factor { AND factor }
//   factor     = "(" filter ")" | name operator value
//   name       = letters, digits, "_", "." and letters beyond ASCII | "[" anything "]"
//   operator   = "=" | "<>" | "<" | ">" | "<=" | ">=" | LIKE
//   value      = 'text', a quote in it written twice | #date# | number | NULL
//
// Texts compare without regard to case; the wildcards of LIKE are "*" and "%". NULL is equal to
// NULL alone and neither less nor greater than anything. Format: the Filter property of ADO's
// Recordset object.
namespace vorek {

// A filter bound to the columns of one result.
class RecordFilter {
 public:
  // Throws Error(kBadFilter) with the place and the reason for a text outside the grammar, a field
  // that the result doesn't have, or a value that the field's type can't take.
  RecordFilter(std::string_view text, const ResultSet& result);
  ~RecordFilter();
  RecordFilter(RecordFilter&&) noexcept;
  RecordFilter& operator=(RecordFilter&&) noexcept;

  bool Matches(std::size_t row) const;

  // True for a single comparison "whole-number field = number": its rows can be looked up. The
  // column's ordinal and the number in units of the column's scale.
  struct KeyTest {
    std::size_t column;
    std::int64_t key;
  };
  bool IsKeyTest(KeyTest& test) const;

  struct Node;

 private:
  std::unique_ptr<Node> root_;
};

// The rows of each value of a whole-number column, in the order of the result. Built in one pass;
// a look-up costs no scan.
class KeyIndex {
 public:
  explicit KeyIndex(const ResultColumn& column);
  // The first row of the key, kNone if there is none; Next goes on from a row.
  std::uint32_t First(std::int64_t key) const;
  std::uint32_t Next(std::uint32_t row) const { return next_[row]; }
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

 private:
  std::size_t Slot(std::int64_t key) const;

  const ResultColumn& column_;
  std::vector<std::uint32_t> heads_;  // an open hash table of first rows
  std::vector<std::uint32_t> next_;
};

}  // namespace vorek

#endif  // VOREK_CATALOG_FILTER_H_
