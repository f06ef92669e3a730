#include "adapters/xlsx/sheet_xml.h"

#include <array>
#include <charconv>

#include "text/utf8.h"

namespace vorek::xlsx {
namespace {

bool IsUpperHex(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); }
bool IsHex(char c) { return IsUpperHex(c) || (c >= 'a' && c <= 'f'); }

// "_x0041_" in a text itself would be read as an "A".
bool LooksEscaped(std::string_view text) {
  constexpr std::size_t kLength = 7;
  if (text.size() < kLength || !text.starts_with("_x") || text[6] != '_') return false;
  return IsHex(text[2]) && IsHex(text[3]) && IsHex(text[4]) && IsHex(text[5]);
}

void AppendEscape(unsigned code, std::string& out) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  out += "_x";
  for (const unsigned shift : {12U, 8U, 4U, 0U}) out += kDigits[(code >> shift) & 0xFU];
  out += '_';
}

std::string_view Entity(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return {};
  }
}

// Which bytes need a second look; 1 in ASCII, 2 at the head of a longer character.
constexpr std::array<std::uint8_t, 256> MakeKinds() {
  std::array<std::uint8_t, 256> kinds{};
  for (std::size_t c = 0; c < 0x20; ++c) kinds[c] = c == '\t' || c == '\n' ? 0 : 1;
  for (const char c : {'&', '<', '>', '"', '_'}) kinds[static_cast<unsigned char>(c)] = 1;
  for (std::size_t c = 0x80; c < 0x100; ++c) kinds[c] = 2;
  return kinds;
}
constexpr std::array<std::uint8_t, 256> kKinds = MakeKinds();

// The bytes of a well-formed character of two bytes, as all Persian letters are.
bool IsTwoBytes(std::string_view text, std::size_t at) {
  const auto head = static_cast<unsigned char>(text[at]);
  if (head < 0xC2 || head > 0xDF || at + 1 >= text.size()) return false;
  return (static_cast<unsigned char>(text[at + 1]) & 0xC0U) == 0x80;
}

void AppendOdd(std::string_view text, std::size_t& at, std::string& out) {
  const char c = text[at];
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x80) {
    ++at;
    if (c == '_') {
      if (LooksEscaped(text.substr(at - 1))) {
        AppendEscape('_', out);
      } else {
        out += '_';
      }
    } else if (const std::string_view entity = Entity(c); !entity.empty()) {
      out += entity;
    } else {
      AppendEscape(byte, out);
    }
    return;
  }
  const char32_t letter = text::DecodeAt(text, at);
  if (letter == 0xFFFE || letter == 0xFFFF) {
    AppendEscape(static_cast<unsigned>(letter), out);
  } else {
    text::AppendUtf8(out, letter);
  }
}

}  // namespace

void AppendColumnName(std::int32_t column, std::string& out) {
  std::array<char, 8> name{};
  std::size_t length = 0;
  for (std::int32_t rest = column; rest > 0; rest = (rest - 1) / 26) {
    name[length++] = static_cast<char>('A' + (rest - 1) % 26);
  }
  while (length > 0) out += name[--length];
}

void AppendNumber(std::int64_t number, std::string& out) {
  std::array<char, 24> buffer{};
  char* const begin = buffer.data();
  out.append(begin, std::to_chars(begin, begin + buffer.size(), number).ptr);
}

void AppendSheetText(std::string_view text, std::string& out) {
  std::size_t plain = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::uint8_t kind = kKinds[static_cast<unsigned char>(text[at])];
    if (kind == 0) {
      ++at;
      continue;
    }
    if (kind == 2 && IsTwoBytes(text, at)) {
      at += 2;
      continue;
    }
    out.append(text.substr(plain, at - plain));
    AppendOdd(text, at, out);
    plain = at;
  }
  out.append(text.substr(plain));
}

void AppendXml(std::string_view text, std::string& out) {
  for (const char c : text) {
    const std::string_view entity = Entity(c);
    if (entity.empty()) {
      out += c;
    } else {
      out += entity;
    }
  }
}

std::string ReadSheetText(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    if (!LooksEscaped(text.substr(at))) {
      out += text[at++];
      continue;
    }
    unsigned code = 0;
    std::from_chars(text.data() + at + 2, text.data() + at + 6, code, 16);
    text::AppendUtf8(out, code);
    at += 7;
  }
  return out;
}

std::size_t Utf16Length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    length += (byte & 0xC0U) == 0x80 ? 0 : byte >= 0xF0 ? 2 : 1;
  }
  return length;
}

std::string PasswordHash(std::string_view password) {
  unsigned hash = 0;
  const auto turn = [&hash] { hash = ((hash >> 14U) & 1U) | ((hash << 1U) & 0x7FFFU); };
  for (std::size_t at = password.size(); at > 0; --at) {
    turn();
    hash ^= static_cast<unsigned char>(password[at - 1]);
  }
  turn();
  hash ^= static_cast<unsigned>(password.size()) ^ 0xCE4BU;
  std::string escaped;
  AppendEscape(hash, escaped);
  return escaped.substr(2, 4);
}

std::string ProtectionXml(const SheetProtection& protection) {
  std::string xml = "<sheetProtection";
  if (!protection.password.empty()) {
    xml += " password=\"" + PasswordHash(protection.password) + "\"";
  }
  xml += " sheet=\"1\"";
  const auto locked = [&xml](const char* name, bool is_locked) {
    xml += std::string(" ") + name + "=\"" + (is_locked ? "1" : "0") + "\"";
  };
  locked("objects", protection.drawing_objects);
  locked("scenarios", protection.scenarios);
  locked("formatCells", !protection.allow_formatting_cells);
  locked("formatColumns", !protection.allow_formatting_columns);
  locked("formatRows", !protection.allow_formatting_rows);
  locked("insertColumns", !protection.allow_inserting_columns);
  locked("insertRows", !protection.allow_inserting_rows);
  locked("insertHyperlinks", !protection.allow_inserting_hyperlinks);
  locked("deleteColumns", !protection.allow_deleting_columns);
  locked("deleteRows", !protection.allow_deleting_rows);
  locked("sort", !protection.allow_sorting);
  locked("autoFilter", !protection.allow_filtering);
  locked("pivotTables", !protection.allow_using_pivot_tables);
  return xml + "/>";
}

}  // namespace vorek::xlsx
