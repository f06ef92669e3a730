#ifndef VOREK_ADAPTERS_ACCESS_JET_INDEX_H_
#define VOREK_ADAPTERS_ACCESS_JET_INDEX_H_

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "adapters/access/jet_table.h"

namespace vorek::jet {

// An index over one column of long whole numbers, gathered anew and written over the old one.
class IndexBuilder {
 public:
  // Refuses, by the table's name, an index of any other kind.
  IndexBuilder(const Table& table, const Index& index, const std::string& table_name);

  const Column& Of() const { return column_; }
  // True if a row with this key may be added.
  bool Takes(std::int32_t key) const { return !index_.unique || !keys_.contains(key); }
  bool TakesNull() const { return index_.ignores_nulls && !index_.required; }
  void Add(std::int32_t key, RowPlace place);
  // Sorts the entries, puts them into the index's pages and new ones, and counts them.
  void Write(JetFile& file, Table& table);

 private:
  struct Entry {
    std::int32_t key;
    RowPlace place;
  };

  const Index& index_;
  const Column& column_;
  std::unordered_set<std::int32_t> keys_;  // of a unique index
  std::vector<Entry> entries_;
};

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_INDEX_H_
