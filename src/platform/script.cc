#include "platform/script.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "text/utf8.h"

namespace vorek {
namespace {

// Walks over a script line by line and knows whether a line begins inside of something.
class Splitter {
 public:
  explicit Splitter(std::string_view script) : rest_(script) {}

  std::vector<ScriptBatch> Run() {
    while (!rest_.empty()) {
      const std::size_t end = rest_.find('\n');
      const std::size_t length = end == std::string_view::npos ? rest_.size() : end + 1;
      Line(rest_.substr(0, length));
      rest_.remove_prefix(length);
      ++line_;
    }
    Finish(1);
    return std::move(batches_);
  }

 private:
  void Line(std::string_view line) {
    int count = 1;
    if (close_ == '\0' && comments_ == 0 && IsGo(line, count)) return Finish(count);
    if (batch_.empty()) first_line_ = line_;
    batch_ += line;
    Scan(line);
  }

  static bool IsGo(std::string_view line, int& count) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!line.empty() && blank(line.front())) line.remove_prefix(1);
    while (!line.empty() && (blank(line.back()) || line.back() == ';')) line.remove_suffix(1);
    if (!text::StartsWithIgnoreCase(line, "go")) return false;
    line.remove_prefix(2);
    if (line.empty()) return true;
    if (!blank(line.front())) return false;
    while (!line.empty() && blank(line.front())) line.remove_prefix(1);
    if (line.substr(0, 2) == "--") return true;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), count);
    return error == std::errc() && end == line.data() + line.size() && count >= 0;
  }

  void Scan(std::string_view line) {
    for (std::size_t at = 0; at < line.size(); ++at) {
      const std::string_view pair = line.substr(at, 2);
      if (comments_ > 0 || (close_ == '\0' && pair == "/*")) {
        if (pair == "/*" || pair == "*/") {
          comments_ += pair == "/*" ? 1 : -1;
          ++at;
        }
      } else if (close_ != '\0') {
        if (line[at] == close_) close_ = '\0';  // a doubled quote opens it again at once
      } else if (pair == "--") {
        return;
      } else if (line[at] == '\'' || line[at] == '"') {
        close_ = line[at];
      } else if (line[at] == '[') {
        close_ = ']';
      }
    }
  }

  void Finish(int count) {
    const bool blank = std::all_of(batch_.begin(), batch_.end(), [](char c) {
      return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ';';
    });
    if (!blank && batch_ != "\xEF\xBB\xBF") {
      batches_.push_back({std::move(batch_), first_line_, count});
    }
    batch_.clear();
  }

  std::string_view rest_;
  std::string batch_;
  int line_ = 1;
  int first_line_ = 1;
  char close_ = '\0';
  int comments_ = 0;
  std::vector<ScriptBatch> batches_;
};

}  // namespace

std::vector<ScriptBatch> SplitScript(std::string_view script) { return Splitter(script).Run(); }

std::vector<ResultSetPtr> RunScript(DatabaseConnection& connection, std::string_view script,
                                    const ExecuteOptions& options) {
  std::vector<ResultSetPtr> results;
  const std::vector<ScriptBatch> batches = SplitScript(script);
  connection.Execute("BEGIN TRANSACTION", options);
  try {
    for (const ScriptBatch& batch : batches) {
      ExecuteOptions piece = options;
      piece.script_line = batch.first_line;
      for (int i = 0; i < batch.count; ++i) {
        ResultSetPtr result = connection.Execute(batch.text, piece);
        if (result != nullptr) results.push_back(std::move(result));
      }
    }
    connection.Execute("COMMIT TRANSACTION", options);
  } catch (const Error& error) {
    IgnoreErrors([&] { connection.Execute("ROLLBACK TRANSACTION", options); });
    throw Error(error.Number(), error.Description());
  }
  return results;
}

}  // namespace vorek
