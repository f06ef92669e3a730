#include "grid/grid.h"

#include <gtest/gtest.h>

#include "catalog/data_session.h"
#include "platform/memory_database.h"
#include "text/cell_text.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

// A session whose report slot is open on `rows`.
class BoundGrid {
 public:
  BoundGrid(const std::vector<MemoryColumn>& columns, const std::vector<MemoryRow>& rows) {
    auto database = std::make_shared<MemoryDatabase>();
    database->Answer("rows", MakeResult(columns, rows));
    session_ = std::make_unique<DataSession>(ProviderList{database});
    session_->Rebind("Provider=VorekMemory;");
    Slot().Open("rows");
    grid.Bind(Slot());
  }
  Recordset& Slot() { return session_->Get().rssqlQuery; }

  Grid grid{nullptr, "flxMain"};

 private:
  std::unique_ptr<DataSession> session_;
};

std::string ColumnTexts(const Grid& grid, std::int32_t col) {
  std::string texts;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) texts += grid.TextMatrix(row, col) + "|";
  return texts;
}

const std::vector<MemoryColumn> kColumns = {{"نام", kVarWChar}, {"N", kInteger}, {"M", kCurrency}};
const std::vector<MemoryRow> kRows = {{"a", "3", "1234567.5"},
                                      {"a text beyond fifteen bytes", std::nullopt, "-1234"},
                                      {std::nullopt, "-1", std::nullopt}};

TEST(GridTest, BindsARecordset) {
  BoundGrid bound(kColumns, kRows);
  Grid& grid = bound.grid;
  EXPECT_EQ(grid.Rows(), 4);
  EXPECT_EQ(grid.Cols(), 4);
  EXPECT_EQ(ColumnTexts(grid, 0), "||||");
  EXPECT_EQ(ColumnTexts(grid, 1), "نام|a|a text beyond fifteen bytes||");
  EXPECT_EQ(ColumnTexts(grid, 2), "N|3||-1|");
  grid.ReformColumn(3, CellForm::kMoney);
  EXPECT_EQ(ColumnTexts(grid, 3), "M|1/234/567.5|(1/234)||");
  EXPECT_EQ(grid.CellValue(2, 3), -1234);
  bound.Slot().Close();
  EXPECT_EQ(grid.TextMatrix(2, 1), "a text beyond fifteen bytes");
  EXPECT_THROW(grid.TextMatrix(4, 0), Error);
  EXPECT_THROW(grid.TextMatrix(0, -1), Error);
}

TEST(GridTest, BindsOnlyTheFilteredRecords) {
  BoundGrid bound(kColumns, kRows);
  bound.Slot().SetFilter("N <> NULL");
  bound.grid.Bind(bound.Slot());
  EXPECT_EQ(ColumnTexts(bound.grid, 2), "N|3|-1|");
}

TEST(GridTest, WritesOverBoundCells) {
  BoundGrid bound(kColumns, kRows);
  Grid& grid = bound.grid;
  grid.SetTextMatrix(1, 1, "another text beyond fifteen bytes");
  grid.SetTextMatrix(2, 2, "7");
  grid.AddItem("مجموع");
  grid.SetTextMatrix(4, 2, "9");
  EXPECT_EQ(ColumnTexts(grid, 2), "N|3|7|-1|9|");
  grid.ReformColumn(2, CellForm::kNumber);
  EXPECT_EQ(ColumnTexts(grid, 2), "N|3|7|-1|9|");
  EXPECT_EQ(grid.TextMatrix(1, 1), "another text beyond fifteen bytes");
  grid.RemoveItem(2);
  EXPECT_EQ(ColumnTexts(grid, 2), "N|3|-1|9|");
  EXPECT_EQ(ColumnTexts(grid, 0), "|||مجموع|");
  grid.Clear();
  EXPECT_EQ(ColumnTexts(grid, 1), "||||");
}

