#include "adapters/xlsx/references.h"

#include <gtest/gtest.h>

namespace vorek::xlsx {
namespace {

struct MoveCase {
  const char* formula;
  const char* moved;
};

// Three rows come before row 6 of the sheet "Data".
TEST(References, FollowInsertedRows) {
  const MoveCase cases[] = {
      {"A5", "A5"},
      {"A6", "A9"},
      {"$B$6", "$B$9"},
      {"SUM(C4:C5)", "SUM(C4:C5)"},
      {"SUM(C5:C6)", "SUM(C5:C9)"},
      {"SUM(C6:C8)", "SUM(C9:C11)"},
      {"5:6", "5:9"},
      {"$6:$6", "$9:$9"},
      {"A:C", "A:C"},
      {"LOG10(A7)", "LOG10(A10)"},
      {"\"A7\"&A7", "\"A7\"&A10"},
      {"\"a\"\"A7\"&A7", "\"a\"\"A7\"&A10"},
      {"Data!A7", "Data!A10"},
      {"'Data'!A7:'Data'!B8", "'Data'!A10:'Data'!B11"},
      {"Other!A7+A7", "Other!A7+A10"},
      {"'It''s A7'!A7", "'It''s A7'!A7"},
      {"[1]Data!A7", "[1]Data!A7"},
      {"'[Book.xlsx]Data'!A7", "'[Book.xlsx]Data'!A7"},
      {"Jan:Dec!A7+A7", "Jan:Dec!A7+A10"},
      {"Table1[A7]+A7", "Table1[A7]+A10"},
      {"A7_total+rate.A7+A7", "A7_total+rate.A7+A10"},
      {"1E7+A7", "1E7+A10"},
      {"IF(A7>7,A7:B7,-A$7)", "IF(A10>7,A10:B10,-A$10)"},
      {"XFE7+ABCD7+A7", "XFE7+ABCD7+A10"},
      {"A1048576", "#REF!"},
      {"گروه7+A7", "گروه7+A10"},
      {"A7#", "A10#"},
      {"#REF!+A7", "#REF!+A10"},
      {"INDEX(A7:A9,1):A12", "INDEX(A10:A12,1):A15"},
  };
  for (const MoveCase& tried : cases) {
    EXPECT_EQ(MoveFormula(tried.formula, {6, 3}, "Data", true), tried.moved) << tried.formula;
  }
}

TEST(References, OfAnotherSheetAreMovedByItsName) {
  EXPECT_EQ(MoveFormula("A7+Data!A7+dAtA!B7", {6, 3}, "Data", false), "A7+Data!A10+dAtA!B10");
  EXPECT_EQ(MoveFormula("'My Data'!$A$7:$A$9", {6, 3}, "My Data", false), "'My Data'!$A$10:$A$12");
}

// Rows of one sheet move, those of the others don't: no reference can say that.
TEST(References, OverManySheetsStopTheMoveThatTheyCannotFollow) {
  for (const char* formula : {"SUM(Data:Other!A7)", "SUM(First:Data!A5:A7)",
                              "SUM('Data:My Other'!$A$7)", "1+dAtA:Other!7:7"}) {
    EXPECT_THROW(MoveFormula(formula, {6, 3}, "Data", true), UnmovedReference) << formula;
  }
  EXPECT_THROW(MoveFormula("SUM(A1:DATA7!C7)", {6, 3}, "A1", true), UnmovedReference);
  const MoveCase stay[] = {{"SUM(Data:Other!A5)+A7", "SUM(Data:Other!A5)+A10"},
                           {"SUM(Second:Other!A7)+A7", "SUM(Second:Other!A7)+A10"},
                           {"SUM(Data:Other!A:B)", "SUM(Data:Other!A:B)"},
                           {"SUM([1]Data:Other!A7)+A7", "SUM([1]Data:Other!A7)+A10"},
                           {"'C:\\x\\[b.xlsx]Data'!A7+A7", "'C:\\x\\[b.xlsx]Data'!A7+A10"},
                           {"Name:A7", "Name:A10"},
                           {"Name:(Data!A7)", "Name:(Data!A10)"},
                           {"Data!A5:Data!A7", "Data!A5:Data!A10"}};
  for (const MoveCase& tried : stay) {
    EXPECT_EQ(MoveFormula(tried.formula, {6, 3}, "Data", true), tried.moved) << tried.formula;
  }
}

TEST(References, OfOtherBooksAndManySheetsAreCopiedLikeAllOthers) {
  EXPECT_EQ(ShiftFormula("[1]Data!B5*[1]Data!B$5", 2, 0), "[1]Data!B7*[1]Data!B$5");
  EXPECT_EQ(ShiftFormula("SUM(Data:Other!B5)", 2, 0), "SUM(Data:Other!B7)");
}

TEST(References, FollowARowThatIsTakenAway) {
  const MoveCase cases[] = {
      {"A5", "A5"},       {"A6", "#REF!"},    {"A7", "A6"},       {"A6:B6", "#REF!"},
      {"A5:B6", "A5:B5"}, {"A6:B8", "A6:B7"}, {"A7:B8", "A6:B7"}, {"SUM(A1:A9)", "SUM(A1:A8)"}};
  for (const MoveCase& tried : cases) {
    EXPECT_EQ(MoveFormula(tried.formula, {6, -1}, "Data", true), tried.moved) << tried.formula;
  }
}

TEST(References, OfACopiedFormulaFollowUnlessTheyAreFixed) {
  EXPECT_EQ(ShiftFormula("B5*C$5+$D5+Other!B5", 2, 0), "B7*C$5+$D7+Other!B7");
  EXPECT_EQ(ShiftFormula("B5:$C6", 1, 1), "C6:$C7");
  EXPECT_EQ(ShiftFormula("B5", -5, 0), "#REF!");
}

TEST(References, AreasReadAndMove) {
  EXPECT_FALSE(ReadArea("A0"));
  EXPECT_FALSE(ReadArea("A1:"));
  EXPECT_FALSE(ReadArea("Sheet1!A1"));
  EXPECT_FALSE(ReadArea("A99999999999999999999"));
  ASSERT_TRUE(ReadArea("$B$5:D9"));
  EXPECT_EQ(AreaText(*ReadArea("D9:B5")), "B5:D9");
  EXPECT_EQ(AreaText(*MoveArea(*ReadArea("B5:D9"), {6, 3})), "B5:D12");
  EXPECT_FALSE(MoveArea(*ReadArea("B6:D6"), {6, -1}));
}

}  // namespace
}  // namespace vorek::xlsx
