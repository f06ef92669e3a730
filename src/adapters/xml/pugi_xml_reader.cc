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

// What the parser found, in the user's words.
std::string ReasonOf(pugi::xml_parse_status status) {
  switch (status) {
    case pugi::status_out_of_memory:
      return "حافظه كافي نيست.";
    case pugi::status_bad_pi:
      return "دستور پردازش يا اعلان XML ناقص است.";
    case pugi::status_bad_comment:
      return "يادداشت بسته نشده است.";
    case pugi::status_bad_cdata:
      return "بخش CDATA بسته نشده است.";
    case pugi::status_bad_doctype:
      return "DOCTYPE ناقص است.";
    case pugi::status_bad_pcdata:
      return "متن بيرون از ريشه است.";
    case pugi::status_bad_start_element:
      return "آغاز جزء درست نيست.";
    case pugi::status_bad_attribute:
      return "ويژگي يك جزء درست نيست.";
    case pugi::status_bad_end_element:
      return "پايان جزء درست نيست.";
    case pugi::status_end_element_mismatch:
      return "نام آغاز و پايان جزء يكي نيست.";
    case pugi::status_no_document_element:
      return "ريشه ندارد.";
    default:
      return "نشانه اي شناخته نشد.";
  }
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
           ReasonOf(result.status));
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
