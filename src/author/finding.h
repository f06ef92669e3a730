#ifndef VOREK_AUTHOR_FINDING_H_
#define VOREK_AUTHOR_FINDING_H_

#include <cstdint>
#include <string>
#include <vector>

namespace vorek {

// What can be wrong with a report's definition; finding_text.h says each in words.
enum class Rule {
  kNoReport,
  // the query
  kNoQuery,
  kMissingObject,
  kMissingColumn,
  kAmbiguousColumn,
  kMissingProcedure,
  kMissingFunction,
  kArguments,
  kSyntax,
  kNotGrouped,
  kRefused,
  kNotTranslated,
  kNotLookedUp,
  kLoneAt,
  kUnknownMarker,
  kMarkerOfOther,
  kQuotedMarker,
  kQuotedToken,
  kOtherLetters,
  kNoResult,
  kChangesRows,
  kLedgerColumns,
  kTreeFields,
  kTreeValue,
  // parameters
  kUnusedParameter,
  kMarkerWithoutBracket,
  kMarkerUnseen,
  kUnknownKind,
  kUnknownType,
  kKindAndType,
  kDateAsNumber,
  kNameAsText,
  kTextCompared,
  kListMarker,
  kNoList,
  kMissingList,
  kListColumn,
  kListRefused,
  kNoSpans,
  kSameParameter,
  kNoDependency,
  kCannotNote,
  // layout
  kLayoutGap,
  kLayoutBeyond,
  kLayoutEnd,
  kLayoutTwice,
  kWidth,
  kAlignment,
  kSpreadTwice,
  kNothingSpread,
  kNoFoldKey,
  // formulas
  kFormulaEmpty,
  kFormulaOpen,
  kFormulaStray,
  kFormulaFunction,
  kFormulaCall,
  kFormulaLowerCase,
  kFormulaName,
  kFormulaComma,
  kFormulaCharacter,
  kFormulaAdjacent,
  kFormulaLineBreak,
  kFormulaMinusPower,
  kFormulaLostPower,
  kFormulaReadsOther,
  kFormulaNoColumn,
  kFormulaLater,
  kFormulaOperator,
  kFormulaExponent,
  kFormulaFirstRow,
  // row security
  kSecuredNot,
  kSecuredNoForm,
  kSecuredJoined,
  kSecuredFrom,
  kSecuredWhereBorder,
  kSecuredWhereInner,
  kSecuredWhereOuterJoin,
  kSecuredOr,
  kSecuredMarker,
  kSecuredOrderBorder,
  kSecuredOrderInner,
  kSecuredComment,
  kSecuredSemicolon,
  kSecuredGroup,
  kSecuredRefused,
  // links and windows
  kLinkMissing,
  kLinkParameter,
  kLinkColumn,
  kPopupParameter,
  kPopupKey,
  // print templates
  kPrintStops,
  kPrintLook,
};

// The table of the catalogue that a finding is about.
enum class CatalogueTable { kReport, kParameter, kLayout, kExpression, kLink, kAttachment };

// Where something stands: a row of the catalogue, a column of it, a place in its text.
struct Place {
  CatalogueTable table = CatalogueTable::kReport;
  std::string row = {};    // its number among the report's; "" for the report's own row
  std::string field = {};  // the column, or ""
  int line = 0;            // of the field's text, from 1; 0 for the whole
  int column = 0;          // of the line, in code points from 1
};

// Something in a report's definition that goes wrong, or not as its author will have meant.
struct Finding {
  Rule rule;
  std::int32_t report_id = 0;
  Place place;
  std::vector<std::string> values = {};  // what the words of the rule name as %1, %2 ...
};

}  // namespace vorek

#endif  // VOREK_AUTHOR_FINDING_H_
