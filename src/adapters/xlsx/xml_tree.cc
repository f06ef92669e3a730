#include "adapters/xlsx/xml_tree.h"

namespace vorek::xlsx {
namespace {

class IntoText : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

}  // namespace

bool ParseXml(const std::string& text, pugi::xml_document& tree) {
  constexpr unsigned kAsItStands = pugi::parse_full | pugi::parse_ws_pcdata;
  const pugi::xml_parse_result result =
      tree.load_buffer(text.data(), text.size(), kAsItStands & ~pugi::parse_eol);
  if (!result) return false;
  for (const pugi::xml_node& node : tree.children()) {
    if (node.type() == pugi::node_doctype) return false;
  }
  return static_cast<bool>(tree.document_element());
}

std::string PrintXml(const pugi::xml_node& node) {
  IntoText out;
  node.print(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(out.text);
}

std::string_view LocalName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node ChildOf(const pugi::xml_node& node, std::string_view local_name) {
  for (const pugi::xml_node& child : node.children()) {
    if (LocalName(child) == local_name) return child;
  }
  return {};
}

void ForEachElement(const pugi::xml_node& node, const std::function<void(pugi::xml_node&)>& visit) {
  pugi::xml_node at = node;
  while (at) {
    if (at.type() == pugi::node_element) visit(at);
    if (at.first_child()) {
      at = at.first_child();
      continue;
    }
    while (at && at != node && !at.next_sibling()) at = at.parent();
    if (!at || at == node) return;
    at = at.next_sibling();
  }
}

}  // namespace vorek::xlsx
