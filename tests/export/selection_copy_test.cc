#include "export/selection_copy.h"

#include "support/random_report.h"

namespace vorek {
namespace {

TEST(SelectionCopy, CopiesWhatIsShownInTheFormAskedFor) {
  RandomReport report(1);
  report.database->Answer("rows", MakeResult({{"كد", kVarWChar}, {"مبلغ", kCurrency}},
                                             {{"12/345", "-1234.5"}, {"ب\tج", "7000000"}}));
  report.Bind();
  ReportContext context = report.Context();
  FormCells(context, report.state.QueryFields);
  Grid& grid = report.flxMain;
  grid.SetCols(4);
  grid.WriteCell(1, 3, "(1/000)");
  grid.WriteCell(2, 3, "<b>");
  grid.SelectByUser(1, 1, 2, 3);
  const std::vector<std::int32_t> columns = {1, 2, 3};
  EXPECT_EQ(CopySelection(grid, columns, CopyForm::kShown).text,
            "12/345\t(1/234.5)\t(1/000)\nب ج\t7/000/000\t<b>");
  EXPECT_EQ(CopySelection(grid, columns, CopyForm::kPlain).text,
            "12/345\t-1234.5\t-1000\nب ج\t7000000\t<b>");
  EXPECT_EQ(CopySelection(grid, {2, 1}, CopyForm::kWithHeaders).text,
            "مبلغ\tكد\n(1/234.5)\t12/345\n7/000/000\tب ج");
  grid.SetRowHeight(1, 0);
  grid.SetColWidth(2, 0);
  const CopiedCells copied = CopySelection(grid, columns, CopyForm::kShown);
  EXPECT_EQ(copied.text, "ب ج\t<b>");
  EXPECT_EQ(copied.html, "<table dir=\"rtl\"><tr><td>ب ج</td><td>&lt;b&gt;</td></tr></table>");
}

}  // namespace
}  // namespace vorek
