#include "odbc/tds/packet_stream.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

#include "odbc/tds/bytes.h"

namespace vorek::tds {
namespace {

constexpr std::size_t kHeader = 8;
constexpr std::size_t kMostMessage = std::size_t{64} << 20;

}  // namespace

PacketStream::~PacketStream() { close(socket_); }

bool PacketStream::Readable(int milliseconds) const {
  pollfd waiting{socket_, POLLIN, 0};
  return poll(&waiting, 1, milliseconds) > 0;
}

std::string PacketStream::Receive(std::size_t bytes) {
  std::string text(bytes, '\0');
  std::size_t got = 0;
  while (got < bytes) {
    const ssize_t more = recv(socket_, text.data() + got, bytes - got, 0);
    if (more <= 0) throw Gone();
    got += static_cast<std::size_t>(more);
  }
  return text;
}

Message PacketStream::Read() {
  Message message{};
  for (;;) {
    const std::string header = Receive(kHeader);
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(header[i]); };
    const std::size_t size = std::size_t{byte(2)} << 8 | byte(3);
    if (size < kHeader) throw ProtocolError("a packet is shorter than its header");
    message.type = static_cast<PacketType>(byte(0));
    message.payload += Receive(size - kHeader);
    if (message.payload.size() > kMostMessage) throw ProtocolError("a message without bounds");
    if ((byte(1) & 1) != 0) return message;
  }
}

void PacketStream::Put(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t room = packet_size_ - kHeader - packet_.size();
    const std::size_t taken = std::min(room, bytes.size());
    packet_ += bytes.substr(0, taken);
    bytes.remove_prefix(taken);
    // A full packet waits for more: the last one has to say that it is the last.
    if (!bytes.empty()) SendPacket(false);
  }
}

void PacketStream::Flush() { SendPacket(false); }

void PacketStream::End() {
  SendPacket(true);
  attention_ = false;
  number_ = 1;
}

void PacketStream::SendPacket(bool last) {
  const std::size_t size = packet_.size() + kHeader;
  std::string whole{static_cast<char>(PacketType::kReply),
                    static_cast<char>(last ? 1 : 0),
                    static_cast<char>(size >> 8),
                    static_cast<char>(size & 0xFF),
                    0,
                    0,
                    static_cast<char>(number_++),
                    0};
  whole += packet_;
  packet_.clear();
  Send(whole);
}

void PacketStream::Send(std::string_view bytes) {
  const bool cut = bytes.size() >= left_;
  bytes = bytes.substr(0, left_);
  if (left_ != kNever) left_ -= bytes.size();
  while (!bytes.empty()) {
    const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) throw Gone();
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  if (cut) Cut();
}

bool PacketStream::Attention() {
  if (!attention_ && Readable(0)) {
    if (Read().type != PacketType::kAttention) throw ProtocolError("a message in a reply");
    attention_ = true;
  }
  return attention_;
}

void PacketStream::AwaitAttention(std::chrono::seconds most) {
  const auto latest = std::chrono::steady_clock::now() + most;
  while (!Attention()) {
    if (std::chrono::steady_clock::now() > latest) throw Gone();
    Readable(100);
  }
}

void PacketStream::AwaitClose() {
  for (;;) Receive(1);
}

void PacketStream::Cut() {
  shutdown(socket_, SHUT_RDWR);
  throw Gone();
}

}  // namespace vorek::tds
