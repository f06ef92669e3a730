#include "parameters/parameter_fixture.h"

namespace vorek {
namespace {

using LayoutTest = ParameterTest;

std::string Place(const Control& control) {
  return std::to_string(control.Left()) + " " + std::to_string(control.Top()) + " " +
         std::to_string(control.Width()) + " " + std::to_string(control.Height());
}

struct Shape {
  const char* name;
  int kind;
  int col_span;
  int row_span;
  const char* place;  // left, top, width and height
};

struct LayoutCase {
  const char* what;
  const char* columns;
  std::vector<Shape> shapes;
  int frame_height;
};

// Names of five characters give labels of 554 twips and cells of 4000; the frame is 8900 wide, a
// row 365 high. A widget of one cell is 3346 wide and stands at 4900 in column 0, at 900 in
// column 1, at -3100 in column 2.
const LayoutCase kLayouts[] = {
    {"fills lines of two cells",
     "2",
     {{"first", 1002, 1, 1, "4900 100 3346 315"},
      {"other", 1002, 1, 1, "900 100 3346 315"},
      {"third", 1002, 1, 1, "4900 465 3346 315"}},
     830},
    {"wraps what is wider than the form",
     "1",
     {{"broad", 1002, 2, 1, "900 465 7346 315"}, {"after", 1002, 1, 1, "4900 830 3346 315"}},
     830 + 365},
    {"begins a pair on a new line",
     "3",
     {{"first", 1002, 2, 1, "900 100 7346 315"}, {"از xx", 1002, 1, 1, "4900 465 3346 315"}},
     830},
    {"leaves another name on the line",
     "3",
     {{"first", 1002, 2, 1, "900 100 7346 315"}, {"to xx", 1002, 1, 1, "-3100 100 3346 315"}},
     465},
    {"leaves a pair that has room for its partner",
     "3",
     {{"first", 1002, 1, 1, "4900 100 3346 315"},
      {"از xx", 1002, 1, 1, "900 100 3346 315"},
      {"to xx", 1002, 1, 1, "-3100 100 3346 315"}},
     465},
    {"gives each widget a line without columns",
     "null",
     {{"first", 1002, 1, 1, "4900 465 3346 315"}, {"other", 1002, 1, 1, "4900 830 3346 315"}},
     830 + 365},
    {"goes on below the tallest of a line",
     "2",
     {{"lists", 1007, 1, 4, "4900 100 3346 1410"},
      {"other", 1002, 1, 1, "900 100 3346 315"},
      {"third", 1002, 1, 2, "4900 1560 3346 680"}},
     5 * 365 + 100 + 365},
    {"keeps a cell free behind a selector of kind 4",
     "2",
     {{"first", 4, 1, 1, "4900 100 3346 315"}, {"other", 1002, 1, 1, "4900 465 3346 315"}},
     830},
    {"lets times and check boxes keep their width",
     "3",
     {{"times", 3, 1, 2, "7046 100 1200 315"},
      {"boxes", 1006, 1, 1, "2296 50 1950 315"},
      {"hours", 10, 1, 1, "-954 100 1200 315"}},
     3 * 365 + 100 - 365}};

TEST_F(LayoutTest, PlacesWidgetsInCells) {
  for (const LayoutCase& c : kLayouts) {
    SCOPED_TRACE(c.what);
    Run("delete tblVorekReportParameter");
    Run(std::string("update tblVorekReport set Cols = ") + c.columns);
    std::string query = "select";
    for (std::size_t i = 0; i < c.shapes.size(); ++i) {
      const Shape& shape = c.shapes[i];
      const int id = static_cast<int>(i) + 1;
      Add(id, shape.name, shape.kind, "int", shape.col_span, shape.row_span);
      query += " @" + std::to_string(id) + " ";
    }
    ASSERT_TRUE(View(query));
    for (std::size_t i = 0; i < c.shapes.size(); ++i) {
      Control* const widget = panel.widgets.Find(std::to_string(i + 1));
      ASSERT_NE(widget, nullptr);
      EXPECT_EQ(Place(*widget), c.shapes[i].place) << c.shapes[i].name;
    }
    EXPECT_EQ(panel.frame.Height(), c.frame_height);
  }
}

TEST_F(LayoutTest, StandsLabelsBesideTheirWidgets) {
  Add(1, "first", 1002);
  Add(2, "boxed", 1006);
  Add(3, "combo", 1003);
  Run("update tblVorekReportParameter set Visible = 0 where ParameterID = 3");
  View("select @1 , @2 , @3 ");
  ParameterWidgets& widgets = panel.widgets;
  // "the label" is 864 wide; its left edge stands 50 twips behind the widget's right one.
  EXPECT_EQ(Place(widgets.lblDesc[1]), "8296 100 864 255");
  EXPECT_EQ(widgets.lblDesc[1].Left(), widgets.txt[1].Left() + widgets.txt[1].Width() + 50);
  EXPECT_FALSE(widgets.lblDesc[2].Visible());
  EXPECT_EQ(widgets.chk[1].Caption(), "the label");
  EXPECT_EQ(widgets.chk[1].Value(), 1);
  EXPECT_FALSE(widgets.lblDesc[3].Visible());
  EXPECT_FALSE(widgets.cmb[1].Visible());
  EXPECT_FALSE(widgets.cmb[1].RightToLeft());
  EXPECT_TRUE(widgets.txt[1].RightToLeft());
  EXPECT_EQ(widgets.txt[1].ToolTipText(), "first");
}

TEST_F(LayoutTest, WidensCellsForLongNames) {
  Add(1, std::string(10, 'n'), 1002);
  Add(2, std::string(20, 'n'), 1002);
  View("select @1 , @2 ");
  // 20 characters at 1.05 times their width and 50 more: 2066; a cell needs 2050 beside it.
  EXPECT_EQ(panel.widgets.txt[1].Width(), 4116 - 2066 - 100);
}

TEST_F(LayoutTest, PlacesAndNumbersTheButtons) {
  Add(1, "first", 1002);
  Add(2, "other", 1002);
  panel.CancelVisible = true;
  View("select @1 , @2 ");
  EXPECT_EQ(panel.cmdOk.Caption() + panel.cmdNew.Caption() + panel.cmdCancel.Caption(),
            "تاييدجديدانصراف");
  EXPECT_EQ(panel.frame.Top(), 500);
  EXPECT_EQ(panel.Height(), 500 + 830 + 50);
  EXPECT_EQ(panel.cmdNew.Left(), 8900 - 1000);
  EXPECT_EQ(panel.cmdOk.Left(), 8900 - 2000);
  EXPECT_EQ(panel.cmdCancel.Left(), 50);
  const int tabs[] = {panel.widgets.txt[1].TabIndex(), panel.widgets.txt[2].TabIndex(),
                      panel.cmdOk.TabIndex(), panel.cmdNew.TabIndex(), panel.cmdCancel.TabIndex()};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(tabs[i], i);
  EXPECT_EQ(panel.Root().ActiveControl(), &panel.widgets.txt[1]);
}

TEST_F(LayoutTest, KeepsTheTitleClearOfTheButtons) {
  Add(1, "first", 1002);
  panel.CancelVisible = true;
  const struct {
    int width;
    std::size_t letters;  // 96 twips each
    bool visible;
    int left;
    int title_width;
  } cases[] = {{9000, 10, true, (9000 - 1060) / 2, 1060},
               {9000, 60, true, 1100, 6100 - 50 - 1100},   // cut
               {9000, 50, true, 6100 - 50 - 4900, 4900},   // not quite in the middle
               {4100, 10, false, 1100, 1200 - 50 - 1100},  // no room to speak of
               {5000, 3, true, (5000 - 388) / 2, 388}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.width) + " " + std::to_string(c.letters));
    View("select @1 ", c.width);
    panel.SetReportCaption(std::string(c.letters, 'x'));
    const Label& title = panel.lblCaption;
    EXPECT_EQ(title.Visible(), c.visible);
    EXPECT_EQ(title.Left(),
              std::min(c.left, panel.cmdLoadParameterConfig.Left() - 50 - title.Width()));
    EXPECT_EQ(title.Width(), c.title_width);
    EXPECT_GE(title.Left(), panel.cmdCancel.Left() + panel.cmdCancel.Width());
    EXPECT_LE(title.Left() + title.Width(), panel.cmdLoadParameterConfig.Left());
  }
}

