#ifndef VOREK_PRINT_H_
#define VOREK_PRINT_H_

#include <functional>
#include <memory>
#include <string_view>

#include "vorek/world.h"

namespace vorek {

class PrintJobs;
struct XmlElement;

namespace print {
class PrintOutput;
}

// Prints through stored templates (docs/print.md), with the providers and files of these options,
// which REQUIRE to stand in them already. read_xml reads the templates (vorek/xml.h); output takes
// the pages (vorek/qt.h has a preview and a PDF).
std::shared_ptr<PrintJobs> PrintsThroughTemplates(
    const WorldOptions& options, std::function<XmlElement(std::string_view bytes)> read_xml,
    std::shared_ptr<print::PrintOutput> output);

}  // namespace vorek

#endif  // VOREK_PRINT_H_