TEST(GridTest, KeepsManyWritesOverABoundColumn) {
  std::vector<MemoryRow> rows;
  for (int i = 0; i < 5000; ++i) rows.push_back({std::to_string(i)});
  BoundGrid bound({{"N", kInteger}}, rows);
  Grid& grid = bound.grid;
  grid.AddItem("last");
  grid.SetTextMatrix(5001, 1, "sum");
  for (std::int32_t row = 1; row <= 5000; row += 2) {
    grid.SetTextMatrix(row, 1, std::to_string(row) + " is an odd row's text");
  }
  EXPECT_EQ(grid.TextMatrix(0, 1), "N");
  EXPECT_EQ(grid.TextMatrix(4999, 1), "4999 is an odd row's text");
  EXPECT_EQ(grid.TextMatrix(5000, 1), "4999");
  EXPECT_EQ(grid.TextMatrix(5001, 1), "sum");
}

TEST(GridTest, ReusesRowsWithoutTheirOldTexts) {
  Grid grid(nullptr, "g");
  grid.SetRows(3);
  grid.SetTextMatrix(2, 1, "old");
  grid.SetRow(2);
  grid.SetColSel(1);
  grid.SetCellBackColor(255);
  grid.SetRowHeight(2, 0);
  grid.SetRows(2);
  grid.SetRows(3);
  EXPECT_EQ(grid.TextMatrix(2, 1), "");
  EXPECT_EQ(grid.FormatAt(2, 1).back_color, -1);
  EXPECT_EQ(grid.RowHeight(2), 240);
}

TEST(GridTest, AFormatOfARowEndsAtTheColumnsThatItHad) {
  Grid grid(nullptr, "g");
  grid.SetRows(3);
  grid.SetCols(4);
  grid.SetRow(1);
  grid.SetCol(1);
  grid.SetColSel(3);
  grid.SetCellBackColor(255);
  grid.SetCellFontBold(true);
  grid.SetRow(2);
  grid.SetCol(3);
  grid.SetCellForeColor(7);
  // Added, dropped and added again: a column begins without a format.
  grid.SetCols(6);
  EXPECT_EQ(grid.FormatAt(1, 3).back_color, 255);
  EXPECT_EQ(grid.FormatAt(1, 4), CellFormat());
  grid.SetCols(3);
  grid.SetCols(6);
  EXPECT_EQ(grid.FormatAt(1, 2).back_color, 255);
  EXPECT_EQ(grid.FormatAt(1, 3), CellFormat());
  EXPECT_EQ(grid.FormatAt(2, 3), CellFormat());
  // A colour for the whole row leaves the new columns without what only the old ones had.
  grid.SetRowBackColor(1, 9);
  EXPECT_EQ(grid.FormatAt(1, 2), (CellFormat{.back_color = 9, .bold = true}));
  EXPECT_EQ(grid.FormatAt(1, 5), (CellFormat{.back_color = 9}));
  grid.SetRowBackColor(2, 9);
  EXPECT_EQ(grid.FormatAt(2, 5), (CellFormat{.back_color = 9}));
}

TEST(GridTest, FormsRowsThatReplacedRemovedOnes) {
  BoundGrid bound(kColumns, kRows);
  Grid& grid = bound.grid;
  grid.RemoveItem(1);
  grid.AddItem("new");
  grid.SetTextMatrix(3, 3, "7654321");
  grid.ReformColumn(3, CellForm::kMoney);
  EXPECT_EQ(ColumnTexts(grid, 3), "M|(1/234)||7/654/321|");
}

