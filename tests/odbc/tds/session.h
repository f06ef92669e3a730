#ifndef VOREK_TESTS_ODBC_TDS_SESSION_H_
#define VOREK_TESTS_ODBC_TDS_SESSION_H_

#include <memory>
#include <string>
#include <vector>

#include "odbc/tds/call.h"
#include "odbc/tds/packet_stream.h"
#include "odbc/tds/script.h"
#include "vorek/database.h"

namespace vorek::tds {

// What the server runs texts on.
struct Backend {
  std::shared_ptr<DatabaseProvider> provider;
  std::string connection_string;
};

// The conversation with one client, from its first message to its last.
class Session {
 public:
  Session(PacketStream& stream, const Backend& backend, Script& script)
      : stream_(stream), backend_(backend), script_(script) {}

  // Throws Gone when the client leaves.
  void Run();

 private:
  void ReceivePreLogin();
  void ReceiveLogin();
  void Serve(const Message& message);
  void ServeBatch(std::string_view text);
  void ServeCall(const Call& call);
  void Describe(const std::string& text);
  // What the database says to a text, as far as the client wants it.
  void RunOnDatabase(std::string_view text);
  void PutFailure(const Error& error);
  void EndReply(unsigned flags, bool of_procedure);
  DatabaseConnection& Database();

  PacketStream& stream_;
  const Backend& backend_;
  Script& script_;
  std::unique_ptr<DatabaseConnection> database_;
  std::int32_t prepared_ = 0;
};

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_SESSION_H_
