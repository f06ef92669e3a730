#include "grid/expression_columns.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

class SilentNotices : public Notices {
 public:
  void ShowMessage(const std::string&, const std::string&) override {}
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

// A control's grid with the columns کد (1), A (2) and B (3) and rows of their own.
class ExpressionColumnsTest : public testing::Test {
 protected:
  ExpressionColumnsTest() {
    SetExpressions({});
    process.data.Rebind("Provider=VorekMemory;");
    state.ReportID = 7;
  }

  // Name, GeneralExpression, FirstRowExpression, JustShowPositiveValue.
  void SetExpressions(const std::vector<MemoryRow>& rows) {
    database->Answer("tblVorekReportExpression Where ReportID = 7 Order by ColumnNumber",
                     MakeResult({{"Name", kVarWChar},
                                 {"GeneralExpression", kVarWChar},
                                 {"FirstRowExpression", kVarWChar},
                                 {"JustShowPositiveValue", kInteger}},
                                rows));
  }
  void SetRows(const std::vector<std::vector<std::string>>& rows) {
    grid.Clear();
    grid.SetRows(static_cast<std::int32_t>(rows.size()) + 1);
    grid.SetCols(4);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t col = 0; col < rows[row].size(); ++col) {
        grid.WriteCell(static_cast<std::int32_t>(row) + 1, static_cast<std::int32_t>(col),
                       rows[row][col]);
      }
    }
  }
  void Make() {
    ReportContext report{process, state, grid, transpose, notices, evaluation};
    MakeExpressionColumns(report);
  }
  std::string Texts(std::int32_t col) {
    std::string texts;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) texts += grid.TextMatrix(row, col) + "|";
    return texts;
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  Process process{{{database}, windows, std::make_shared<FixedClock>()}};
  ReportState state;
  Grid grid{nullptr, "flxMain"};
  Grid transpose{nullptr, "flxTranspose"};
  SilentNotices notices;
  EvaluationClass evaluation;
};

TEST_F(ExpressionColumnsTest, WithoutFormulasTheGridStays) {
  SetRows({{"", "1", "2", "3"}});
  Make();
  EXPECT_EQ(grid.Cols(), 4);
  EXPECT_EQ(Texts(2), "|2|");
  EXPECT_EQ(windows->pointer, 0);
}

TEST_F(ExpressionColumnsTest, AHeaderRowAloneGetsTheHeaders) {
  SetExpressions({{"مانده", "C2", std::nullopt, std::nullopt}});
  SetRows({});
  Make();
  EXPECT_EQ(Texts(4), "مانده|");
}

TEST_F(ExpressionColumnsTest, FormulasOverCells) {
  const struct {
    const char* general;
    std::optional<std::string> first;
    std::optional<std::string> positive;
    const char* texts;
  } cases[] = {
      {"C2+C3", std::nullopt, std::nullopt, "1/234/570|-999.5|20|"},
      {"C2-P3", std::nullopt, std::nullopt, "1/234/567|-1003|9.5|"},
      {"P2", std::nullopt, std::nullopt, "0|1/234/567|-1000|"},
      {"C2+P4", std::nullopt, std::nullopt, "1/234/567|1/233/567|1/233/577|"},
      {"C2+P4", "C2*2", std::nullopt, "2/469/134|2/468/134|2/468/144|"},
      {"C2", std::nullopt, "1", "1/234/567|0|10|"},
      {"C2", std::nullopt, "0", "0|-1000|0|"},
      {"C2+(P3)", std::nullopt, std::nullopt, "1/234/567|-997|10.5|"},
      {"C1*1", std::nullopt, std::nullopt, "13/850/214|0|12|"},
      {"C2/C0", std::nullopt, std::nullopt, "0|0|0|"},
      {"(C2", std::nullopt, std::nullopt, "|||"},
      {"", std::nullopt, std::nullopt, "0|0|0|"},
      {"C2*1000000000000", std::nullopt, std::nullopt, "1.234567E+18|-1E+15|10/000/000/000/000|"},
      {"1000000000000*1000000000", std::nullopt, std::nullopt, "|||"},
      {"C2/C3", std::nullopt, std::nullopt, "411/522.333333|-2000|1|"},
      {"C6+1", std::nullopt, std::nullopt, "1|1|1|"},
  };
  for (const auto& c : cases) {
    SetExpressions({{"x", c.general, c.first, c.positive},
                    {"y", "C4", std::nullopt, std::nullopt},
                    {"z", "C4", std::nullopt, std::nullopt}});
    SetRows({{"", "1385/02/14", "1234567", "3"},
             {"", "abc", "(1/000)", "0.5"},
             {"", "12abc", "10", "10"}});
    Make();
    EXPECT_EQ(Texts(4), std::string("x|") + c.texts) << c.general;
    EXPECT_EQ(grid.CellValue(1, 5), grid.CellValue(1, 4)) << c.general;
  }
}

TEST_F(ExpressionColumnsTest, ColumnsReadOneAnother) {
  SetExpressions(
      {{"a", "C2+C5", std::nullopt, std::nullopt}, {"b", "C4*2+P5", std::nullopt, std::nullopt}});
  SetRows({{"", "", "1"}, {"", "", "2"}, {"", "", "3"}});
  Make();
  EXPECT_EQ(Texts(4), "a|1|2|3|");  // to the right, a cell of this row is still empty
  EXPECT_EQ(Texts(5), "b|2|6|12|");
  EXPECT_EQ(evaluation.Expresion(), "3*2+6");
}

TEST_F(ExpressionColumnsTest, TheSumRowIsLeftOutAndReadByTheNext) {
  SetExpressions({{"a", "C2+P2+P4", std::nullopt, std::nullopt}});
  SetRows({{"1", "", "1"}, {"مجموع", "", "50"}, {"", "", "3"}});
  Make();
  EXPECT_EQ(Texts(4), "a|1||53|");
  grid.SetCols(4);
  Make();
  EXPECT_EQ(Texts(4), "a|1||53|");
}

TEST_F(ExpressionColumnsTest, AFormulaThatFailsLeavesTheOthers) {
  evaluation.NuevaVar("K", 5);
  SetExpressions({{"a", "C2+Z", std::nullopt, std::nullopt},
                  {"b", "C2+1", std::nullopt, std::nullopt},
                  {"c", "C2+K", std::nullopt, std::nullopt},
                  {"d", "CC2", std::nullopt, std::nullopt}});
  SetRows({{"", "5", "1"}, {"", "6", "1"}, {"", "7", "2"}});
  Make();
  EXPECT_EQ(Texts(4), "a|0|0|0|");
  EXPECT_EQ(Texts(5), "b|2|2|3|");
  EXPECT_EQ(Texts(6), "c|6|6|7|");
  EXPECT_EQ(Texts(7), "d|5|6|0|");  // with 1 for C2 it's C1; with 2 it stays C2
  EXPECT_EQ(evaluation.CuentaVar(), 1);
}

}  // namespace
}  // namespace vorek
