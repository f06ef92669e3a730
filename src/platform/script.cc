#include "vorek/script.h"

#include <algorithm>
#include <charconv>
#include <iterator>
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
    const bool open = close_ != '\0' || comments_ > 0;
    if (!open && IsGo(line, count)) return Finish(count);
    if (batch_.empty()) first_line_ = line_;
    if (!open && IsToolLine(line)) {
      batch_ += '\n';
      return;
    }
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

  bool IsToolLine(std::string_view line) {
    const std::size_t end = line.find_last_not_of(" \t\r\n");
    const std::string_view words =
        text::TrimView(line.substr(0, end == std::string_view::npos ? 0 : end + 1));
    if (!text::StartsWithIgnoreCase(words, ":setvar") &&
        !text::StartsWithIgnoreCase(words, ":on error")) {
      return false;
    }
    notes_.push_back("line " + std::to_string(line_) + ": " + std::string(words) +
                     " is passed over");
    return true;
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
      batches_.push_back({std::move(batch_), first_line_, count, std::move(notes_)});
      notes_.clear();
    }
    batch_.clear();
  }

  std::string_view rest_;
  std::string batch_;
  int line_ = 1;
  int first_line_ = 1;
  char close_ = '\0';
  int comments_ = 0;
  std::vector<std::string> notes_;
  std::vector<ScriptBatch> batches_;
};

std::string FromUtf16(std::string_view bytes, bool low_first) {
  const auto unit = [&](std::size_t at) {
    const auto a = static_cast<unsigned char>(bytes[at]);
    const auto b = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char32_t>(low_first ? a | b << 8 : a << 8 | b);
  };
  std::string out;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
    char32_t c = unit(at);
    const bool high = c >= 0xD800 && c < 0xDC00 && at + 3 < bytes.size();
    const char32_t low = high ? unit(at + 2) : 0;
    if (low >= 0xDC00 && low < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10U) + (low - 0xDC00);
      at += 2;
    }
    text::AppendUtf8(out, c >= 0xD800 && c < 0xE000 ? char32_t{0xFFFD} : c);
  }
  return out;
}

// Collects what a script gives and prints.
class Collector {
 public:
  explicit Collector(const ExecuteOptions& options) : options_(options) {
    options_.more_rows = [this](ResultSetPtr rows) { more_.push_back(std::move(rows)); };
  }

  void Run(DatabaseConnection& connection, const ScriptBatch& batch) {
    for (const std::string& note : batch.notes) {
      if (options_.message) options_.message(note);
    }
    options_.script_line = batch.first_line;
    for (int i = 0; i < batch.count; ++i) {
      ResultSetPtr first = connection.Execute(batch.text, options_);
      if (first != nullptr) results_.push_back(std::move(first));
      std::move(more_.begin(), more_.end(), std::back_inserter(results_));
      more_.clear();
    }
  }

  std::vector<ResultSetPtr> Take() { return std::move(results_); }

 private:
  ExecuteOptions options_;
  std::vector<ResultSetPtr> more_;
  std::vector<ResultSetPtr> results_;
};

}  // namespace

std::string ScriptText(std::string bytes) {
  const std::string_view mark = std::string_view(bytes).substr(0, 2);
  if (mark == "\xFF\xFE" || mark == "\xFE\xFF") return FromUtf16(bytes, mark[0] == '\xFF');
  const std::string valid = text::ValidUtf8(bytes);
  if (valid == bytes) return bytes;
  const auto differs = std::mismatch(bytes.begin(), bytes.end(), valid.begin(), valid.end()).first;
  const auto offset = static_cast<std::size_t>(differs - bytes.begin());
  const std::string_view head = std::string_view(bytes).substr(0, offset);
  const auto line = std::count(head.begin(), head.end(), '\n') + 1;
  const std::size_t column = text::Length(head.substr(head.rfind('\n') + 1)) + 1;
  throw Error(ErrorNumber::kSyntax, "The script isn't UTF-8 (line " + std::to_string(line) +
                                        ", column " + std::to_string(column) +
                                        "): save it as UTF-8 or UTF-16.");
}

std::vector<ScriptBatch> SplitScript(std::string_view script) { return Splitter(script).Run(); }

std::vector<ResultSetPtr> RunScript(DatabaseConnection& connection, std::string_view script,
                                    const ExecuteOptions& options) {
  const std::vector<ScriptBatch> batches = SplitScript(script);
  Collector collector(options);
  ExecuteOptions begin = options;
  begin.script_line = 1;
  connection.Execute("BEGIN TRANSACTION", begin);
  try {
    for (const ScriptBatch& batch : batches) collector.Run(connection, batch);
    connection.Execute("COMMIT TRANSACTION", options);
  } catch (const std::exception&) {
    IgnoreAllErrors([&] { connection.Execute("ROLLBACK TRANSACTION", options); });
    throw;
  }
  return collector.Take();
}

}  // namespace vorek
