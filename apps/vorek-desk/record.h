#ifndef VOREK_APPS_VOREK_DESK_RECORD_H_
#define VOREK_APPS_VOREK_DESK_RECORD_H_

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalog/recordset.h"
#include "engine/world_state.h"

namespace vorek::desk {

// A table of a form: its name and what was read of it.
struct RecordTable {
  std::string name;
  Recordset rows;
};

// A record of a form, as the metadata describes it: the record of the form's master table, and the
// rows of its other tables that belong to it.
struct Record {
  RecordTable master;
  std::vector<RecordTable> details;
};

// The record that the condition picks, with "" a record without values. Nothing for a form without
// a master table, and for a condition that picks none. Throws what the database throws. The
// recordsets must not outlive the process.
std::optional<Record> ReadRecord(Process& process, std::int32_t form_type,
                                 const std::string& condition);

// The condition for a form's key as a text, by the first column of the primary key.
std::string ConditionOfKey(Process& process, std::int32_t form_type, const std::string& key);

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_RECORD_H_
