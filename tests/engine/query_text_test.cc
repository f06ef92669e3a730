#include "engine/query_text.h"

#include <gtest/gtest.h>

#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

class QueryTextTest : public testing::Test {
 protected:
  QueryTextTest() {
    database->Answer("tblVorekReportParameter",
                     MakeResult({{"ParameterID", kInteger}}, {{"125"}, {"12"}, {"3"}, {"1"}}));
    process.data.Rebind("Provider=VorekMemory;");
  }

  // The text with its markers put, and "!" behind one in which an "@" is left.
  std::string Put(std::string query, const std::string& values) {
    const bool whole = SubstituteParameters(process, 7, query, values);
    return query + (whole ? "" : "!");
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{{.providers = {database},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
};

TEST_F(QueryTextTest, PutsAValueByTheShapeAroundItsMarker) {
  const struct {
    const char* query;
    const char* values;
    const char* text;
  } cases[] = {
      {"a in (@1)", "@1=(1,2)", "a in (1,2)"},
      {"f(@1, x, @1)", "@1=5", "f(5, x, 5)"},
      {"(a * @1 * 2) + (b * @1)", "@1=5", "(a * 5 * 2) + (b * 5)"},
      {"f(@@1) = @@1", "@1=5", "f(5) = 5"},
      {"(a = @1) or b = @1", "@1='x'", "(a = 'x') or b = 'x'"},
      // The longer number first, and keys in any case.
      {"(@125) (@12) (@1)", "@12=b&@1=a&@125=c", "c b a"},
      // A value that looks like a marker is put as it is, and stops the run.
      {"(a = @12) and (b = @1)", "@12='x@y'&@1=2", "(a = 'x@y') and (b = 2)!"},
      // Nothing closes behind the marker: its row is skipped.
      {"a = @1", "@1=5", "a = @1!"},
      {"(a = @9)", "@9=5", "(a = @9)!"},
  };
  for (const auto& c : cases) EXPECT_EQ(Put(c.query, c.values), c.text) << c.query;
}

TEST_F(QueryTextTest, MakesTheConditionOfAnEmptyValueTrue) {
  const struct {
    const char* query;
    const char* text;
  } cases[] = {
      {"a or (@1)=1", "a or 1=1"},
      {"a or (@1)= 1", "a or 1= 1"},
      {"(@1=a) and (b = @1)", "(1=a) and (b = 1 or ''='')"},
      {"(a = @1)", "(a = 1 or ''='')"},
      {"(a = @@1)", "(a = @1 or ''='')!"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Put(c.query, ""), c.text) << c.query;
    EXPECT_EQ(Put(c.query, "@1=  "), c.text) << c.query;
  }
}

TEST(ReplaceTokensTest, PutsBothSpellingsInAnyCase) {
  const TokenValues values = {"'1405/09/03'", "71", "72", "'10:30'", "73"};
  EXPECT_EQ(ReplaceTokens("تاريخ اجراي گزارش <farsireportdate> مشخصه كارمند <EmployeeID> "
                          "مشخصه موقعيت كاربر <PositionID> مشخصه زبان <LanguageID> "
                          "زمان اجراي گزارش <ReportTime> مشخصه كاربر <UserID>",
                          values),
            "'1405/09/03' '1405/09/03' 71 71 72 72 5 5 '10:30' '10:30' 73 73");
}

}  // namespace
}  // namespace vorek
