#ifndef VOREK_TESTS_ODBC_TDS_SERVER_H_
#define VOREK_TESTS_ODBC_TDS_SERVER_H_

#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <thread>

#include "odbc/tds/script.h"
#include "odbc/tds/session.h"

namespace vorek::tds {

// Speaks the protocol of SQL Server, version 7.4, on the loopback, at a port of the system's
// choice; what comes runs on the backend. Each client has a thread and a connection of its own.
class Server {
 public:
  explicit Server(Backend backend);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t Port() const { return port_; }
  Script& Told() { return script_; }

  // Ends all connections without a word and refuses new ones; Start listens at the same port.
  void Stop();
  void Start();

 private:
  struct Client {
    int socket;
    bool ended = false;
    std::thread thread;
  };

  void Accept();
  void Admit(int socket);
  void Converse(Client& client);

  Backend backend_;
  Script script_;
  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::thread acceptor_;
  std::mutex mutex_;
  bool stopping_ = false;
  std::list<Client> clients_;
};

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_SERVER_H_
