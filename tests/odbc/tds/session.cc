#include "odbc/tds/session.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "adapters/sqlite/failure.h"
#include "odbc/tds/bytes.h"
#include "odbc/tds/result_writer.h"
#include "odbc/tds/tokens.h"
#include "vorek/error.h"

namespace vorek::tds {
namespace {

constexpr std::size_t kLeastPacket = 512;
constexpr std::size_t kMostPacket = 32767;
constexpr std::string_view kGarbage = "\x04\x01\x00\x10\x00\x00\x01\x00\x13\x57\x9B\xDF!!!!";

}  // namespace

void Session::Run() {
  ReceivePreLogin();
  ReceiveLogin();
  for (;;) Serve(stream_.Read());
}

void Session::ReceivePreLogin() {
  const Welcome welcome = script_.HowToReceive();
  if (welcome == Welcome::kCut) stream_.Cut();
  if (stream_.Read().type != PacketType::kPreLogin) throw ProtocolError("no first message");
  if (welcome == Welcome::kSilent) stream_.AwaitAttention();
  stream_.Put(welcome == Welcome::kGarbage ? std::string(kGarbage) : PreLoginAnswer());
  stream_.End();
}

void Session::ReceiveLogin() {
  const Message message = stream_.Read();
  if (message.type != PacketType::kLogin) throw ProtocolError("no login");
  const Login login = ReadLogin(message.payload);
  script_.Saw(login);
  const Welcome welcome = script_.HowToReceive();
  if (welcome == Welcome::kCutAtLogin) stream_.Cut();
  if (welcome == Welcome::kSilentAtLogin) stream_.AwaitAttention();
  if (welcome == Welcome::kGarbageAtLogin) stream_.Put(kGarbage);
  if (welcome == Welcome::kRefused) {
    stream_.Put(ErrorToken({18456, 1, 14, "Login failed for user '" + login.user + "'."}));
    stream_.Put(DoneToken(kDoneError));
    stream_.End();
    stream_.Cut();
  }
  const std::size_t wanted = script_.PacketSize().value_or(login.packet_size);
  const std::size_t size =
      wanted == 0 ? stream_.PacketSize() : std::clamp(wanted, kLeastPacket, kMostPacket);
  stream_.Put(DatabaseChangeToken(login.database.empty() ? "master" : login.database));
  stream_.Put(InfoToken({5701, 2, 0, "Changed database context."}));
  stream_.Put(CollationChangeToken());
  stream_.Put(LoginAcknowledgementToken());
  stream_.Put(PacketSizeChangeToken(size, stream_.PacketSize()));
  stream_.Put(DoneToken(kDoneFinal));
  stream_.End();
  stream_.SetPacketSize(size);
}

void Session::Serve(const Message& message) {
  switch (message.type) {
    case PacketType::kBatch:
      return ServeBatch(WithoutHeaders(message.payload));
    case PacketType::kCall:
      return ServeCall(ReadCall(WithoutHeaders(message.payload)));
    case PacketType::kAttention:  // for a reply that had ended already
      stream_.Put(DoneToken(kDoneAttention));
      return stream_.End();
    default:
      throw ProtocolError("a message of a kind that isn't served");
  }
}

void Session::ServeBatch(std::string_view units) {
  const std::string text = FromUtf16(units);
  script_.Saw(text);
  stream_.CutAfter(script_.TakeCut());
  if (const auto answer = script_.Find(text)) return (*answer)(stream_);
  unsigned flags = kDoneFinal;
  try {
    RunOnDatabase(text);
  } catch (const Error& error) {
    if (!stream_.Attention()) PutFailure(error);
    flags = kDoneError;
  }
  EndReply(flags, false);
}

void Session::ServeCall(const Call& call) {
  unsigned flags = kDoneFinal;
  const auto procedure = static_cast<Procedure>(call.number);
  try {
    if (procedure == Procedure::kPrepare && call.arguments.size() >= 3) {
      Describe(call.arguments[2]);
    } else if (procedure == Procedure::kExecuteSql && call.arguments.size() == 1) {
      RunOnDatabase(call.arguments[0]);
    } else if (procedure != Procedure::kUnprepare) {
      throw Error(ErrorNumber::kSyntax,
                  "This server has no procedure " + std::to_string(call.number) + call.name + ".");
    }
    stream_.Put(ReturnStatusToken(0));
  } catch (const Error& error) {
    if (!stream_.Attention()) PutFailure(error);
    flags = kDoneError;
  }
  if (procedure == Procedure::kPrepare && flags == kDoneFinal) {
    stream_.Put(ReturnValueToken("@handle", ++prepared_));
  }
  EndReply(flags, true);
}

// The columns that a text would give, as preparing it tells them: with no row.
void Session::Describe(const std::string& text) {
  script_.Saw("prepare: " + text);
  const auto columns = Database().Describe(text, 30);
  if (!columns || *columns == nullptr) return;
  stream_.Put(ColumnsToken(DeclareColumns(**columns)));
  stream_.Put(DoneInProcedureToken(kDoneMore));
}

DatabaseConnection& Session::Database() {
  if (database_ == nullptr) {
    database_ = backend_.provider->Connect(backend_.connection_string);
  }
  return *database_;
}

void Session::RunOnDatabase(std::string_view text) {
  constexpr int kLongestSeconds = 120;
  std::vector<ResultSetPtr> more;
  ExecuteOptions options;
  options.timeout_seconds = kLongestSeconds;
  // Nothing may be thrown through the database, which is written in C.
  std::exception_ptr lost;
  options.progress = [&](std::size_t) {
    try {
      return !stream_.Attention();
    } catch (...) {
      lost = std::current_exception();
      return false;
    }
  };
  options.more_rows = [&](ResultSetPtr rows) { more.push_back(std::move(rows)); };
  options.message = [&](std::string_view words) {
    stream_.Put(InfoToken({0, 1, 0, std::string(words)}));
  };
  ResultSetPtr first;
  try {
    first = Database().Execute(text, options);
  } catch (const Error&) {
    if (lost) std::rethrow_exception(lost);
    throw;
  }
  if (first != nullptr) more.insert(more.begin(), first);
  for (const ResultSetPtr& rows : more) {
    if (!WriteResult(*rows, stream_)) return;
  }
}

void Session::PutFailure(const Error& error) {
  Notice notice;
  notice.text = error.Description();
  notice.number = sqlite::ServerNumber(notice.text);
  stream_.Put(ErrorToken(notice));
}

void Session::EndReply(unsigned flags, bool of_procedure) {
  if (stream_.Attention()) {
    stream_.Put(DoneToken(kDoneAttention));
  } else {
    stream_.Put(of_procedure ? DoneProcedureToken(flags) : DoneToken(flags));
  }
  stream_.End();
}

}  // namespace vorek::tds
