#include "eval/function_file.h"

#include <cstddef>

#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::string_view kFirstLine =
    "Por favor, no intente modificar a mano este archivo. "
    "Please, don't try to modify by hand this file.";
constexpr std::string_view kBetween = "\",\"";

// Takes the next line off the text, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

void ReadLine(std::string_view line, KeyedList<FunctionClass>& functions) {
  if (line.size() < 5 || !line.starts_with('"') || !line.ends_with('"')) return;
  line = line.substr(1, line.size() - 2);
  const std::size_t between = line.find(kBetween);
  if (between == std::string_view::npos) return;
  FunctionClass function;
  function.Nombre(text::ToUpper(line.substr(0, between)));
  function.Definicion(text::ToUpper(line.substr(between + kBetween.size())));
  functions.Add(function.Nombre(), function);
}

// A line's end inside a name or a body would tear the line apart: it's written as a blank.
void AppendField(std::string& out, const std::string& field) {
  out += '"';
  for (const char c : field) out += c == '\r' || c == '\n' ? ' ' : c;
  out += '"';
}

}  // namespace

bool IsFunctionFile(std::string_view text) { return TakeLine(text) == kFirstLine; }

void ReadFunctions(std::string_view text, KeyedList<FunctionClass>& functions) {
  TakeLine(text);
  while (!text.empty()) ReadLine(TakeLine(text), functions);
}

std::string WriteFunctions(const KeyedList<FunctionClass>& functions) {
  std::string out(kFirstLine);
  out += "\r\n";
  for (const FunctionClass& function : functions) {
    AppendField(out, function.Nombre());
    out += ',';
    AppendField(out, function.Definicion());
    out += "\r\n";
  }
  return out;
}

}  // namespace vorek