TEST(GridTest, ReadsTheNumberOfABoundCellOffItsText) {
  const char* const values[] = {"-0.5",
                                "-0.9999",
                                "0.25",
                                "-1",
                                "1.2345",
                                "-922337203685477.5808",
                                "922337203685477.5807",
                                "0.1",
                                "123456789012.3456"};
  std::vector<MemoryRow> rows;
  for (const char* value : values) rows.push_back({value, "0.30000000000000004"});
  BoundGrid bound({{"M", kCurrency}, {"D", kDouble}}, rows);
  Grid& grid = bound.grid;
  for (const CellForm form : {CellForm::kPlain, CellForm::kMoney}) {
    if (form == CellForm::kMoney) grid.ReformColumn(1, form);
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      for (const std::int32_t col : {1, 2}) {
        EXPECT_EQ(grid.CellValue(row, col), CellNumber(grid.TextMatrix(row, col)))
            << grid.TextMatrix(row, col);
      }
    }
  }
  EXPECT_EQ(grid.CellValue(1, 1), 0.5);
}

TEST(GridTest, ShowsExactNumbersDigitForDigit) {
  BoundGrid bound({{"B", kBigInt}, {"N", kNumeric}, {"D", kDouble}},
                  {{"6037991234567890", "-012345678901234567890.500", "1234567890123456"},
                   {"-9223372036854775808", ".25", "12.50"},
                   {std::nullopt, std::nullopt, std::nullopt}});
  for (const std::int32_t col : {1, 2, 3}) bound.grid.ReformColumn(col, CellForm::kNumber);
  EXPECT_EQ(ColumnTexts(bound.grid, 1), "B|6037991234567890|-9223372036854775808|0|");
  EXPECT_EQ(ColumnTexts(bound.grid, 2), "N|-12345678901234567890.5|0.25|0|");
  EXPECT_EQ(ColumnTexts(bound.grid, 3), "D|1.23456789012346E+15|12.5|0|");
}

TEST(GridTest, ReleasesAResultWhoseRowsAreGone) {
  std::vector<MemoryRow> rows(50000, {"a text beyond fifteen bytes"});
  for (const bool by_clear : {false, true}) {
    BoundGrid bound({{"نام", kVarWChar}}, rows);
    Grid& grid = bound.grid;
    const ResultSetPtr result = bound.Slot().SharedResult();
    const long holders = result.use_count();
    if (by_clear) grid.Clear();
    grid.SetRows(by_clear ? 2 : 1);
    grid.SetRows(2);
    EXPECT_EQ(result.use_count(), holders - 1);
    EXPECT_EQ(grid.TextMatrix(0, 1), by_clear ? "" : "نام");
    for (int i = 0; i < 10; ++i) grid.AddItem("x");
    EXPECT_LT(grid.Memory(), 10000U);
    EXPECT_EQ(grid.TextMatrix(11, 0), "x");
  }
}

TEST(GridTest, AddsNoRowWithoutAColumnForItsText) {
  Grid grid(nullptr, "g");
  grid.SetCols(0);
  EXPECT_THROW(grid.AddItem("x"), Error);
  EXPECT_EQ(grid.Rows(), 2);
}

TEST(GridTest, LowersFixedRowsAndKeepsTheSelectionInside) {
  Grid grid(nullptr, "g");
  grid.SetRows(5);
  grid.SetRow(4);
  grid.SetRows(1);
  EXPECT_EQ(grid.FixedRows(), 0);
  EXPECT_EQ(grid.Row(), 0);
  grid.SetRows(2);
  grid.SetFixedRows(1);
  EXPECT_EQ(grid.FixedRows(), 1);
  EXPECT_THROW(grid.SetFixedRows(2), Error);
  EXPECT_THROW(grid.SetRow(9), Error);
}

