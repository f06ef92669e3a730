#include <algorithm>
#include <utility>

#include "adapters/sqlite/runner.h"
#include "vorek/error.h"

// RAISERROR, THROW and TRY ... CATCH.
namespace vorek::sqlite {
namespace {

constexpr int kOwnNumber = 50000;  // of a text without a number
constexpr int kLastWarning = 10;   // of the severities that are only told

std::string AsText(const Cell& cell) {
  const auto* text = std::get_if<std::string>(&cell);
  const auto* whole = std::get_if<std::int64_t>(&cell);
  return text != nullptr ? *text : whole != nullptr ? std::to_string(*whole) : "";
}

}  // namespace

Failure Runner::FailureOf(const Error& error, const Statement& statement,
                          const Frame& frame) const {
  if (raised_) return *raised_;
  Failure failure;
  failure.message = error.Description();
  failure.number = ServerNumber(failure.message);
  failure.line = LineOf(frame.source, statement.at);
  failure.procedure = frame.procedure;
  return failure;
}

void Runner::RunRaise(Statement& statement, Frame& frame) {
  const bool throws = statement.word == "throw";
  Failure failure;
  failure.number = kOwnNumber;
  failure.ends_batch = throws;
  failure.line = LineOf(frame.source, statement.at);
  failure.procedure = frame.procedure;
  std::vector<Cell> values;
  for (std::size_t i = 0; i < statement.arguments.size(); ++i) {
    values.push_back(Evaluate(statement, static_cast<int>(i) + 1, *statement.arguments[i].value,
                              nullptr, frame));
  }
  const auto number = [&](std::size_t i, int otherwise) {
    const auto* whole = i < values.size() ? std::get_if<std::int64_t>(&values[i]) : nullptr;
    return whole == nullptr ? otherwise : static_cast<int>(*whole);
  };
  if (statement.expr == nullptr) {
    if (caught_.empty())
      Refuse(frame.source, statement.at, "THROW without values stands in a CATCH");
    failure = caught_.back();
    failure.ends_batch = true;
  } else {
    failure.message = AsText(Evaluate(statement, 0, *statement.expr, nullptr, frame));
    if (throws) {
      failure.number = number(0, kOwnNumber);
      failure.state = number(1, 1);
    } else {
      failure.severity = number(0, failure.severity);
      failure.state = number(1, 1);
      values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(
                                                        std::min<std::size_t>(2, values.size())));
      failure.message = FormatMessage(failure.message, values);
    }
  }
  if (failure.severity <= kLastWarning && !throws) return Tell(failure.message);
  raised_ = failure;
  throw Error(ErrorNumber::kSyntax, failure.message);
}

Runner::Flow Runner::RunTry(Statement& statement, Frame& frame) {
  const int tries = tries_;
  ++tries_;
  untranslated_ = nullptr;
  try {
    const Flow flow = RunOne(*statement.body[0], frame);
    tries_ = tries;
    return flow;
  } catch (const Error& error) {
    tries_ = tries;
    // Neither the end of the time nor a text that names what isn't there is caught beside it.
    const bool ends = error.Is(ErrorNumber::kCancelled) || error.Is(ErrorNumber::kTimeout) ||
                      error.Is(ErrorNumber::kConnection) || error.Is(ErrorNumber::kOutOfMemory) ||
                      untranslated_ == &frame;
    if (ends) throw Error(error.Number(), error.Description());
    caught_.push_back(failed_);
    raised_.reset();
  }
  const std::size_t level = caught_.size();
  try {
    const Flow flow = RunOne(*statement.body[1], frame);
    caught_.resize(level - 1);
    return flow;
  } catch (const Error& error) {
    caught_.resize(level - 1);
    throw Error(error.Number(), error.Description());
  }
}

}  // namespace vorek::sqlite
