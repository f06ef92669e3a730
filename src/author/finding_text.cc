#include "author/finding_text.h"

#include <array>

#include "author/rule_words.h"
#include "messages/persian_reason.h"

namespace vorek {
namespace {

std::size_t Index(Language language) { return language == Language::kEnglish ? 0 : 1; }

std::string Fill(std::string_view words, const std::vector<std::string>& values) {
  std::string text;
  for (std::size_t at = 0; at < words.size(); ++at) {
    const bool mark =
        words[at] == '%' && at + 1 < words.size() && words[at + 1] >= '1' && words[at + 1] <= '9';
    const auto index = mark ? static_cast<std::size_t>(words[at + 1] - '1') : values.size();
    if (index < values.size()) {
      text += values[index];
      ++at;
    } else {
      text += words[at];
    }
  }
  return text;
}

struct TableWords {
  CatalogueTable table;
  std::string_view name;
  std::array<std::string_view, 2> row;  // what its rows are called, by Language
};
constexpr TableWords kTables[] = {
    {CatalogueTable::kReport, "tblVorekReport", {"", ""}},
    {CatalogueTable::kParameter, "tblVorekReportParameter", {"parameter ", "پارامتر "}},
    {CatalogueTable::kLayout, "tblVorekReportLayout", {"layout column ", "چيدمان ستون "}},
    {CatalogueTable::kExpression,
     "tblVorekReportExpression",
     {"calculated column ", "ستون محاسباتي "}},
    {CatalogueTable::kLink, "tblVorekRelatedReports", {"link to report ", "پيوند به گزارش "}},
    {CatalogueTable::kAttachment, "tblVorekFormAttachment", {"print template ", "الگوي چاپ "}},
};

const TableWords& WordsOf(CatalogueTable table) { return kTables[static_cast<std::size_t>(table)]; }

}  // namespace

Severity SeverityOf(Rule rule) { return WordsOf(rule).severity; }

std::string_view SeverityName(Severity severity, Language language) {
  static constexpr std::array<std::array<std::string_view, 2>, 3> kNames = {
      {{"error", "خطا"}, {"warning", "هشدار"}, {"note", "يادداشت"}}};
  return kNames[static_cast<std::size_t>(severity)][Index(language)];
}

std::string_view CodeOf(Rule rule) { return WordsOf(rule).code; }

FindingText TextOf(const Finding& finding, Language language) {
  const Words& words = WordsOf(finding.rule).words[Index(language)];
  std::vector<std::string> values = finding.values;
  if (language == Language::kPersian) {
    // What a database or a file says.
    for (std::string& value : values) value = PersianReason(value);
  }
  return {Fill(words.what, values), Fill(words.why, values), Fill(words.instead, values)};
}

std::string PlaceText(const Finding& finding, Language language) {
  const bool persian = language == Language::kPersian;
  const std::string comma = persian ? "، " : ", ";
  const Place& place = finding.place;
  std::string text = (persian ? "گزارش " : "report ") + std::to_string(finding.report_id);
  if (!place.row.empty()) {
    text += comma + std::string(WordsOf(place.table).row[Index(language)]) + place.row;
  }
  if (!place.field.empty()) text += comma + place.field;
  if (place.line > 0) {
    text += comma + (persian ? "سطر " : "line ") + std::to_string(place.line) + comma +
            (persian ? "ستون " : "column ") + std::to_string(place.column);
  }
  return text;
}

std::string_view TableName(CatalogueTable table) { return WordsOf(table).name; }

}  // namespace vorek