TEST(GridTest, SelectsAndFormatsCells) {
  Grid grid(nullptr, "g");
  grid.SetRows(4);
  grid.SetCols(4);
  grid.SetRow(1);
  grid.SetCol(1);
  grid.SetRowSel(2);
  grid.SetColSel(3);
  grid.SetCellBackColor(100);
  EXPECT_EQ(grid.FormatAt(2, 3).back_color, 100);
  EXPECT_EQ(grid.FormatAt(2, 0).back_color, -1);
  EXPECT_EQ(grid.FormatAt(3, 1).back_color, -1);
  grid.SetRow(2);
  grid.SetCol(2);
  EXPECT_EQ(grid.RowSel(), 2);
  grid.SetCellFontBold(true);
  grid.SetRowBackColor(2, 200);
  EXPECT_EQ(grid.FormatAt(2, 2), (CellFormat{.back_color = 200, .bold = true}));
  EXPECT_FALSE(grid.FormatAt(2, 1).bold);
  grid.SetTextMatrix(2, 2, "x");
  grid.SetTextMatrix(2, 3, "y");
  grid.SetColSel(3);
  EXPECT_EQ(grid.Clip(), "x\ty");
  grid.SetRowSel(1);
  EXPECT_EQ(grid.Clip(), "\t\rx\ty");
}

TEST(GridTest, SortsWholeRowsStably) {
  const struct {
    std::int32_t order;
    std::int32_t col;
    const char* names;  // of column 1 afterwards
  } cases[] = {
      {3, 2, "n|b|پ|a|ب|B|"}, {4, 2, "n|B|ب|a|پ|b|"}, {5, 1, "n|a|b|B|ب|پ|"},
      {7, 1, "n|B|a|b|ب|پ|"}, {8, 1, "n|پ|ب|b|a|B|"}, {1, 2, "n|b|پ|a|ب|B|"},
      {2, 1, "n|پ|ب|b|B|a|"}, {0, 1, "n|b|a|پ|B|ب|"}, {99, 1, "n|b|a|پ|B|ب|"},
  };
  for (const auto& c : cases) {
    BoundGrid bound({{"n", kVarWChar}, {"v", kVarWChar}},
                    {{"b", "(1/000)"}, {"a", "7"}, {"پ", "-3.5"}, {"B", "10"}, {"ب", "10"}});
    if (c.order == 3 || c.order == 1) bound.grid.SetTextMatrix(4, 2, "11");
    bound.grid.SetRowBackColor(1, 77);
    bound.grid.SetCol(c.col);
    bound.grid.Sort(c.order);
    std::string expected = c.names;
    EXPECT_EQ(ColumnTexts(bound.grid, 1), expected) << c.order << " by " << c.col;
    for (std::int32_t row = 1; row < bound.grid.Rows(); ++row) {
      const bool marked = bound.grid.TextMatrix(row, 1) == "b";
      EXPECT_EQ(bound.grid.FormatAt(row, 1).back_color, marked ? 77 : -1);
    }
  }
}

TEST(GridTest, NumbersRowsInEveryOrder) {
  BoundGrid bound(kColumns, kRows);
  Grid& grid = bound.grid;
  grid.SetTextMatrix(0, 0, "رديف");
  grid.NumberRows();
  EXPECT_EQ(ColumnTexts(grid, 0), "رديف|1|2|3|");
  grid.SetCol(2);
  grid.Sort(3);
  EXPECT_EQ(ColumnTexts(grid, 0), "رديف|3|2|1|");
  grid.NumberRows();
  EXPECT_EQ(ColumnTexts(grid, 0), "رديف|1|2|3|");
}

TEST(GridTest, TellsSelectionChangesOnlyWhileItRedraws) {
  Grid grid(nullptr, "g");
  grid.SetRows(3);
  int changes = 0;
  grid.on_sel_change = [&] { ++changes; };
  grid.SetRow(2);
  grid.SetRow(2);
  EXPECT_EQ(changes, 1);
  grid.SetRedraw(false);
  grid.SetRow(1);
  EXPECT_EQ(changes, 1);
}

TEST(GridTest, ReachesItsPropertiesByName) {
  Grid grid(nullptr, "g");
  grid.Set("Rows", "5");
  grid.Set("TextMatrix", "x", {"1", "1"});
  EXPECT_EQ(grid.Get("textmatrix", {"1", "1"}), "x");
  grid.Set("ColWidth", "0", {"1"});
  EXPECT_EQ(grid.Get("ColWidth", {"1"}), "0");
  EXPECT_EQ(grid.Get("Visible"), "True");
  EXPECT_THROW(grid.Get("Nothing"), Error);
  EXPECT_THROW(grid.Set("MouseRow", "1"), Error);
  EXPECT_THROW(grid.Get("TextMatrix", {"1"}), Error);
}

