#ifndef VOREK_XML_H_
#define VOREK_XML_H_

#include <functional>
#include <string_view>

namespace vorek {

struct XmlElement;

// A reader of XML documents, for print templates. It takes no document with a document type, so
// that no entity of one is ever followed.
std::function<XmlElement(std::string_view bytes)> PugiXmlReader();

}  // namespace vorek

#endif  // VOREK_XML_H_
