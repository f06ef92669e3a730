#include "export/markup.h"

namespace vorek {

std::string HtmlText(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else if (c == '\n') {
      out += "<br>";
    } else if (c != '\r') {
      out += c;
    }
  }
  return out;
}

}  // namespace vorek
