#include "author/rule_words.h"

namespace vorek {
namespace {

constexpr RuleWords kLinkRules[] = {
    {Rule::kLinkMissing,
     Severity::kError,
     "link-missing",
     {{{"there is no report %1", "a double click opens an empty window",
        "the number of a report of this catalogue"},
       {"گزارش شماره %1 وجود ندارد", "دو بار كليك پنجره اي خالي باز مي كند",
        "شماره گزارشي از همين فهرست"}}}},
    {Rule::kLinkParameter,
     Severity::kError,
     "link-parameter",
     {{{"the called report has no parameter %1",
        "its query doesn't get the value, and may stop without a message",
        "a ParameterID of the called report"},
       {"گزارش مقصد پارامتر %1 ندارد", "پرس و جوي آن مقدار را نمي گيرد و شايد بي پيغام بايستد",
        "ParameterID گزارش مقصد"}}}},
    {Rule::kLinkColumn,
     Severity::kError,
     "link-column",
     {{{"the result has no column \"%1\"", "the called report doesn't get its value",
        "the header of a column to the letter, hidden ones too"},
       {"نتيجه ستوني به نام \"%1\" ندارد", "گزارش مقصد مقدار آن را نمي گيرد",
        "عنوان يك ستون، حرف به حرف، پنهان هم باشد"}}}},
    {Rule::kPopupParameter,
     Severity::kError,
     "popup-parameter",
     {{{"the report has no parameter to pass on", "a double click on a closed row opens nothing",
        "a parameter, or ShowPopupTree 0"},
       {"گزارش پارامتري براي فرستادن ندارد", "دو بار كليك بر سطر بسته چيزي باز نمي كند",
        "يك پارامتر، يا ShowPopupTree برابر 0"}}}},
    {Rule::kPopupKey,
     Severity::kError,
     "popup-key",
     {{{"the field before ParentID isn't ID",
        "the window shows the children of another row, or none",
        "ID, ParentID in this order in the select list"},
       {"فيلد پيش از ParentID فيلد ID نيست", "پنجره فرزندان سطر ديگري را نشان مي دهد، يا هيچ",
        "ID, ParentID به همين ترتيب در فهرست انتخاب"}}}},
    {Rule::kPrintStops,
     Severity::kError,
     "print-template",
     {{{"%1", "%2", "a template as docs/print.md tells"},
       {"%1", "%2", "الگويي چنان كه docs/print.md مي گويد"}}}},
    {Rule::kPrintLook,
     Severity::kWarning,
     "print-template-look",
     {{{"%1", "%2", "a template as docs/print.md tells"},
       {"%1", "%2", "الگويي چنان كه docs/print.md مي گويد"}}}},
};

}  // namespace

std::span<const RuleWords> LinkRuleWords() { return kLinkRules; }

}  // namespace vorek
