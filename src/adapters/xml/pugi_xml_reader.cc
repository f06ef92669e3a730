#include <pugixml.hpp>

#include "platform/xml_element.h"
#include "vorek/error.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

constexpr int kDeepest = 40;
constexpr std::size_t kLargest = std::size_t{64} << 20U;  // bytes

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kInvalidCall, reason);
}

XmlElement ToElement(const pugi::xml_node& node, int depth) {
  if (depth > kDeepest) Refuse("سند XML بيش از اندازه تو در تو است.");
  XmlElement element;
  element.name = node.name();
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    element.attributes.emplace_back(attribute.name(), attribute.value());
  }
  for (const pugi::xml_node& child : node.children()) {
    if (child.type() == pugi::node_element) {
      element.children.push_back(ToElement(child, depth + 1));
    } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      element.text += child.value();
    }
  }
  return element;
}

XmlElement Parse(std::string_view bytes) {
  if (bytes.size() > kLargest) Refuse("سند XML بيش از اندازه بزرگ است.");
  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_doctype);
  if (!result) {
    Refuse("سند XML درست نيست، در بايت " + std::to_string(result.offset) + ": " +
           result.description());
  }
  for (const pugi::xml_node& child : document.children()) {
    if (child.type() == pugi::node_doctype) Refuse("سند XML نبايد DOCTYPE داشته باشد.");
  }
  if (!document.document_element()) Refuse("سند XML ريشه ندارد.");
  return ToElement(document.document_element(), 0);
}

}  // namespace

std::function<XmlElement(std::string_view)> PugiXmlReader() { return Parse; }

}  // namespace vorek
