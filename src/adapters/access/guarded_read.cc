#include "adapters/access/guarded_read.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <utility>

#include "adapters/access/jet_file.h"
#include "vorek/error.h"

namespace vorek::jet {
namespace {

constexpr unsigned int kLongest = 10;  // seconds

// Texts on their way through a pipe: the length of each, in four bytes, and its bytes.
std::string Packed(const std::vector<std::string>& texts) {
  std::string packed;
  for (const std::string& text : texts) {
    const auto size = static_cast<std::uint32_t>(text.size());
    std::array<char, sizeof size> bytes{};
    std::memcpy(bytes.data(), &size, sizeof size);
    packed.append(bytes.data(), bytes.size());
    packed += text;
  }
  return packed;
}

std::vector<std::string> Unpacked(const std::string& packed) {
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < packed.size();) {
    std::uint32_t size = 0;
    if (packed.size() - at < sizeof size) Damaged();
    std::memcpy(&size, packed.data() + at, sizeof size);
    at += sizeof size;
    if (packed.size() - at < size) Damaged();
    texts.push_back(packed.substr(at, size));
    at += size;
  }
  return texts;
}

// The first text is the number of an error, "" for none, the second its description.
std::vector<std::string> Outcome(const std::function<std::vector<std::string>()>& read) {
  try {
    std::vector<std::string> texts = read();
    texts.insert(texts.begin(), {"", ""});
    return texts;
  } catch (const Error& error) {
    return {std::to_string(static_cast<long>(error.Number())), error.Description()};
  }
}

// Only the child's end: what the parent has in its buffers, and its clean-up, are none of its own.
[[noreturn]] void RunChild(int out, const std::function<std::vector<std::string>()>& read) {
  const rlimit no_core{0, 0};
  ::setrlimit(RLIMIT_CORE, &no_core);
  ::alarm(kLongest);
  // The library tells what it meets on standard error, in words for its own developers.
  const int nowhere = ::open("/dev/null", O_WRONLY);
  if (nowhere >= 0) ::dup2(nowhere, STDERR_FILENO);
  int code = 1;
  try {
    const std::string packed = Packed(Outcome(read));
    std::size_t sent = 0;
    while (sent < packed.size()) {
      const ssize_t count = ::write(out, packed.data() + sent, packed.size() - sent);
      if (count <= 0) break;
      sent += static_cast<std::size_t>(count);
    }
    code = sent == packed.size() ? 0 : 1;
  } catch (const std::exception&) {
    code = 2;
  }
  ::_exit(code);
}

std::string ReadAll(int in) {
  std::string all;
  std::array<char, 4096> part{};
  for (;;) {
    const ssize_t count = ::read(in, part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return all;
    all.append(part.data(), static_cast<std::size_t>(count));
  }
}

bool EndedWell(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::vector<std::string> ReadGuarded(const std::function<std::vector<std::string>()>& read) {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) throw Error(ErrorNumber::kPathAccess, "فايل اکسس خوانده نمي شود.");
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[0]);
    RunChild(ends[1], read);
  }
  ::close(ends[1]);
  const std::string packed = child > 0 ? ReadAll(ends[0]) : "";
  ::close(ends[0]);
  if (child < 0 || !EndedWell(child)) Damaged();
  std::vector<std::string> texts = Unpacked(packed);
  if (texts.size() < 2) Damaged();
  if (!texts[0].empty()) {
    throw Error(static_cast<ErrorNumber>(std::stol(texts[0])), texts[1]);
  }
  texts.erase(texts.begin(), texts.begin() + 2);
  return texts;
}

}  // namespace vorek::jet
