#ifndef VOREK_TESTS_FAULTS_FAULTY_DATABASE_H_
#define VOREK_TESTS_FAULTS_FAULTY_DATABASE_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "faults/failing_memory.h"
#include "vorek/database.h"

namespace vorek {

// A provider in front of another one, whose n-th statement fails as a database on the network does.
class FaultyDatabase : public DatabaseProvider {
 public:
  enum class Fault {
    kLost,         // the connection is gone before the first row
    kLostMidway,   // behind the first half of the rows; what follows fails too until a new one
    kBusy,         // another one holds what is needed, beyond the time-out
    kFewColumns,   // the last column of the rows is gone
    kOtherType,    // each number comes as a text
    kUnreachable,  // the n-th connection can't be opened
  };

  explicit FaultyDatabase(std::shared_ptr<DatabaseProvider> inner) : inner_(std::move(inner)) {}

  void Arm(Fault fault, int n) {
    fault_ = fault;
    fails_at_ = n;
    done_ = 0;
  }
  int Disarm() {
    fails_at_ = 0;
    return done_;
  }
  bool Fired() const { return fails_at_ > 0 && done_ >= fails_at_; }

  bool Answers(std::string_view provider_name) const override {
    return inner_->Answers(provider_name);
  }

  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override {
    if (fault_ == Fault::kUnreachable && Counts()) {
      throw Error(ErrorNumber::kConnection, "server unreachable");
    }
    return std::make_unique<Connection>(*this, inner_->Connect(connection_string));
  }

 private:
  class Connection : public DatabaseConnection {
   public:
    Connection(FaultyDatabase& database, std::unique_ptr<DatabaseConnection> inner)
        : database_(database), inner_(std::move(inner)) {}

    ResultSetPtr Execute(std::string_view text, const ExecuteOptions& options) override {
      if (lost_) throw Error(ErrorNumber::kConnection, "connection lost");
      const bool fails = database_.fault_ != Fault::kUnreachable && database_.Counts();
      if (!fails) return inner_->Execute(text, options);
      switch (database_.fault_) {
        case Fault::kLost:
          lost_ = true;
          throw Error(ErrorNumber::kConnection, "connection lost");
        case Fault::kLostMidway:
          inner_->Execute(text, options);
          lost_ = true;
          throw Error(ErrorNumber::kConnection, "connection lost");
        case Fault::kBusy:
          throw Error(ErrorNumber::kTimeout, "Timeout expired.");
        case Fault::kFewColumns:
          return WithoutLastColumn(inner_->Execute(text, options));
        default:
          return WithTexts(inner_->Execute(text, options));
      }
    }
    std::optional<ResultSetPtr> Describe(std::string_view text, int timeout_seconds) override {
      return inner_->Describe(text, timeout_seconds);
    }
    void Cancel() noexcept override { inner_->Cancel(); }

   private:
    static ResultSetPtr WithoutLastColumn(const ResultSetPtr& rows) {
      if (rows == nullptr || rows->columns.size() < 2) return rows;
      auto fewer = std::make_shared<ResultSet>(*rows);
      fewer->columns.pop_back();
      return fewer;
    }
    static ResultSetPtr WithTexts(const ResultSetPtr& rows) {
      if (rows == nullptr) return rows;
      auto texts = std::make_shared<ResultSet>(*rows);
      for (ResultColumn& column : texts->columns) column.ConvertToText();
      return texts;
    }

    FaultyDatabase& database_;
    std::unique_ptr<DatabaseConnection> inner_;
    bool lost_ = false;
  };

  bool Counts() { return ++done_ == fails_at_; }

  std::shared_ptr<DatabaseProvider> inner_;
  Fault fault_ = Fault::kLost;
  int fails_at_ = 0;
  int done_ = 0;
};

}  // namespace vorek

#endif  // VOREK_TESTS_FAULTS_FAULTY_DATABASE_H_
