#include "drive/words.h"

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"

namespace vorek::drive {
namespace {

char Unescape(char c) {
  switch (c) {
    case '"':
      return '"';
    case '\\':
      return '\\';
    case 'n':
      return '\n';
    case 't':
      return '\t';
    default:
      Refuse(std::string("unknown escape \\") + c);
  }
}

class WordScanner {
 public:
  explicit WordScanner(std::string_view line) : line_(line) {}

  std::vector<std::string> Scan() {
    while (at_ < line_.size() && line_[at_] != '#') {
      if (line_[at_] == ' ' || line_[at_] == '\t' || line_[at_] == '\r') {
        ++at_;
      } else {
        words_.push_back(Word());
      }
    }
    return std::move(words_);
  }

 private:
  bool AtWordEnd() const {
    return at_ >= line_.size() || std::string_view(" \t\r#").find(line_[at_]) != std::string::npos;
  }

  // Blanks between the brackets of an index belong to the word.
  std::string Word() {
    std::string word;
    int depth = 0;
    while (at_ < line_.size() && (depth > 0 || !AtWordEnd())) {
      if (line_[at_] == '"') {
        Quoted(word);
        continue;
      }
      if (line_[at_] == '(') ++depth;
      if (line_[at_] == ')') --depth;
      word += line_[at_++];
    }
    return word;
  }

  void Quoted(std::string& word) {
    for (++at_; at_ < line_.size(); ++at_) {
      if (line_[at_] == '"') {
        ++at_;
        return;
      }
      const bool escape = line_[at_] == '\\' && at_ + 1 < line_.size();
      word += escape ? Unescape(line_[++at_]) : line_[at_];
    }
    Refuse("a text isn't closed");
  }

  std::string_view line_;
  std::size_t at_ = 0;
  std::vector<std::string> words_;
};

std::vector<std::string> SplitArguments(std::string_view list) {
  std::vector<std::string> arguments;
  while (!text::TrimView(list).empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    arguments.push_back(text::Trim(list.substr(0, comma)));
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return arguments;
}

std::size_t LastDotOutsideBrackets(std::string_view text) {
  int depth = 0;
  for (std::size_t at = text.size(); at-- > 0;) {
    if (text[at] == ')') ++depth;
    if (text[at] == '(') --depth;
    if (text[at] == '.' && depth == 0) return at;
  }
  return std::string_view::npos;
}

}  // namespace

void Refuse(const std::string& reason) { throw Error(ErrorNumber::kInvalidCall, reason); }

Words SplitWords(std::string_view line) { return WordScanner(line).Scan(); }

std::string Word(const Words& words, std::size_t index) {
  if (index < words.size()) return words[index];
  Refuse(words[0] + " needs more words");
}

std::int32_t Number(const Words& words, std::size_t index) {
  const std::string word = Word(words, index);
  if (word.find_first_not_of("0123456789-") != std::string::npos) {
    Refuse("\"" + word + "\" is no number");
  }
  return property::FromText<std::int32_t>(word);
}

std::int32_t OptionalNumber(const Words& words, std::size_t index, std::int32_t missing) {
  return index < words.size() ? Number(words, index) : missing;
}

Place ParsePlace(std::string_view text) {
  Place place;
  const std::size_t dot = LastDotOutsideBrackets(text);
  if (dot != std::string_view::npos) {
    place.path = std::string(text.substr(0, dot));
    text.remove_prefix(dot + 1);
  }
  const std::size_t open = text.find('(');
  place.member = std::string(text.substr(0, open));
  if (open == std::string_view::npos) return place;
  if (!text.ends_with(')')) Refuse("a bracket isn't closed");
  place.arguments = SplitArguments(text.substr(open + 1, text.size() - open - 2));
  return place;
}

std::string Quote(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    switch (c) {
      case '"':
        quoted += "\\\"";
        break;
      case '\\':
        quoted += "\\\\";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\t':
        quoted += "\\t";
        break;
      default:
        quoted += c;
    }
  }
  return quoted + "\"";
}

}  // namespace vorek::drive
