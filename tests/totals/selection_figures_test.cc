#include "totals/selection_figures.h"

#include <map>
#include <set>

#include "support/random_report.h"
#include "text/cell_text.h"

namespace vorek {
namespace {

struct FigureCase {
  const char* text;
  FixedPoint value;  // ten-thousandths
  bool read;
};

TEST(SelectionFigures, ReadsExactlyWhatACellShows) {
  const FigureCase kCases[] = {
      {"0", 0, true},
      {"12", 120000, true},
      {"1/234/567", 12345670000, true},
      {"(1/234.5)", -12345000, true},
      {"-3", -30000, true},
      {"0.1234", 1234, true},
      {"0.12340", 1234, true},
      {"922/337/203/685/477.5807", 9223372036854775807, true},
      {"922/337/203/685/477.5808", 0, false},
      {"0.12345", 0, false},
      {"1404/01/05", 0, false},
      {"1/23", 0, false},
      {"1234/567", 0, false},
      {"12/3456", 0, false},
      {"/123", 0, false},
      {"123/", 0, false},
      {"1E+15", 0, false},
      {"01:30", 0, false},
      {"12abc", 0, false},
      {"", 0, false},
      {"()", 0, false},
      {"-", 0, false},
      {".5", 0, false},
  };
  for (const FigureCase& expected : kCases) {
    FixedPoint value = 0;
    EXPECT_EQ(ReadFigure(expected.text, value), expected.read) << expected.text;
    if (expected.read) {
      EXPECT_EQ(value, expected.value) << expected.text;
    }
  }
}

// Plain arithmetic over the cells that count, in long doubles of whole ten-thousandths.
struct Plain {
  std::int64_t rows = 0;
  std::vector<std::int64_t> values;
};

bool Counts(const RandomReport& report, std::int32_t col) {
  const auto field = static_cast<std::size_t>(col) - 1;
  if (field >= report.state.QueryFields.size()) return true;
  const int type = report.state.QueryFields[field].type;
  return type != kVarWChar;
}

Plain ReadPlainly(const RandomReport& report) {
  const Grid& grid = report.flxMain;
  Plain plain;
  for (std::int32_t row = std::min(grid.Row(), grid.RowSel());
       row <= std::max(grid.Row(), grid.RowSel()); ++row) {
    const std::string label = grid.TextMatrix(row, 0);
    if (grid.RowHeight(row) == 0 || label == "مجموع" || label == "ميانگين") continue;
    ++plain.rows;
    for (std::int32_t col = std::min(grid.Col(), grid.ColSel());
         col <= std::max(grid.Col(), grid.ColSel()); ++col) {
      FixedPoint value = 0;
      if (Counts(report, col) && ReadFigure(grid.TextMatrix(row, col), value)) {
        plain.values.push_back(value);
      }
    }
  }
  return plain;
}

bool HasTimes(const RandomReport& report) {
  const Grid& grid = report.flxMain;
  for (std::int32_t col = grid.FixedCols(); col < grid.Cols(); ++col) {
    if (grid.TextMatrix(0, col) == "زمان") return true;
  }
  return false;
}

TEST(SelectionFigures, AreThoseOfTheCellsOnView) {
  int compared = 0;
  for (unsigned seed = 1; seed <= 900 && !testing::Test::HasFailure(); ++seed) {
    RandomReport report(seed);
    report.Fill(seed % 2 == 0);
    report.Disturb();
    Grid& grid = report.flxMain;
    if (HasTimes(report) || grid.Rows() < 2) continue;
    const auto row = [&] {
      return static_cast<std::int32_t>(1 + report.Below(static_cast<std::size_t>(grid.Rows() - 1)));
    };
    const auto col = [&] {
      return static_cast<std::int32_t>(1 + report.Below(static_cast<std::size_t>(grid.Cols() - 1)));
    };
    grid.SelectByUser(row(), col(), row(), col());
    const Plain plain = ReadPlainly(report);
    const SelectionFigures figures = FiguresOfSelection(report.Context());
    EXPECT_EQ(figures.rows, plain.rows) << seed;
    EXPECT_EQ(figures.numbers, static_cast<std::int64_t>(plain.values.size())) << seed;
    if (figures.sum.empty()) continue;
    ++compared;
    FixedTotal total;
    for (const std::int64_t value : plain.values) total.Add(value);
    const std::string sum = (total.IsNegative() ? total.Negated() : total).Text();
    EXPECT_EQ(figures.sum, total.IsNegative() ? "(" + MoneyOfTotal(sum) + ")" : MoneyOfTotal(sum))
        << seed;
    const auto [least, greatest] = std::minmax_element(plain.values.begin(), plain.values.end());
    FixedPoint told = 0;
    EXPECT_TRUE(ReadFigure(figures.least, told));
    EXPECT_EQ(told, *least) << seed;
    EXPECT_TRUE(ReadFigure(figures.greatest, told));
    EXPECT_EQ(told, *greatest) << seed;
    ASSERT_TRUE(ReadFigure(figures.average, told)) << figures.average;
    const double average = total.Value() / static_cast<double>(plain.values.size());
    EXPECT_NEAR(static_cast<double>(told) / 10000, average, 0.00501) << seed;
  }
  EXPECT_GT(compared, 200);
}

// A grid of one column of texts, all of it selected.
SelectionFigures FiguresOf(const std::vector<std::string>& texts,
                           const FieldInfo* field = nullptr) {
  RandomReport report(1);
  Grid& grid = report.flxMain;
  grid.SetCols(2);
  grid.SetRows(static_cast<std::int32_t>(texts.size()) + 1);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    grid.WriteCell(static_cast<std::int32_t>(i) + 1, 1, texts[i]);
  }
  if (field != nullptr) report.state.QueryFields = {*field};
  grid.SelectByUser(1, 1, grid.Rows() - 1, 1);
  return FiguresOfSelection(report.Context());
}

struct AverageCase {
  std::vector<std::string> texts;
  const char* sum;
  const char* average;
};

TEST(SelectionFigures, RoundsAnAverageToTwoDecimals) {
  const AverageCase kCases[] = {
      {{"1", "2"}, "3", "1.5"},
      {{"1", "1", "2"}, "4", "1.33"},
      {{"2", "2", "1"}, "5", "1.67"},
      {{"(2)", "(2)", "(1)"}, "(5)", "(1.67)"},
      {{"0.005"}, "0.005", "0.01"},
      {{"9.995"}, "9.995", "10"},
      {{"99.9951", ""}, "99.9951", "100"},
      {{"0", "0"}, "0", "0"},
      {{"5", "(5)"}, "0", "0"},
      {{"(0.4)"}, "(0.4)", "(0.4)"},
      {{"900/000/000/000/000", "900/000/000/000/000"},
       "1/800/000/000/000/000",
       "900/000/000/000/000"},
      {{"0.0004", "0"}, "0.0004", "0"},
  };
  for (const AverageCase& expected : kCases) {
    const SelectionFigures figures = FiguresOf(expected.texts);
    EXPECT_EQ(figures.sum, expected.sum);
    EXPECT_EQ(figures.average, expected.average) << expected.sum;
  }
}

TEST(SelectionFigures, GivesNoFigureThatIsntExact) {
  const FieldInfo time{"زمان", kInteger, ResultColumn::Storage::kScaled, 0};
  const SelectionFigures times = FiguresOf({"01:30", "00:45", "100:00"}, &time);
  EXPECT_EQ(times.sum, "102:15");
  EXPECT_EQ(times.least, "00:45");
  EXPECT_EQ(times.greatest, "100:00");
  EXPECT_EQ(FiguresOf({"01:30", "5"}, &time).sum, "") << "a time and a number";
  const FieldInfo code{"كد", kVarWChar, ResultColumn::Storage::kText, 0};
  EXPECT_EQ(FiguresOf({"10001", "10002"}, &code).numbers, 0) << "codes are texts";
  EXPECT_EQ(FiguresOf({"1404/01/05", "1404/01/06"}).numbers, 0) << "dates";
}

TEST(SelectionFigures, OfFieldsWithManyDecimalsAreNone) {
  RandomReport report(1);
  report.database->Answer("rows", MakeResult({{"نرخ", kDouble}}, {{"1.25"}, {"0.123456789"}}));
  report.Bind();
  report.flxMain.SelectByUser(1, 1, 2, 1);
  EXPECT_EQ(FiguresOfSelection(report.Context()).sum, "");
  report.flxMain.SelectByUser(1, 1, 1, 1);
  EXPECT_EQ(FiguresOfSelection(report.Context()).sum, "1.25");
}

TEST(SelectionFigures, OfATextInARowBelowTheFieldsOwnAreNone) {
  RandomReport report(1);
  report.database->Answer("rows", MakeResult({{"مبلغ", kCurrency}}, {{"5"}, {"7"}}));
  report.Bind();
  Grid& grid = report.flxMain;
  for (const char* const text : {"1404/01/05", "12abc", "1/000"}) {
    grid.AddItem("");
    grid.WriteCell(grid.Rows() - 1, 1, text);
  }
  grid.SelectByUser(1, 1, grid.Rows() - 1, 1);
  const SelectionFigures figures = FiguresOfSelection(report.Context());
  EXPECT_EQ(figures.numbers, 3);
  EXPECT_EQ(figures.sum, "1/012");
}

}  // namespace
}  // namespace vorek
