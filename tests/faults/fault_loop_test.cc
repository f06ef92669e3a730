// Catches a failure that is passed over in silence or told twice, one that leaves a part of a file,
// of a grid or of a table behind, and one after which the same operation doesn't work any more.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "faults/failing_memory.h"
#include "faults/failing_sqlite.h"
#include "faults/operations.h"
#include "platform/attempt.h"

namespace vorek {
namespace {

// How many faults of a kind an operation gets: all by VOREK_FAULTS=all, else so many of them,
// spread over the operation.
std::size_t MostFaults() {
  const char* const wanted = std::getenv("VOREK_FAULTS");
  if (wanted == nullptr) return 24;
  const std::string text = wanted;
  return text == "all" ? SIZE_MAX : std::stoul(text);
}

// Names a part of the operations' names that are wanted alone.
bool IsWanted(const Operation& operation) {
  const char* const only = std::getenv("VOREK_FAULTS_ONLY");
  return only == nullptr || operation.name.find(only) != std::string::npos;
}

template <typename Number>
std::vector<Number> Spread(const std::vector<Number>& all, std::size_t most) {
  most = std::max<std::size_t>(most, 1);
  if (all.size() <= most) return all;
  std::vector<Number> some;
  for (std::size_t i = 0; i < most; ++i) some.push_back(all[i * all.size() / most]);
  return some;
}

std::vector<std::size_t> NumbersTo(int count) {
  std::vector<std::size_t> all(static_cast<std::size_t>(count));
  std::iota(all.begin(), all.end(), 1);
  return all;
}

// What a run said, and what it left.
struct Outcome {
  std::optional<Error> thrown;
  std::vector<std::string> told;
  std::string shown;                         // by the grids
  std::map<std::string, std::string> files;  // that lie in the folder
};

class FaultLoop {
 public:
  explicit FaultLoop(Operation operation) : operation_(std::move(operation)) {
    operation_.begin(stage_);
    before_ = Start();
    reference_ = Run([] {}, [] {});
    left_ = operation_.left(stage_);
    EXPECT_FALSE(reference_.thrown) << operation_.name << ": " << reference_.thrown->Description();
  }

  Stage& On() { return stage_; }
  const Operation& Of() const { return operation_; }

  // Runs with a fault, and once more without one. fired tells whether it was met.
  template <typename Arm, typename Disarm>
  void With(const std::string& fault, ErrorNumber number, const Arm& arm, const Disarm& disarm) {
    before_ = Start();
    bool fired = false;
    const Outcome outcome = Run(arm, [&] { fired = disarm(); });
    const std::string where = operation_.name + ", " + fault + ": ";
    if (fired) Judge(where, number, outcome);
    ExpectGoesOn(where);
  }

  // With rows that are other ones than before: what is made of them is told or shown, and nothing
  // of it is left for the next run.
  template <typename Arm, typename Disarm>
  void WithOtherRows(const std::string& fault, const Arm& arm, const Disarm& disarm) {
    Start();
    Run(arm, disarm);
    ExpectGoesOn(operation_.name + ", " + fault + ": ");
  }

  void ExpectGoesOn(const std::string& where) {
    if (!operation_.goes_on) Start();
    const Outcome again = Run([] {}, [] {});
    EXPECT_FALSE(again.thrown) << where << "later " << again.thrown->Description();
    EXPECT_EQ(again.told, reference_.told) << where << "later";
    EXPECT_TRUE(left_ == operation_.left(stage_))
        << where << "another result later" << Difference(left_, operation_.left(stage_));
  }

  // A run whose allocations are noted by their places.
  std::vector<std::size_t> Places() {
    Start();
    Run([] { failing_memory::ArmToLearn(); }, [] { failing_memory::Disarm(); });
    return failing_memory::NewPlaces();
  }

  template <typename Arm, typename Disarm>
  int Counted(const Arm& arm, const Disarm& disarm) {
    Start();
    int count = 0;
    Run(arm, [&] { count = disarm(); });
    return count;
  }

 private:
  Outcome Start() {
    operation_.reset(stage_);
    stage_.windows->told.clear();
    return Left();
  }

  Outcome Left() {
    Outcome outcome;
    outcome.shown = stage_.Shown();
    outcome.files = stage_.Files();
    return outcome;
  }

