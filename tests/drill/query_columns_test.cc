#include "drill/query_columns.h"

#include <gtest/gtest.h>

namespace vorek {
namespace {

TEST(SelectList, EndsBeforeTheFirstFrom) {
  const struct {
    const char* query;
    const char* list;  // null for none
  } cases[] = {
      {"Select t.a, t.b From t Where x in (Select y From z)", "SELECT T.A, T.B "},
      {"Select (Select max(a) from u) as m from t", "SELECT (SELECT MAX(A) "},
      {"Select a\nfrom t", nullptr},  // a line break is no blank
      {"exec spX", nullptr},
      {"", nullptr},
  };
  for (const auto& c : cases) {
    const auto list = SelectListOf(c.query);
    EXPECT_EQ(list.value_or("none"), c.list == nullptr ? "none" : c.list) << c.query;
  }
}

TEST(CommaCounting, FindsTheColumnOfAName) {
  const struct {
    const char* query;
    const char* name;
    std::int32_t plain;  // all commas
    std::int32_t outer;  // those outside of brackets
    std::int32_t field;  // those outside of quotes and brackets
  } cases[] = {
      {"Select t.ID, t.FormTypeID as x, b From t", ".FormTypeID", 2, 2, 2},
      // A comma before a bracket or a quote doesn't count, one inside a function does.
      {"Select isnull(a,0), t.FormID From t", ".formid", 3, 2, 2},
      {"Select f(a,'x'), t.FormID From t", ".FormID", 2, 2, 2},
      {"Select 'a, b', t.FormID From t", ".FormID", 3, 3, 2},
      {"Select a,(b), t.FormID From t", ".FormID", 2, 2, 3},
      // An earlier mention inside brackets isn't the field.
      {"Select f(t.FormID), b, t.FormID From t", ".FormID", 1, 1, 3},
      {"Select a,\nt.FormID From t", ".FormID", 1, 1, 2},
  };
  for (const auto& c : cases) {
    const std::string list = SelectListOf(c.query).value();
    const auto at = FindInList(list, c.name);
    ASSERT_TRUE(at) << c.query;
    EXPECT_EQ(CommaColumn(list, *at), c.plain) << c.query;
    EXPECT_EQ(OuterCommaColumn(list, *at), c.outer) << c.query;
    EXPECT_EQ(FieldColumn(c.query, c.name), c.field) << c.query;
  }
}

TEST(FieldColumnTest, KnowsWhatIsNotThere) {
  EXPECT_EQ(FieldColumn("Select a from t", "t.b"), -1);
  EXPECT_EQ(FieldColumn("Select 't.b' from t", "t.b"), -1);
  EXPECT_EQ(FieldColumn("", "t.b"), -1);
}

TEST(FindColumnTest, TakesTheFirstHeaderInAnyCase) {
  Grid grid(nullptr, "flxMain");
  grid.SetCols(4);
  grid.WriteCell(0, 2, "FormID");
  grid.WriteCell(0, 3, "FORMID");
  EXPECT_EQ(FindColumn("formid", grid), 2);
  EXPECT_EQ(FindColumn("", grid), 1);
  EXPECT_EQ(FindColumn("x", grid), std::nullopt);
}

}  // namespace
}  // namespace vorek
