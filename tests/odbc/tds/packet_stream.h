#ifndef VOREK_TESTS_ODBC_TDS_PACKET_STREAM_H_
#define VOREK_TESTS_ODBC_TDS_PACKET_STREAM_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace vorek::tds {

// The client has left, or the connection was cut.
struct Gone {};

enum class PacketType : std::uint8_t {
  kBatch = 1,
  kCall = 3,
  kReply = 4,
  kAttention = 6,
  kLogin = 16,
  kPreLogin = 18,
};

struct Message {
  PacketType type;
  std::string payload;
};

// One client's connection: messages, cut into packets. Owns the socket. Everything throws Gone.
class PacketStream {
 public:
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

  explicit PacketStream(int socket) : socket_(socket) {}
  ~PacketStream();
  PacketStream(const PacketStream&) = delete;
  PacketStream& operator=(const PacketStream&) = delete;

  // The next message whole; throws ProtocolError for one without bounds.
  Message Read();

  void SetPacketSize(std::size_t bytes) { packet_size_ = bytes; }
  std::size_t PacketSize() const { return packet_size_; }

  // Gathers a reply; full packets are sent as they fill, the last one by End.
  void Put(std::string_view bytes);
  void End();
  // Sends what has been gathered although the packet isn't full.
  void Flush();

  // True once the client has asked that the reply be stopped. End forgets it.
  bool Attention();
  // Says nothing until the client asks to stop. Throws Gone too when `most` has passed.
  void AwaitAttention(std::chrono::seconds most = std::chrono::seconds(60));

  // Hears nothing more and says nothing, until the client leaves.
  [[noreturn]] void AwaitClose();

  // Ends the connection, as a network does.
  [[noreturn]] void Cut();
  // Cuts it once so many more bytes have been sent; from then on the rest is swallowed.
  void CutAfter(std::size_t bytes) { left_ = bytes; }

 private:
  void SendPacket(bool last);
  void Send(std::string_view bytes);
  std::string Receive(std::size_t bytes);
  bool Readable(int milliseconds) const;

  int socket_;
  std::size_t packet_size_ = 4096;
  std::string packet_;
  std::uint8_t number_ = 1;
  std::size_t left_ = kNever;
  bool attention_ = false;
};

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_PACKET_STREAM_H_
