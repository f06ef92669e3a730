#include "engine/query_text.h"
#include "parameters/parameter_fixture.h"
#include "text/key_list.h"

// What becomes of each shape of a marker, with a value of a parameter string and without.
namespace vorek {
namespace {

class ReplacementTest : public ParameterTest {
 protected:
  // The text that a parameter string gives, with "!" behind it if an "@" is left.
  std::string Put(std::string query, const std::string& values) {
    const bool clean = SubstituteParameters(process, 7, query, values);
    return query + (clean ? "" : "!");
  }
};

struct ReplacementCase {
  const char* query;
  const char* value;    // with "@12=5"
  const char* nothing;  // without
};

// A row without ")" behind one of its markers isn't handled at all: hence the "(@12)" at the ends.
const ReplacementCase kCases[] = {
    {"x in (@12)", "x in 5", "x in (1 or ''='')"},
    {"exec f @12, (@12)", "exec f 5, 5", "exec f 1 or ''='', (1 or ''='')"},
    {"f(@12, @12)", "f(5, 5)", "f(1 or ''='', 1 or ''='')"},
    {"a + @12 * 2 (@12)", "a + 5 * 2 5", "a + 1 or ''='' * 2 (1 or ''='')"},
    {"(a = @@12)", "(a = 5)", "(a = @1 or ''='')!"},
    {"a = @12 (@12)", "a = 5 5", "a = 1 or ''='' (1 or ''='')"},
    {"(@12)=1", "5=1", "1=1"},
    {"(@12)= 1", "5= 1", "1= 1"},
    {"@12=a (@12)", "5=a 5", "1=a (1 or ''='')"},
    {"a = @12", "a = @12!", "a = @12!"},
};

TEST_F(ReplacementTest, PutsAValueOrNothingInEachShape) {
  Add(1, "one", 1002);
  Add(12, "twelve", 1002);
  for (const ReplacementCase& c : kCases) {
    EXPECT_EQ(Put(c.query, "@12=5"), c.value) << c.query;
    EXPECT_EQ(Put(c.query, "@12=  "), c.nothing) << c.query;
  }
  // The longer number goes first; a number without a row stays.
  EXPECT_EQ(Put("f(@12) + g(@1)", "@1=3&@12=5"), "f5 + g3");
  EXPECT_EQ(Put("f(@12) + g(@2)", "@12=5&@2=3"), "f5 + g(@2)!");
  EXPECT_EQ(Put("(@12)", "@12='a@b'"), "'a@b'!");
}

// The same of the panel, by whole queries: each of the shapes beside the others.
TEST_F(ReplacementTest, PutsWhatIsEnteredInEachShapeInItsOrder) {
  Add(12, "twelve", 1002, "nvarchar");
  const std::pair<const char*, const char*> cases[] = {{"(@12) ", "'a' "},
                                                       {"f(@12, @12) ", "f('a', 'a') "},
                                                       {"f(1, @12) ", "f(1, 'a') "},
                                                       {"x @12 * 2 ", "x 'a' * 2 "},
                                                       {"x LIKE @12 ", "x like ('%a%') AND ''='' "},
                                                       {"x IN  @12 ", "x in  'a' AND ''='' "},
                                                       {"x in @12 ", "x in  ('a') AND ''='' "},
                                                       {"x = @12 ", "x =  ('a') AND ''='' "}};
  for (const auto& [query, put] : cases) {
    ASSERT_TRUE(View(std::string("select ") + query)) << query;
    panel.widgets.txt[1].Type("a");
    EXPECT_EQ(Confirmed(), std::string("select ") + put) << query;
  }
}

// Both halves of an entity are read back by their own keys.
TEST_F(ReplacementTest, KeepsBothHalvesOfAnEntity) {
  Add(3, "entity", 13, "int");
  ASSERT_TRUE(View("select (@3) "));
  panel.widgets.ntp[1].Type("901:5");
  EXPECT_EQ(Confirmed(), "select FormTypeID=901&FormID=5 ");
  const ParameterReading reading = FindKind(13)->read(panel.widgets.ntp[1]);
  EXPECT_EQ(getParameterValue(reading.query_value, "FormTypeID"), "901");
  EXPECT_EQ(getParameterValue(reading.query_value, "FormID"), "5");
}

}  // namespace
}  // namespace vorek
