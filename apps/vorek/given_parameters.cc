#include "given_parameters.h"

#include <algorithm>
#include <set>

#include "author/report_definition.h"
#include "vorek/error.h"

namespace vorek {
namespace {

[[noreturn]] void Refuse(const std::string& part, const std::string& reason) {
  throw Error(ErrorNumber::kInvalidCall, "The parameters: " + part + " " + reason);
}

// "@1" of "@1=5".
std::string MarkerOf(const std::string& part) {
  const std::size_t end = part.find_first_not_of("0123456789", 1);
  const bool marked =
      part.size() > 2 && part[0] == '@' && end != 1 && end != std::string::npos && part[end] == '=';
  if (!marked) {
    Refuse('"' + part + '"', "is not of the form @1=VALUE; a value can't hold \"&\"");
  }
  return part.substr(0, end);
}

// "it has @1, @2".
std::string WhatItHas(const ReportDefinition& report) {
  if (report.parameters.empty()) return "it has none";
  std::string all;
  for (const DefinedParameter& parameter : report.parameters) {
    all += (all.empty() ? "it has " : ", ") + parameter.row.Marker();
  }
  return all;
}

}  // namespace

void CheckGivenParameters(Process& process, std::int32_t report, const std::string& text) {
  if (text.empty()) return;
  const ReportDefinition definition = ReadDefinition(process, report);
  if (!definition.found) return;
  std::set<std::string> seen;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('&', begin), text.size());
    const std::string marker = MarkerOf(text.substr(begin, end - begin));
    const std::vector<DefinedParameter>& known = definition.parameters;
    const bool has = std::any_of(known.begin(), known.end(), [&](const DefinedParameter& p) {
      return p.row.Marker() == marker;
    });
    if (!has) {
      Refuse(marker,
             "is no parameter of report " + std::to_string(report) + ": " + WhatItHas(definition));
    }
    if (!seen.insert(marker).second) Refuse(marker, "is given twice");
    begin = end + 1;
  }
}

}  // namespace vorek
