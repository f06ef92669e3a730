#include "author/grid_text.h"

#include <algorithm>
#include <utility>

#include "text/number.h"

namespace vorek {
namespace {

struct Escape {
  char plain;
  char letter;
};
constexpr Escape kEscapes[] = {{'\t', 't'}, {'\n', 'n'}, {'\r', 'r'}, {'\\', '\\'}};

void AppendEscaped(std::string_view value, std::string& out) {
  for (const char c : value) {
    char letter = 0;
    for (const Escape& escape : kEscapes) {
      if (escape.plain == c) letter = escape.letter;
    }
    if (letter != 0) out += '\\';
    out += letter != 0 ? letter : c;
  }
}

std::string Unescaped(std::string_view value) {
  std::string plain;
  for (std::size_t at = 0; at < value.size(); ++at) {
    char c = value[at];
    if (c == '\\' && at + 1 < value.size()) {
      ++at;
      for (const Escape& escape : kEscapes) {
        if (escape.letter == value[at]) c = escape.plain;
      }
    }
    plain += c;
  }
  return plain;
}

void AppendLine(std::string_view keyword, const std::vector<std::string>& values,
                std::string& out) {
  out += keyword;
  for (const std::string& value : values) {
    out += '\t';
    AppendEscaped(value, out);
  }
  out += '\n';
}

// The values of a line, its keyword in front.
std::vector<std::string> SplitLine(std::string_view line) {
  std::vector<std::string> values;
  for (std::size_t begin = 0; begin <= line.size();) {
    const std::size_t end = std::min(line.find('\t', begin), line.size());
    values.push_back(Unescaped(line.substr(begin, end - begin)));
    begin = end + 1;
  }
  return values;
}

void TakeLine(std::vector<std::string> values, GridText& text) {
  const std::string keyword = values.front();
  values.erase(values.begin());
  const std::string first = values.empty() ? "" : values.front();
  if (keyword == "report") text.report = text::TextToNumber(first);
  if (keyword == "title") text.title = first;
  if (keyword == "parameters") text.parameters = first;
  if (keyword == "failed") text.failure = first;
  if (keyword == "cut") text.cut = first;
  if (keyword == "message") text.messages.push_back(first);
  if (keyword == "header") {
    text.headers = std::move(values);
  } else if (keyword == "width") {
    text.widths = std::move(values);
  } else if (keyword == "align") {
    text.alignments = std::move(values);
  } else if (keyword == "row") {
    text.rows.push_back(std::move(values));
  }
}

}  // namespace

void TakeGrid(const Grid& grid, GridText& text) {
  std::string scratch;
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    text.headers.push_back(grid.TextMatrix(0, col));
    text.widths.push_back(std::to_string(grid.ColWidth(col)));
    text.alignments.push_back(std::to_string(grid.ColAlignment(col)));
  }
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    std::vector<std::string>& cells = text.rows.emplace_back();
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      cells.emplace_back(grid.CellView(row, col, scratch));
    }
  }
}

std::string FormatGridText(const GridText& text) {
  std::string out;
  AppendLine("report", {std::to_string(text.report)}, out);
  AppendLine("title", {text.title}, out);
  if (!text.parameters.empty()) AppendLine("parameters", {text.parameters}, out);
  for (const std::string& message : text.messages) AppendLine("message", {message}, out);
  if (!text.failure.empty()) {
    AppendLine("failed", {text.failure}, out);
    return out;
  }
  if (!text.cut.empty()) AppendLine("cut", {text.cut}, out);
  AppendLine("header", text.headers, out);
  AppendLine("width", text.widths, out);
  AppendLine("align", text.alignments, out);
  for (const std::vector<std::string>& row : text.rows) AppendLine("row", row, out);
  return out;
}

GridText ParseGridText(std::string_view text) {
  GridText parsed;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    TakeLine(SplitLine(text.substr(begin, end - begin)), parsed);
    begin = end + 1;
  }
  return parsed;
}

}  // namespace vorek
