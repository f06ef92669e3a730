#include "faults/failing_memory.h"

#include <execinfo.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_set>

namespace vorek::failing_memory {
namespace {

std::atomic<bool> armed{false};
std::atomic<bool> learning{false};
std::atomic<bool> fired{false};
std::atomic<std::size_t> count{0};
std::atomic<std::size_t> fails_at{0};
thread_local int paused = 0;

struct Learned {
  std::mutex mutex;
  std::unordered_set<std::uint64_t> places;
  std::vector<std::size_t> numbers;
};
Learned& Notes() {
  static Learned notes;
  return notes;
}

// The nearest calls tell a place; those behind them are the same for many.
void Note(std::size_t number) {
  constexpr int kCalls = 14;
  const Pause pause;
  std::array<void*, kCalls> calls{};
  const int depth = backtrace(calls.data(), kCalls);
  std::uint64_t place = 1469598103934665603U;
  for (int i = 0; i < depth; ++i) {
    place = (place ^ reinterpret_cast<std::uintptr_t>(calls[static_cast<std::size_t>(i)])) *
            1099511628211U;
  }
  Learned& notes = Notes();
  const std::lock_guard lock(notes.mutex);
  if (notes.places.insert(place).second) notes.numbers.push_back(number);
}

bool Fails() {
  if (!armed.load(std::memory_order_relaxed) || paused > 0) return false;
  const std::size_t number = ++count;
  if (learning) Note(number);
  if (number != fails_at) return false;
  fired = true;
  return true;
}

}  // namespace

void Arm(std::size_t n) {
  count = 0;
  fired = false;
  fails_at = n;
  armed = true;
}

std::size_t Disarm() {
  armed = false;
  learning = false;
  return count;
}

bool Fired() { return fired; }

void ArmToLearn() {
  Notes().places.clear();
  Notes().numbers.clear();
  learning = true;
  Arm(0);
}

std::vector<std::size_t> NewPlaces() { return Notes().numbers; }

Pause::Pause() { ++paused; }
Pause::~Pause() { --paused; }

namespace {

void* Taken(std::size_t size, std::size_t alignment) {
  if (Fails()) return nullptr;
  if (size == 0) size = 1;
  if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(size);
  return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* TakenOrThrow(std::size_t size, std::size_t alignment) {
  void* const memory = Taken(size, alignment);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

constexpr std::size_t kPlain = 1;

}  // namespace
}  // namespace vorek::failing_memory

// All other forms of new and delete come down to these.
void* operator new(std::size_t size) {
  return vorek::failing_memory::TakenOrThrow(size, vorek::failing_memory::kPlain);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return vorek::failing_memory::TakenOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return vorek::failing_memory::Taken(size, vorek::failing_memory::kPlain);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return vorek::failing_memory::Taken(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size) { return ::operator new(size); }
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return ::operator new(size, alignment);
}
void* operator new[](std::size_t size, const std::nothrow_t& no) noexcept {
  return ::operator new(size, no);
}
void* operator new[](std::size_t size, std::align_val_t alignment,
                     const std::nothrow_t& no) noexcept {
  return ::operator new(size, alignment, no);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
