#ifndef VOREK_PLATFORM_XML_ELEMENT_H_
#define VOREK_PLATFORM_XML_ELEMENT_H_

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorek {

// An element of an XML document, with its attributes in their order, its own text and the elements
// in it.
struct XmlElement {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::string text;  // all text of the element itself, in one piece
  std::vector<XmlElement> children;
};

// Reads a document to its root element. Throws Error(kInvalidCall) with the reason for what is no
// well-formed document, for one with a document type (entities) and for one nested beyond all use.
using XmlReader = std::function<XmlElement(std::string_view bytes)>;

}  // namespace vorek

#endif  // VOREK_PLATFORM_XML_ELEMENT_H_
