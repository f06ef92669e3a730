#include "drive/driver.h"

#include <utility>

#include "drive/commands.h"
#include "drive/completion.h"

namespace vorek::drive {
namespace {

// "line 3: "
std::string Where(const ScriptLine& line) { return "line " + std::to_string(line.number) + ": "; }

// An error of the work names the line, unless it names one already.
template <typename Work>
auto InLine(const ScriptLine& line, const Work& work) {
  try {
    return work();
  } catch (const Error& error) {
    const bool told = error.Description().starts_with("line ");
    if (told) throw;
    throw Error(error.Number(), Where(line) + error.Description());
  }
}

Words WordsOf(const ScriptLine& line) {
  return InLine(line, [&] { return SplitWords(line.text); });
}

bool Begins(const Words& words) { return !words.empty() && words[0] == "when"; }

bool Ends(const Words& words) { return words.size() == 1 && words[0] == "end"; }

// Where the "end" of the "when" at `at` stands. Throws Error without one.
std::size_t EndOf(const Block& block, std::size_t at) {
  int depth = 1;
  for (std::size_t i = at + 1; i < block.size(); ++i) {
    const Words words = WordsOf(block[i]);
    if (Begins(words)) ++depth;
    if (Ends(words) && --depth == 0) return i;
  }
  Refuse(Where(block[at]) + "the end of this when is missing");
}

void Execute(Session& session, const Words& words) {
  if (words.empty()) return;
  const auto found = AllCommands().find(words[0]);
  if (found == AllCommands().end()) Refuse("unknown command " + words[0]);
  found->second(session, words);
}

}  // namespace

Driver::Driver(std::ostream& out) : session_(out, [this](const Block& block) { Play(block); }) {}

void Driver::Run(std::istream& script) {
  Block block;
  std::string line;
  while (std::getline(script, line)) block.push_back({block.size() + 1, line});
  Play(block);
}

void Driver::RunLine(const std::string& line) {
  Execute(session_, SplitWords(line));
  RaiseFailure();
}

void Driver::Play(const Block& block) {
  for (std::size_t at = 0; at < block.size(); ++at) {
    if (Begins(WordsOf(block[at]))) {
      at = ReadWhen(block, at);
    } else {
      PlayLine(block[at]);
    }
  }
}

void Driver::PlayLine(const ScriptLine& line) {
  InLine(line, [&] { RunLine(line.text); });
}

// Queues the lines up to the "end" of this "when"; returns where that stands.
std::size_t Driver::ReadWhen(const Block& block, std::size_t at) {
  const Words head = WordsOf(block[at]);
  if (head.size() != 2) Refuse(Where(block[at]) + "when FORM");
  const std::size_t end = EndOf(block, at);
  const auto line = [&](std::size_t index) {
    return block.begin() + static_cast<std::ptrdiff_t>(index);
  };
  session_.stage->Queue(head[1], Block(line(at + 1), line(end)));
  return end;
}

void Driver::RaiseFailure() {
  const Stage& stage = *session_.stage;
  if (!stage.Failure() || stage.TopForm() != nullptr) return;
  const std::string reason = *stage.Failure();
  session_.stage->ClearFailure();
  Refuse(reason);
}

std::vector<std::string> Driver::Completions(const std::string& head, const std::string& word) {
  return drive::Completions(session_, head, word);
}

}  // namespace vorek::drive