TEST(GridTest, DropsTextsThatWereWrittenOver) {
  Grid grid(nullptr, "g");
  grid.SetRows(10);
  const std::string filler(4000, 'x');
  for (int i = 0; i < 40000; ++i) {
    grid.SetTextMatrix(1 + i % 9, 1, std::to_string(i) + filler);
  }
  EXPECT_LT(grid.Memory(), std::size_t{64} << 20U);
  EXPECT_EQ(grid.TextMatrix(1 + 39999 % 9, 1), "39999" + filler);
}

// A presenter in small: it reads the grid only when it is told that something is another.
class GridMirror : public ControlObserver {
 public:
  explicit GridMirror(Grid& grid) : grid_(grid) { grid.SetObserver(this); }
  ~GridMirror() override { grid_.SetObserver(nullptr); }
  void PropertyChanged(Control&, std::string_view) override { shown_ = Look(); }
  void ChildAdded(Control&) override {}
  void ChildRemoved(Control&) override {}
  void FocusSet(Control&) override {}
  bool IsTrue() const { return shown_ == Look(); }

 private:
  std::string Look() const {
    std::string look;
    for (std::int32_t row = 0; row < grid_.Rows(); ++row) {
      look += std::to_string(grid_.RowHeight(row)) + ":";
      for (std::int32_t col = 0; col < grid_.Cols(); ++col) {
        look += grid_.TextMatrix(row, col) + "/" +
                std::to_string(grid_.FormatAt(row, col).back_color) + "/" +
                std::to_string(grid_.ColWidth(col)) + "|";
      }
    }
    return look + std::to_string(grid_.Row()) + "," + std::to_string(grid_.ColSel()) + "," +
           std::to_string(grid_.TopRow());
  }

  Grid& grid_;
  std::string shown_;
};

TEST(GridTest, TellsAMirrorEverythingThatItShows) {
  BoundGrid bound(kColumns, kRows);
  Grid& grid = bound.grid;
  GridMirror mirror(grid);
  const std::function<void()> steps[] = {[&] { grid.Bind(bound.Slot()); },
                                         [&] { grid.SetTextMatrix(1, 1, "x"); },
                                         [&] { grid.SetRow(2); },
                                         [&] { grid.SetColSel(3); },
                                         [&] { grid.SetCellBackColor(9); },
                                         [&] { grid.SetRowBackColor(1, 7); },
                                         [&] { grid.SetColWidth(2, 0); },
                                         [&] { grid.SetRowHeight(3, 0); },
                                         [&] { grid.AddItem("sum"); },
                                         [&] { grid.RemoveItem(2); },
                                         [&] { grid.Sort(5); },
                                         [&] { grid.ReformColumn(3, CellForm::kMoney); },
                                         [&] { grid.NumberRows(); },
                                         [&] { grid.SetTopRow(2); },
                                         [&] { grid.SetCols(6); },
                                         [&] { grid.SetRows(9); },
                                         [&] { grid.SetRowHeightMin(500); },
                                         [&] { grid.Clear(); },
                                         [&] { grid.SelectByUser(1, 1, 2, 2); },
                                         [&] { grid.ResizeByUser(1, 77); }};
  int number = 0;
  for (const auto& step : steps) {
    step();
    EXPECT_TRUE(mirror.IsTrue()) << "step " << number;
    ++number;
  }
  grid.SetRedraw(false);
  for (const auto& step : steps) step();
  grid.SetRedraw(true);
  EXPECT_TRUE(mirror.IsTrue());
}

}  // namespace
}  // namespace vorek