TEST_F(LayoutTest, MovesAllWithTheRightEdge) {
  Add(1, "first", 1002);
  View("select @1 ");
  panel.SetWidth(9500);
  EXPECT_EQ(Place(panel.widgets.txt[1]), "5400 100 3370 315");
  EXPECT_EQ(panel.frame.Width(), 9400);
  EXPECT_EQ(panel.cmdNew.Left(), 8400);
  panel.SetWidth(9000);
  EXPECT_EQ(Place(panel.widgets.txt[1]), "4900 100 3370 315");
}

TEST_F(LayoutTest, TellsWhetherTheFormStands) {
  Add(1, "first", 1002);
  Add(12, "other", 1002);
  EXPECT_FALSE(View("select 1"));
  EXPECT_FALSE(View("  "));
  EXPECT_TRUE(messages.texts.empty());
  EXPECT_TRUE(View("select (@12) "));
  EXPECT_EQ(panel.Fields().size(), 1u);  // 1 isn't named, 12 is
  // A number without a row, one at the very end, and a mark that is none.
  for (const char* query : {"select @1 , @2 ", "select @1", "select @1 , 'a@b'"}) {
    messages.texts.clear();
    EXPECT_FALSE(View(query)) << query;
    EXPECT_EQ(messages.texts, std::vector<std::string>{"اشکال|اشکال پارامتر تعريف نشده"}) << query;
  }
  Run("update tblVorekReportParameter set ColSpan = null");
  EXPECT_THROW(View("select @1 "), Error);
}

TEST_F(LayoutTest, SurvivesSpansBeyondAnyScreen) {
  Add(1, "first", 1002, "int", 2000000000, 2000000000);
  Add(2, "other", 1007, "int", -5, -2000000000);
  EXPECT_TRUE(View("select @1 , @2 "));
}

TEST_F(LayoutTest, LeavesOutKindsThatDontExist) {
  Add(1, "first", 77);
  EXPECT_TRUE(View("select @1 "));
  EXPECT_TRUE(panel.Fields().empty());
}

TEST_F(LayoutTest, SizesTheDialogByItsColumns) {
  Add(1, "first", 1);
  for (const auto& [columns, width] : {std::pair{"1", 4200}, {"2", 8200}, {"null", 4200}}) {
    Run(std::string("update tblVorekReport set Cols = ") + columns);
    FormAskUser form(process, messages);
    int left = 0;
    windows->Queue([&](Form&) { left = form.VorekParameters1.widgets.dat[1].Left(); });
    std::string query = "select @1 ";
    EXPECT_FALSE(form.View(7, query));
    EXPECT_EQ(form.Width(), width) << columns;
    EXPECT_EQ(form.Height(), form.VorekParameters1.Height() + 550);
    // The first column stands at the right edge of the frame, 200 short of the form.
    EXPECT_EQ(left, width - 200 - 3370 - 630) << columns;
  }
}

}  // namespace
}  // namespace vorek
