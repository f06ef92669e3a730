#ifndef VOREK_AUTHOR_FINDING_TEXT_H_
#define VOREK_AUTHOR_FINDING_TEXT_H_

#include <string>
#include <string_view>

#include "author/finding.h"

namespace vorek {

enum class Language { kEnglish, kPersian };

enum class Severity {
  kError,    // the report fails, stops without a word, shows wrong figures or what it must not
  kWarning,  // it works otherwise than its author will have meant, or not for everybody
  kNote,     // what the check couldn't see
};
Severity SeverityOf(Rule rule);
// "error", "warning", "note", or the same in Persian.
std::string_view SeverityName(Severity severity, Language language);

// The rule's short name, as "missing-column": the same in every version.
std::string_view CodeOf(Rule rule);

// A finding in words.
struct FindingText {
  std::string what;
  std::string why;      // what comes of it
  std::string instead;  // what to write
};
FindingText TextOf(const Finding& finding, Language language);

// "report 203, parameter 3, MajorView", "report 203, SQLQuery, line 2, column 14".
std::string PlaceText(const Finding& finding, Language language);
std::string_view TableName(CatalogueTable table);

}  // namespace vorek

#endif  // VOREK_AUTHOR_FINDING_TEXT_H_
