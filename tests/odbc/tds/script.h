#ifndef VOREK_TESTS_ODBC_TDS_SCRIPT_H_
#define VOREK_TESTS_ODBC_TDS_SCRIPT_H_

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "odbc/tds/login.h"
#include "odbc/tds/packet_stream.h"

namespace vorek::tds {

// Writes the whole reply to a batch, its end included.
using Answer = std::function<void(PacketStream&)>;

// How the server receives a client, for the tests of what may go wrong on the way.
enum class Welcome {
  kProper,
  kSilent,          // accepts the connection and says no word
  kSilentAtLogin,   // answers the first message and not the login
  kCut,             // closes at once
  kCutAtLogin,      // closes when the login comes
  kGarbage,         // bytes that mean nothing, instead of a reply to the first message
  kGarbageAtLogin,  // the same, instead of the reply to the login
  kRefused,         // the login is refused in words
};

// What a test tells a server to do beside running what comes, and what the server saw. Both sides
// use it from threads of their own.
class Script {
 public:
  // A batch of exactly this text is answered so and doesn't reach the database.
  void On(const std::string& batch, Answer answer);
  std::optional<Answer> Find(const std::string& batch) const;

  void Receive(Welcome welcome);
  Welcome HowToReceive() const;

  // Packets are of so many bytes, whatever a client wishes.
  void UsePackets(std::size_t bytes);
  std::optional<std::size_t> PacketSize() const;

  // The next reply to a batch is cut behind so many bytes.
  void CutNextReplyAfter(std::size_t bytes);
  std::size_t TakeCut();

  void Saw(const Login& login);
  void Saw(const std::string& batch);
  std::vector<Login> Logins() const;
  std::vector<std::string> Batches() const;
  // Returns once a batch of this text has come; false if none comes for some seconds.
  bool Await(const std::string& batch) const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, Answer> answers_;
  Welcome welcome_ = Welcome::kProper;
  std::optional<std::size_t> packet_size_;
  std::size_t cut_ = PacketStream::kNever;
  std::vector<Login> logins_;
  std::vector<std::string> batches_;
};

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_SCRIPT_H_
