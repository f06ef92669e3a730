#ifndef VOREK_ADAPTERS_XLSX_XML_TREE_H_
#define VOREK_ADAPTERS_XLSX_XML_TREE_H_

#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

// XML parts of a workbook as trees that are written back as they were read.
namespace vorek::xlsx {

// False for a text that is no XML, or that defines entities of its own.
bool ParseXml(const std::string& text, pugi::xml_document& tree);
std::string PrintXml(const pugi::xml_node& node);
// The name without its prefix.
std::string_view LocalName(const pugi::xml_node& node);
// The first child of that name, whatever its prefix; an empty node if there is none.
pugi::xml_node ChildOf(const pugi::xml_node& node, std::string_view local_name);
// The node and all elements below it, a parent before its children. REQUIRES: visit removes
// nothing.
void ForEachElement(const pugi::xml_node& node, const std::function<void(pugi::xml_node&)>& visit);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_XML_TREE_H_