  // The exceptions of an event are told by the presenter that fed it.
  template <typename Arm, typename Disarm>
  Outcome Run(const Arm& arm, const Disarm& disarm) {
    stage_.windows->told.clear();
    arm();
    std::optional<Error> thrown = Attempt([&] { operation_.run(stage_); });
    disarm();
    Outcome outcome = Left();
    outcome.thrown = std::move(thrown);
    outcome.told = stage_.windows->told;
    return outcome;
  }

  void Judge(const std::string& where, ErrorNumber number, const Outcome& outcome) {
    const std::size_t errors = Errors(outcome);
    if (errors == 0) {
      // What was passed over must have changed nothing.
      EXPECT_EQ(outcome.told, reference_.told) << where << "neither told nor thrown";
      if (!operation_.silent || number == ErrorNumber::kOutOfMemory) {
        EXPECT_TRUE(left_ == operation_.left(stage_))
            << where << "silently another result" << Difference(left_, operation_.left(stage_));
      }
      return;
    }
    EXPECT_EQ(errors, 1U) << where << "told twice: " << Words(outcome);
    EXPECT_TRUE(IsOf(outcome, number)) << where << "another error: " << Words(outcome);
    EXPECT_EQ(outcome.files.size(), Allowed(outcome)) << where << "a file too many or too few";
    for (const auto& [name, bytes] : outcome.files) {
      const bool whole = Is(before_, name, bytes) || Is(reference_, name, bytes);
      EXPECT_TRUE(whole) << where << name << " isn't whole";
    }
    const bool whole = outcome.shown == before_.shown || outcome.shown == reference_.shown ||
                       IsEmpty(outcome.shown);
    EXPECT_TRUE(whole) << where << "half a grid" << Difference(before_.shown, outcome.shown)
                       << Difference(reference_.shown, outcome.shown);
  }

  static bool Is(const Outcome& of, const std::string& name, const std::string& bytes) {
    const auto found = of.files.find(name);
    return found != of.files.end() && found->second == bytes;
  }

  // Old files stay; new ones are there only as a whole.
  std::size_t Allowed(const Outcome& outcome) const {
    std::size_t most = 0;
    for (const auto& [name, bytes] : outcome.files) {
      most += before_.files.count(name) > 0 || Is(reference_, name, bytes);
    }
    for (const auto& [name, bytes] : before_.files) most += outcome.files.count(name) == 0;
    return most;
  }

  // What was told beyond the messages of a run that goes well.
  std::size_t Errors(const Outcome& outcome) const {
    std::size_t errors = outcome.thrown ? 1 : 0;
    for (const std::string& text : outcome.told) {
      errors += std::count(reference_.told.begin(), reference_.told.end(), text) == 0;
    }
    return errors;
  }

  // A message that tells no number tells the reason.
  bool IsOf(const Outcome& outcome, ErrorNumber number) const {
    if (number == ErrorNumber::kInternal) return true;
    if (outcome.thrown) return outcome.thrown->Is(number);
    if (number != ErrorNumber::kOutOfMemory) return true;
    return outcome.told.back().find("حافظه كافي نيست") != std::string::npos;
  }

  static bool IsEmpty(const std::string& shown) {
    return std::none_of(shown.begin(), shown.end(), [](char c) { return (c & 0x80) != 0; });
  }

  static std::string Words(const Outcome& outcome) {
    std::string all = outcome.thrown ? outcome.thrown->Description() : "";
    for (const std::string& text : outcome.told) all += " / " + text;
    return all;
  }

  static std::string Difference(const std::string& a, const std::string& b) {
    std::istringstream one(a);
    std::istringstream other(b);
    for (std::string x, y; std::getline(one, x) && std::getline(other, y);) {
      if (x != y) return "\n-" + x.substr(0, 200) + "\n+" + y.substr(0, 200);
    }
    return "\n" + std::to_string(a.size()) + " and " + std::to_string(b.size()) + " bytes";
  }

