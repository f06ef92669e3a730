#include "odbc/tds/script.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace vorek::tds {

void Script::On(const std::string& batch, Answer answer) {
  const std::lock_guard lock(mutex_);
  answers_[batch] = std::move(answer);
}

std::optional<Answer> Script::Find(const std::string& batch) const {
  const std::lock_guard lock(mutex_);
  const auto found = answers_.find(batch);
  if (found == answers_.end()) return std::nullopt;
  return found->second;
}

void Script::Receive(Welcome welcome) {
  const std::lock_guard lock(mutex_);
  welcome_ = welcome;
}

Welcome Script::HowToReceive() const {
  const std::lock_guard lock(mutex_);
  return welcome_;
}

void Script::UsePackets(std::size_t bytes) {
  const std::lock_guard lock(mutex_);
  packet_size_ = bytes;
}

std::optional<std::size_t> Script::PacketSize() const {
  const std::lock_guard lock(mutex_);
  return packet_size_;
}

void Script::CutNextReplyAfter(std::size_t bytes) {
  const std::lock_guard lock(mutex_);
  cut_ = bytes;
}

std::size_t Script::TakeCut() {
  const std::lock_guard lock(mutex_);
  return std::exchange(cut_, PacketStream::kNever);
}

void Script::Saw(const Login& login) {
  const std::lock_guard lock(mutex_);
  logins_.push_back(login);
}

void Script::Saw(const std::string& batch) {
  const std::lock_guard lock(mutex_);
  batches_.push_back(batch);
}

std::vector<Login> Script::Logins() const {
  const std::lock_guard lock(mutex_);
  return logins_;
}

std::vector<std::string> Script::Batches() const {
  const std::lock_guard lock(mutex_);
  return batches_;
}

bool Script::Await(const std::string& batch) const {
  constexpr int kTries = 1000;
  for (int i = 0; i < kTries; ++i) {
    const std::vector<std::string> seen = Batches();
    if (std::find(seen.begin(), seen.end(), batch) != seen.end()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

}  // namespace vorek::tds
