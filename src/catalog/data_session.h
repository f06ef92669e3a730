#ifndef VOREK_CATALOG_DATA_SESSION_H_
#define VOREK_CATALOG_DATA_SESSION_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "catalog/data_connection.h"
#include "catalog/recordset.h"

namespace vorek {

// The data object: one connection and seven named slots, scratch space that any code may close and
// open again. Report queries may take 6000 seconds, all others 30.
struct DtEn {
  DtEn(const ProviderList& providers, RunningStatement& running, OpenConnections& open)
      : cnn(providers, running, open) {}

  DataConnection cnn;
  Recordset rssqlQuery{cnn, kReportTimeout};  // the report's result
  Recordset rssqlGeneral1{cnn, kTimeout};     // everything short in the report control
  Recordset rssqlGeneral2{cnn, kTimeout};     // a second level inside a use of rssqlGeneral1
  Recordset rssqlGeneral3{cnn, kTimeout};     // dependent parameters
  Recordset rssqlGeneral4{cnn, kTimeout};     // saved parameter settings
  Recordset rssqlGeneral5{cnn, kTimeout};     // print and template look-ups
  Recordset rssqlDeps{cnn, kTimeout};         // a third level

  static constexpr int kReportTimeout = 6000;  // seconds
  static constexpr int kTimeout = 30;          // seconds
};

// Holds the DtEn in force and re-binds it. After a re-binding every slot is a new, closed object
// with no filter: nobody may keep one across it.
class DataSession {
 public:
  explicit DataSession(ProviderList providers, ResultLimits limits = {})
      : providers_(std::move(providers)), limits_(limits) {}
  // A session with slots of its own for the same providers, stopped by the same Cancel and followed
  // by the same progress. Where both are bound to one string they share its connection.
  DataSession Sibling() const;

  // The object in force, made on first use.
  DtEn& Get();

  // Refuses a text that can't be bound: Error(kInvalidCall) if it doesn't begin with
  // "Provider=name;", Error(kConnection) for a provider that nobody answers to.
  void Check(const std::string& connection_text) const;
  // A new DtEn, bound to the connection text; nothing is opened yet. The text must begin with
  // "Provider=name;", or Error(kInvalidCall) is thrown and the DtEn in force stays.
  void Rebind(const std::string& connection_text);
  // The double pass of the entry points: the same, and once more without naming the provider.
  void RebindTwice(const std::string& connection_text);

  // Asks the connection in force, if one stands, whether its server still answers; see
  // DataConnection::DropDead. For the beginning of what a user asks for.
  void DropDead();

  // Another number after each re-binding.
  std::uint32_t Binding() const { return binding_; }

  // Stops the statement that runs now; may be called from any thread.
  void Cancel() noexcept { running_->Cancel(); }

  // What a statement met since it was forgotten that its text has no part in: a lost connection,
  // the end of its time. A step that passes such an error over may have left out anything.
  void ForgetInterruption() { running_->Interruption().reset(); }
  std::optional<Error> Interruption() const { return running_->Interruption(); }

  // Asked while a report's rows are read; false cancels. Kept over re-bindings.
  void SetProgress(std::function<bool(std::size_t rows)> progress);
  // Asked while the rows of a result are filtered; null for none. Kept over re-bindings.
  void SetWatch(PassWatch* watch);

 private:
  void Renew(std::string provider, std::string connection_text);

  ProviderList providers_;
  ResultLimits limits_;
  std::shared_ptr<RunningStatement> running_ = std::make_shared<RunningStatement>();
  std::shared_ptr<OpenConnections> open_ = std::make_shared<OpenConnections>();
  std::function<bool(std::size_t rows)> progress_;
  PassWatch* watch_ = nullptr;
  std::unique_ptr<DtEn> dten_;
  std::uint32_t binding_ = 0;
};

// Runs a text in a slot, closing it first if it is open.
void OpenSlot(Recordset& slot, std::string text);

}  // namespace vorek

#endif  // VOREK_CATALOG_DATA_SESSION_H_
