#include "export/row_blocks.h"

#include <algorithm>
#include <condition_variable>
#include <future>
#include <mutex>

namespace vorek {
namespace {

constexpr std::int32_t kBlock = 2048;  // rows

// What both threads share: which block is made next, and which one's turn it is to be written.
class Blocks {
 public:
  Blocks(RowRange rows, OutputFile& out, const RowsMaker& make)
      : rows_(rows), out_(out), make_(make) {}

  // Makes and writes blocks until none is left or the other thread failed. `before` hears of the
  // first row of each of them.
  void Run(const std::function<void(std::int32_t row)>& before) {
    try {
      std::string text;
      for (RowRange block; Take(block);) {
        before(block.first);
        text.clear();
        make_(block, text);
        if (!AwaitTurn(block)) return;
        out_.Write(text);
        PassOn(block);
      }
    } catch (...) {
      Stop();
      throw;
    }
  }

 private:
  bool Take(RowRange& block) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopped_ || rows_.first >= rows_.end) return false;
    block = {rows_.first, std::min(rows_.end - rows_.first, kBlock) + rows_.first};
    if (turn_ < 0) turn_ = block.first;
    rows_.first = block.end;
    return true;
  }
  bool AwaitTurn(RowRange block) {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [&] { return stopped_ || turn_ == block.first; });
    return !stopped_;
  }
  void PassOn(RowRange block) {
    const std::lock_guard<std::mutex> lock(mutex_);
    turn_ = block.end;
    changed_.notify_all();
  }
  void Stop() {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
  }

  RowRange rows_;  // not taken yet
  OutputFile& out_;
  const RowsMaker& make_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::int32_t turn_ = -1;  // the first row of the block that is written next; -1 at the beginning
  bool stopped_ = false;
};

}  // namespace

void WriteInBlocks(RowRange rows, OutputFile& out, LongWork& work, const RowsMaker& make) {
  Blocks blocks(rows, out, make);
  std::future<void> other;
  if (rows.end - rows.first > kBlock) {
    // Where no other thread can be had, this one makes all, and the other finds nothing left.
    constexpr auto kHow = std::launch::async | std::launch::deferred;
    other = std::async(kHow, [&blocks] { blocks.Run([](std::int32_t) {}); });
  }
  blocks.Run([&work](std::int32_t row) { work.At(row); });
  if (other.valid()) other.get();
}

}  // namespace vorek
