#ifndef VOREK_TESTS_QT_SLOW_DATABASE_H_
#define VOREK_TESTS_QT_SLOW_DATABASE_H_

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "vorek/database.h"

namespace vorek::qt {

// Another provider whose statements that hold a word take as long as nobody cancels them; so does a
// connect by a string that holds it.
class SlowProvider : public DatabaseProvider {
 public:
  SlowProvider(std::shared_ptr<DatabaseProvider> provider, std::string slow_word)
      : provider_(std::move(provider)), slow_word_(std::move(slow_word)) {}

  bool Answers(std::string_view name) const override { return provider_->Answers(name); }
  std::unique_ptr<DatabaseConnection> Connect(std::string_view text) override {
    return std::make_unique<Connection>(provider_->Connect(text), slow_word_);
  }
  std::unique_ptr<DatabaseConnection> ConnectWhile(std::string_view text,
                                                   const std::function<bool()>& goes_on) override {
    const bool slow = text.find(slow_word_) != std::string_view::npos;
    while (slow && goes_on()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    if (slow) throw Error(ErrorNumber::kCancelled, "The connect was cancelled.");
    return Connect(text);
  }

 private:
  class Connection : public DatabaseConnection {
   public:
    Connection(std::unique_ptr<DatabaseConnection> inner, std::string slow_word)
        : inner_(std::move(inner)), slow_word_(std::move(slow_word)) {}

    ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override {
      if (text.find(slow_word_) == std::string_view::npos) return inner_->Execute(text, options);
      while (!cancelled_.exchange(false)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
      throw Error(ErrorNumber::kCancelled, "The statement was cancelled.");
    }
    void Cancel() noexcept override { cancelled_ = true; }

   private:
    std::unique_ptr<DatabaseConnection> inner_;
    std::string slow_word_;
    std::atomic<bool> cancelled_ = false;
  };

  std::shared_ptr<DatabaseProvider> provider_;
  std::string slow_word_;
};

}  // namespace vorek::qt

#endif  // VOREK_TESTS_QT_SLOW_DATABASE_H_
