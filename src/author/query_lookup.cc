#include "author/query_lookup.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "author/query_tokens.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr int kSeconds = 30;

// What a message begins with, and the rule that it is a case of.
struct KnownMessage {
  std::string_view head;
  Rule rule;
  bool named;  // the rule names what the message names, else it gives the message
};
constexpr KnownMessage kMessages[] = {
    {"Invalid object name", Rule::kMissingObject, true},
    {"Invalid column name", Rule::kMissingColumn, true},
    {"Ambiguous column name", Rule::kAmbiguousColumn, true},
    {"The multi-part identifier", Rule::kMissingColumn, true},
    {"Could not find stored procedure", Rule::kMissingProcedure, true},
    {"Cannot find the user-defined function", Rule::kMissingFunction, true},
    {"Cannot find the function", Rule::kMissingFunction, true},
    {"Wrong number of arguments", Rule::kArguments, false},
    {"Procedure or function", Rule::kArguments, false},
    {"The procedure", Rule::kArguments, false},
    {"Incorrect syntax", Rule::kSyntax, false},
    {"Unclosed quotation mark", Rule::kSyntax, false},
    {"Missing end comment mark", Rule::kSyntax, false},
};

// A clause where no statement begins: what stands in front of it is misspelt.
bool IsLooseClause(std::string_view message) {
  static constexpr std::string_view kClauses[] = {"'from'",   "'where'", "'order'", "'group'",
                                                  "'having'", "'join'",  "'inner'", "'left'"};
  return text::Contains(message, "not supported") &&
         std::any_of(std::begin(kClauses), std::end(kClauses), [&](std::string_view clause) {
           return text::StartsWithIgnoreCase(message, clause);
         });
}

Rule RuleOf(std::string_view message, bool& named) {
  for (const KnownMessage& known : kMessages) {
    if (!message.starts_with(known.head)) continue;
    named = known.named;
    return known.rule;
  }
  named = true;
  if (text::Contains(message, "is not a recognized built-in function name")) {
    return Rule::kMissingFunction;
  }
  if (text::Contains(message, "is not contained in either an aggregate")) {
    return Rule::kNotGrouped;
  }
  named = false;
  if (IsLooseClause(message)) return Rule::kSyntax;
  // A server that would have to run a procedure first.
  if (text::Contains(message, "metadata could not be determined")) return Rule::kNotLookedUp;
  return text::Contains(message, "not supported") ? Rule::kNotTranslated : Rule::kRefused;
}

// What stands in the first quotes of a message, or the message.
std::string NamedIn(std::string_view message) {
  const std::size_t begin = message.find_first_of("'\"");
  if (begin == std::string_view::npos) return std::string(message);
  const std::size_t end = message.find(message[begin], begin + 1);
  return std::string(message.substr(begin + 1, end - begin - 1));
}

// The number behind a word of a message: "line 3".
std::size_t NumberBehind(std::string_view message, std::string_view word) {
  const std::size_t at = message.rfind(word);
  if (at == std::string_view::npos) return 0;
  return static_cast<std::size_t>(text::NumericPrefix(message.substr(at + word.size())));
}

std::optional<std::size_t> OffsetOf(const std::string& text, std::size_t line, std::size_t column) {
  if (line == 0 || column == 0) return std::nullopt;
  std::size_t begin = 0;
  for (; line > 1; --line) begin = text.find('\n', begin) + 1;
  return begin + text::ByteOffset(std::string_view(text).substr(begin), column - 1);
}

// Where a server's message that tells no place means: the first word of that name.
std::optional<std::size_t> OffsetOfName(const std::string& text, const std::string& name) {
  const std::size_t dot = name.rfind('.');
  const std::string last = dot == std::string::npos ? name : name.substr(dot + 1);
  for (const QueryToken& token : ScanQuery(text).tokens) {
    if (text::EqualsIgnoreCase(token.text, last)) return token.begin;
  }
  return std::nullopt;
}

}  // namespace

QueryFault FaultOf(const Error& error, const std::string& text) {
  std::string message = error.Description();
  const std::size_t line = NumberBehind(message, "(line ");
  const std::size_t column = NumberBehind(message, ", column ");
  const std::size_t place = message.rfind(" (line ");
  if (place != std::string::npos) message.erase(place);
  bool named = false;
  const Rule rule = RuleOf(message, named);
  const std::string name = NamedIn(message);
  std::optional<std::size_t> at = OffsetOf(text, line, column);
  if (!at) at = OffsetOfName(text, name);
  return {rule, at, {named ? name : message}, message};
}

QueryLookup LookUp(Process& process, const std::string& text) {
  try {
    const std::optional<ResultSetPtr> columns = process.dten().cnn.Describe(text, kSeconds);
    if (columns) return {*columns, std::nullopt};
    return {nullptr, QueryFault{Rule::kNotLookedUp, std::nullopt, {"-"}, {}}};
  } catch (const Error& error) {
    if (error.Is(ErrorNumber::kConnection) || error.Is(ErrorNumber::kCancelled)) throw;
    if (error.Is(ErrorNumber::kTimeout)) {
      return {nullptr, QueryFault{Rule::kNotLookedUp, std::nullopt, {error.Description()}, {}}};
    }
    return {nullptr, FaultOf(error, text)};
  }
}

}  // namespace vorek
