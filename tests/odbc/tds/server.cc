#include "odbc/tds/server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "odbc/tds/bytes.h"
#include "odbc/tds/packet_stream.h"

namespace vorek::tds {
namespace {

constexpr std::size_t kMostClients = 64;

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

void Set(int socket, int level, int option) {
  const int on = 1;
  setsockopt(socket, level, option, &on, sizeof on);
}

}  // namespace

Server::Server(Backend backend) : backend_(std::move(backend)) { Start(); }

Server::~Server() { Stop(); }

void Server::Start() {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  Set(listener_, SOL_SOCKET, SO_REUSEADDR);
  sockaddr_in address = Loopback(port_);
  socklen_t size = sizeof address;
  auto* const named = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, named, size) != 0 || listen(listener_, 16) != 0 ||
      getsockname(listener_, named, &size) != 0) {
    throw std::runtime_error(std::string("no port to listen at: ") + std::strerror(errno));
  }
  port_ = ntohs(address.sin_port);
  stopping_ = false;
  acceptor_ = std::thread([this] { Accept(); });
}

void Server::Stop() {
  if (listener_ < 0) return;
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    for (const Client& client : clients_) {
      if (!client.ended) shutdown(client.socket, SHUT_RDWR);
    }
  }
  shutdown(listener_, SHUT_RDWR);
  acceptor_.join();
  for (Client& client : clients_) client.thread.join();
  clients_.clear();
  close(std::exchange(listener_, -1));
}

void Server::Accept() {
  for (;;) {
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    Admit(socket);
  }
}

void Server::Admit(int socket) {
  const std::lock_guard lock(mutex_);
  clients_.remove_if([](Client& client) {
    if (client.ended) client.thread.join();
    return client.ended;
  });
  if (stopping_ || clients_.size() >= kMostClients) {
    close(socket);
    return;
  }
  Set(socket, IPPROTO_TCP, TCP_NODELAY);
  Client& client = clients_.emplace_back();
  client.socket = socket;
  client.thread = std::thread([this, &client] { Converse(client); });
}

void Server::Converse(Client& client) {
  PacketStream stream(client.socket);
  try {
    Session(stream, backend_, script_).Run();
  } catch (const Gone&) {
    // Every conversation ends so.
  } catch (const std::exception& error) {
    std::cerr << "test server: " << error.what() << '\n';
  }
  const std::lock_guard lock(mutex_);
  client.ended = true;
}

}  // namespace vorek::tds