  Operation operation_;
  Stage stage_;
  Outcome before_;
  Outcome reference_;
  std::string left_;
};

class EachOperation : public testing::TestWithParam<Operation> {
 protected:
  void SetUp() override {
    if (!IsWanted(GetParam())) GTEST_SKIP();
  }
};

TEST_P(EachOperation, LivesThroughAFailingAllocation) {
  FaultLoop loop(GetParam());
  std::vector<std::size_t> numbers = Spread(loop.Places(), MostFaults() / GetParam().share);
  for (const std::size_t n : numbers) {
    loop.With(
        "allocation " + std::to_string(n), ErrorNumber::kOutOfMemory,
        [n] { failing_memory::Arm(n); },
        [] {
          failing_memory::Disarm();
          return failing_memory::Fired();
        });
    if (HasFailure() && MostFaults() != SIZE_MAX) return;
  }
}

TEST_P(EachOperation, LivesThroughAFailingAllocationOfSqlite) {
  FaultLoop loop(GetParam());
  const int count = loop.Counted([] { failing_sqlite::Arm(0); },
                                 [] { return static_cast<int>(failing_sqlite::Disarm()); });
  for (const std::size_t n : Spread(NumbersTo(count), MostFaults() / GetParam().share)) {
    loop.With(
        "allocation " + std::to_string(n) + " of SQLite", ErrorNumber::kOutOfMemory,
        [n] { failing_sqlite::Arm(n); },
        [] {
          failing_sqlite::Disarm();
          return failing_sqlite::Fired();
        });
    if (HasFailure() && MostFaults() != SIZE_MAX) return;
  }
}

TEST_P(EachOperation, LivesThroughAFailingFile) {
  FaultLoop loop(GetParam());
  FaultyFiles& files = *loop.On().files;
  const int count = loop.Counted([&] { files.Arm(0, ""); }, [&] { return files.Disarm(); });
  for (const char* const words :
       {"No space left on device", "Permission denied", "Input/output error"}) {
    for (const std::size_t number : Spread(NumbersTo(count), MostFaults() / GetParam().share / 3)) {
      const int n = static_cast<int>(number);
      loop.With(
          "operation " + std::to_string(n) + " on files, " + words, ErrorNumber::kPathAccess,
          [&] { files.Arm(n, words); },
          [&] {
            const bool fired = files.Fired();
            files.Disarm();
            return fired;
          });
    }
  }
}

TEST_P(EachOperation, LivesThroughAFailingDatabase) {
  using Fault = FaultyDatabase::Fault;
  const struct {
    Fault fault;
    const char* name;
    ErrorNumber number;
  } kinds[] = {{Fault::kLost, "lost", ErrorNumber::kConnection},
               {Fault::kLostMidway, "lost midway", ErrorNumber::kConnection},
               {Fault::kBusy, "busy", ErrorNumber::kTimeout}};
  FaultLoop loop(GetParam());
  FaultyDatabase& database = *loop.On().database;
  const int count =
      loop.Counted([&] { database.Arm(Fault::kLost, 0); }, [&] { return database.Disarm(); });
  for (const auto& kind : kinds) {
    for (const std::size_t number : Spread(NumbersTo(count), MostFaults() / GetParam().share / 3)) {
      const int n = static_cast<int>(number);
      loop.With(
          "statement " + std::to_string(n) + " " + kind.name, kind.number,
          [&] { database.Arm(kind.fault, n); },
          [&] {
            const bool fired = database.Fired();
            database.Disarm();
            return fired;
          });
    }
  }
}

TEST_P(EachOperation, LivesThroughOtherColumns) {
  using Fault = FaultyDatabase::Fault;
  FaultLoop loop(GetParam());
  FaultyDatabase& database = *loop.On().database;
  const int count =
      loop.Counted([&] { database.Arm(Fault::kFewColumns, 0); }, [&] { return database.Disarm(); });
  for (const auto& [fault, name] : {std::pair(Fault::kFewColumns, " with a column less"),
                                    std::pair(Fault::kOtherType, " with texts alone")}) {
    for (const std::size_t number : Spread(NumbersTo(count), MostFaults() / GetParam().share / 2)) {
      loop.WithOtherRows(
          "statement " + std::to_string(number) + name,
          [&, wanted = fault] { database.Arm(wanted, static_cast<int>(number)); },
          [&] { database.Disarm(); });
    }
  }
}

std::string TestName(const testing::TestParamInfo<Operation>& info) {
  std::string name = info.param.name;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c == ' ' || c == '.'; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Faults, EachOperation, testing::ValuesIn(Operations()), TestName);

}  // namespace
}  // namespace vorek

int main(int argc, char** argv) {
  vorek::failing_sqlite::Install();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
