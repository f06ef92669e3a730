#ifndef VOREK_PLATFORM_MEMORY_DATABASE_H_
#define VOREK_PLATFORM_MEMORY_DATABASE_H_

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vorek/database.h"

namespace vorek {

// A result made by hand. Texts are parsed by the column's type; nullopt is NULL.
struct MemoryColumn {
  std::string name;
  int ado_type;
};
using MemoryRow = std::vector<std::optional<std::string>>;
ResultSetPtr MakeResult(const std::vector<MemoryColumn>& columns,
                        const std::vector<MemoryRow>& rows);

// A database in memory that answers texts with results made by hand, and can be made to fail as
// real ones do. The provider's name is "VorekMemory"; it must outlive its connections.
class MemoryDatabase : public DatabaseProvider {
 public:
  // Every text that holds `part`, in any case, gets the result; null for a statement without a row
  // set. The part that was told last is asked first; a text without an answer is an object that
  // isn't there.
  void Answer(std::string part, ResultSetPtr result);

  // Faults of the statements whose text holds `part`.
  struct Fault {
    std::optional<std::size_t> lost_at_row =
        std::nullopt;                                 // the connection is lost behind so many rows
    bool busy = false;                                // waits for its time-out
    std::string missing_column = {};                  // the result lacks this column
    std::string retyped_column = {};                  // the result has this column as text
    std::optional<long> error_number = std::nullopt;  // refused with this number
    std::string error_text = "refused";
  };
  void SetFault(std::string part, Fault fault);
  void ClearFaults() { faults_.clear(); }
  // Whether connecting works.
  bool reachable = true;

  // What was run, in order.
  const std::vector<std::string>& Texts() const { return texts_; }
  std::size_t Connections() const { return connections_; }

  bool Answers(std::string_view provider_name) const override;
  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override;

  // For the connections.
  ResultSetPtr Run(std::string_view text, const ExecuteOptions& options);

 private:
  const Fault* FindFault(std::string_view text) const;

  std::vector<std::pair<std::string, ResultSetPtr>> answers_;
  std::vector<std::pair<std::string, Fault>> faults_;
  std::vector<std::string> texts_;
  std::size_t connections_ = 0;
};

}  // namespace vorek

#endif  // VOREK_PLATFORM_MEMORY_DATABASE_H_
