#include "text/key_value_file.h"

#include <algorithm>

namespace vorek::text {
namespace {

std::string Escape(std::string_view text, std::string_view also) {
  std::string out;
  for (const char c : text) {
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else {
      if (c == '\\' || also.find(c) != std::string_view::npos) out += '\\';
      out += c;
    }
  }
  return out;
}

// Reads up to an unescaped `end`; moves `line` behind it. False if there is none.
bool ReadUpTo(std::string_view& line, char end, std::string& out) {
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == end) {
      line.remove_prefix(at + 1);
      return true;
    }
    if (line[at] != '\\' || at + 1 == line.size()) {
      out += line[at];
      continue;
    }
    const char escaped = line[++at];
    out += escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped;
  }
  line = {};
  return false;
}

}  // namespace

Sections ParseKeyValues(std::string_view text) {
  Sections sections;
  std::string section;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    std::string key;
    if (line.starts_with('[')) {
      line.remove_prefix(1);
      if (ReadUpTo(line, ']', key)) section = key;
    } else if (ReadUpTo(line, '=', key)) {
      std::string value;
      ReadUpTo(line, '\n', value);
      sections[section][key] = value;
    }
  }
  return sections;
}

std::string FormatKeyValues(const Sections& sections) {
  std::string out;
  for (const auto& [section, values] : sections) {
    if (!section.empty()) out += "[" + Escape(section, "]") + "]\n";
    for (const auto& [key, value] : values) {
      out += Escape(key, "=[") + "=" + Escape(value, "") + "\n";
    }
  }
  return out;
}

}  // namespace vorek::text
