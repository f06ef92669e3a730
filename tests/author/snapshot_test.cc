#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "author/grid_difference.h"
#include "author/grid_text.h"
#include "author/report_stages.h"
#include "text/replacement.h"

namespace vorek {
namespace {

// Rows of one cell a letter, behind their number.
GridText Rows(const std::string& letters) {
  GridText text{.report = 7, .title = "t", .headers = {"", "A"}, .widths = {"5", "6"}};
  for (const char letter : letters) {
    text.rows.push_back({std::to_string(text.rows.size() + 1), std::string(1, letter)});
  }
  return text;
}

std::string Changes(const GridText& before, const GridText& after) {
  std::string all;
  for (const GridChange& change : CompareGrids(before, after)) {
    const std::string row = std::to_string(change.row);
    switch (change.kind) {
      case GridChange::Kind::kReport:
        all += change.what + ":" + change.before + ">" + change.after + " ";
        break;
      case GridChange::Kind::kColumn:
        all += change.what + std::to_string(change.column) + ":" + change.before + ">" +
               change.after + " ";
        break;
      case GridChange::Kind::kCell:
        all += row + "," + std::to_string(change.column) + ":" + change.before + ">" +
               change.after + " ";
        break;
      case GridChange::Kind::kRowAdded:
        all += "+" + row + " ";
        break;
      case GridChange::Kind::kRowRemoved:
        all += "-" + row + " ";
        break;
    }
  }
  return all;
}

TEST(GridDifference, MatchesRowsByWhatTheyHold) {
  const struct {
    const char* before;
    const char* after;
    const char* changes;
  } cases[] = {
      {"abc", "abc", ""},         {"", "", ""},
      {"abc", "axc", "2,1:b>x "}, {"abc", "abcd", "+4 "},
      {"abc", "xabc", "+1 "},     {"abc", "bc", "-1 "},
      {"abc", "ac", "-2 "},       {"abcdef", "abxcdf", "+3 -5 "},
      {"abcd", "bcda", "-1 +4 "}, {"abcde", "xbcdy", "1,1:a>x 5,1:e>y "},
      {"ab", "", "-1 -2 "},       {"aa", "aaa", "+3 "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Changes(Rows(c.before), Rows(c.after)), c.changes) << c.before << ">" << c.after;
  }
}

// Two thousand rows of either side that share hardly any: by their places, without a table of
// pairs.
TEST(GridDifference, MatchesManyRowsByTheirPlaces) {
  GridText before = Rows("");
  GridText after = Rows("");
  for (int row = 0; row < 2100; ++row) {
    before.rows.push_back({"1", "a" + std::to_string(row)});
    after.rows.push_back({"1", "b" + std::to_string(row)});
  }
  EXPECT_EQ(CompareGrids(before, after).size(), 2100U);
}

TEST(GridDifference, ComparesTheReportAndItsColumns) {
  const GridText before = Rows("a");
  GridText after = before;
  after.rows[0][0] = "22";  // a mere number
  EXPECT_EQ(Changes(before, after), "");
  after.rows[0][0] = "+";
  after.title = "u";
  after.cut = "more";
  after.widths[1] = "0";
  after.headers.emplace_back("B");
  EXPECT_EQ(Changes(before, after), "title:t>u cut:>more header2:>B width1:6>0 1,0:1>+ ");
  after.failure = "no table";
  EXPECT_EQ(Changes(before, after), "title:t>u failure:>no table ");
}

// A row that comes into a tree moves the numbers of those behind it, not their levels and marks.
TEST(GridDifference, LooksThroughTheNumbersOfATree) {
  const struct {
    const char* before;
    const char* after;
    bool same;
  } cases[] = {
      {"1-2", "2-2  ", true},  {"3-", "12-", true},   {"1-2-", "2-3-", true},
      {"1-2+", "1-2-", false}, {"3-", "1-2", false},  {"1-2", "1-2-3", false},
      {"1+", "1", false},      {"1", "total", false}, {"", "1", false},
  };
  for (const auto& c : cases) {
    GridText before = Rows("a");
    GridText after = before;
    before.rows[0][0] = c.before;
    after.rows[0][0] = c.after;
    EXPECT_EQ(Changes(before, after).empty(), c.same) << c.before << " > " << c.after;
  }
}

TEST(GridText, ComesBackAsItWas) {
  GridText text = Rows("ab");
  text.parameters = "@1='x\ty'";
  text.messages = {"one\ntwo"};
  text.cut = "rows stay closed";
  text.alignments = {"4", "7"};
  text.rows[0][1] = "back\\slash\r";
  text.rows[1][1] = "";
  EXPECT_EQ(ParseGridText(FormatGridText(text)), text);
  const GridText failed{.report = 7, .title = "t", .failure = "why"};
  EXPECT_EQ(FormatGridText(failed), "report\t7\ntitle\tt\nfailed\twhy\n");
  EXPECT_EQ(ParseGridText(FormatGridText(failed)), failed);
}

TEST(TracedText, KnowsWhereAByteCameFrom) {
  text::TracedText traced("a @1 b @1, c");
  traced.ReplaceAll({{"@1,", "5,"}, {"@1", " (12345) "}});
  EXPECT_EQ(traced.Text(), "a  (12345)  b 5, c");
  const struct {
    std::size_t at;
    std::size_t origin;
  } cases[] = {{0, 0}, {2, 2}, {8, 2}, {12, 5}, {14, 7}, {15, 7}, {17, 11}, {18, 12}, {99, 12}};
  for (const auto& c : cases) EXPECT_EQ(traced.Origin(c.at), c.origin) << c.at;
}

TEST(ReportStages, CoverSecretsInTexts) {
  const struct {
    const char* text;
    const char* covered;
  } cases[] = {
      {"select 1 from t where Password = @1", "select 1 from t where Password = @1"},
      {"openrowset('SQLOLEDB', 'UID=u;PWD=a b;x')", "openrowset('SQLOLEDB', 'UID=u;PWD=***;x')"},
      {"x 'password = p''q' y", "x 'password = ***' y"},
      {"'Access Token=t'", "'Access Token=***'"},
      {"'secret'", "'secret'"},
  };
  for (const auto& c : cases) EXPECT_EQ(WithCoveredSecrets(c.text), c.covered) << c.text;
}

}  // namespace
}  // namespace vorek
