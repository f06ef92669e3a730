#include "parameters/parameter_fixture.h"
#include "parameters/parameter_text.h"

namespace vorek {
namespace {

using ConfirmationTest = ParameterTest;

TEST(ParameterTextTest, MakesLiterals) {
  const ParameterReading reading{"5", "five"};
  const struct {
    const char* types;
    const char* literal;
  } cases[] = {{"int bigint decimal bit tinyint money float numeric smallint", "5"},
               {"date datetime smalldatetime", "'5'"},
               {"varchar char string text nvarchar nchar ntext", "'five'"},
               {"uniqueidentifier xml integer", "''"}};
  for (const auto& c : cases) {
    std::istringstream words(c.types);
    for (std::string type; words >> type;) EXPECT_EQ(Literal(type, reading), c.literal) << type;
  }
  EXPECT_EQ(Literal("", reading), "''");
}

TEST(ParameterTextTest, PutsLiteralsByTheShapeOfTheMarker) {
  const struct {
    const char* query;
    const char* marker;
    const char* literal;
    std::string_view suffix;
    const char* put;
  } cases[] = {
      {"Code = @12 and", "@12", "5", kRestricts, "Code =  (5) AND ''='' and"},
      {"Code = @12 and", "@12", "0", kAlwaysTrue, "Code =  (0) OR ''='' and"},
      {"Code in  @12 and", "@12", "(1,2)", kRestricts, "Code in  (1,2) AND ''='' and"},
      {"Code IN  @12)", "@12", "(1,2)", kRestricts, "Code in  (1,2) AND ''='')"},
      {"Name like @12", "@12", "'a'", kRestricts, "Name like ('%a%') AND ''=''"},
      {"Name like @12", "@12", "'a''b'", kRestricts, "Name like ('%ab%') AND ''=''"},
      {"dbo.f(@12, @13)", "@12", "5", kRestricts, "dbo.f(5, @13)"},
      {"dbo.f(5, @13)", "@13", "6", kRestricts, "dbo.f(5, 6)"},
      {"x = f(@12)", "@12", "(1,2)", kRestricts, "x = f(1,2)"},
      {"a + @12 * 2", "@12", "5", kRestricts, "a + 5 * 2"},
      {"a = @@12 and", "@12", "5", kRestricts, "a =  (5) AND ''='' and"},
      {"a = @12", "@12", "1", "", "a =  (1)"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PutLiteral(c.query, c.marker, c.literal, c.suffix), c.put) << c.query;
  }
  EXPECT_EQ(DropSuffixOfCall("Exec spX 5,  (6) AND ''=''", kRestricts), "Exec spX 5,  (6)");
  EXPECT_EQ(DropSuffixOfCall("select (6) AND ''=''", kRestricts), "select (6) AND ''=''");
}

TEST(ParameterTextTest, RefusesATextThatGrowsByItself) {
  std::string value = "'";
  for (int i = 0; i < 30000; ++i) value += "@12 ";
  EXPECT_THROW(PutLiteral("x like @12 ", "@12", value + "'", kRestricts), Error);
}

struct KindCase {
  int kind;
  const char* type;
  const char* empty;  // the condition before anything is entered
  void (*enter)(Control&);
  const char* put;
  const char* shown;
};

void TypeText(Control& c, const char* text) { c.Type(text); }

const KindCase kKindCases[] = {
    {1, "datetime", "('') OR ''=''", [](Control& c) { TypeText(c, "1404/09/03"); },
     "('20251124') AND ''=''", "1404/09/03"},
    {1, "nvarchar", "('') OR ''=''", [](Control& c) { TypeText(c, "1404/09/03"); },
     "('1404/09/03') AND ''=''", "1404/09/03"},
    {2, "int", "(0) OR ''=''", [](Control& c) { c.Set("ID", "6"); }, "(6) AND ''=''", "O'Neil 50%"},
    {4, "int", "(0) OR ''=''", [](Control& c) { c.Set("ID", "7"); }, "(7) AND ''=''", "ab_c"},
    {9, "int", "(0) OR ''=''", [](Control& c) { TypeText(c, "108"); }, "(8) AND ''=''", "abxc"},
    {3, "int", "(0) OR ''=''", [](Control& c) { TypeText(c, "8:30"); }, "(510) AND ''=''", "08:30"},
    {3, "varchar", "('') OR ''=''", [](Control& c) { TypeText(c, "0830"); }, "('08:30') AND ''=''",
     "08:30"},
    {10, "int", "(0) OR ''=''", [](Control& c) { TypeText(c, "125:30"); }, "(7530) AND ''=''",
     "125:30"},
    {11, "money", "(0) OR ''=''", [](Control& c) { TypeText(c, "۱۲۳۴۵۶۷٫۵"); },
     "(1234567.5) AND ''=''", "1/234/567.5"},
    {13, "varchar", "('FormTypeID=0:FormID=0') OR ''=''", [](Control& c) { TypeText(c, "901:5"); },
     "('FormTypeID=901:FormID=5') AND ''=''", "FormTypeID=901:FormID=5"},
    {13, "int", "(FormTypeID=0&FormID=0) OR ''=''", [](Control& c) { TypeText(c, "901:5"); },
     "(FormTypeID=901&FormID=5) AND ''=''", "FormTypeID=901:FormID=5"},
    {1001, "nvarchar", "('') AND ''=''", [](Control& c) { c.Set("Caption", "z"); },
     "('z') AND ''=''", "z"},
    {1002, "int", "(0) OR ''=''", [](Control& c) { TypeText(c, "abc"); }, "(0) AND ''=''", "abc"},
    {1002, "int", "(0) OR ''=''", [](Control& c) { TypeText(c, "\u200F۱۲ x"); }, "(12) AND ''=''",
     "\u200F۱۲ x"},
    {1002, "nvarchar", "('') OR ''=''", [](Control& c) { TypeText(c, "abc"); }, "('abc') AND ''=''",
     "abc"},
    {1002, "bigint", "(0) OR ''=''", [](Control& c) { TypeText(c, "۶۰۳۷۹۹۱۲۳۴۵۶۷۸۹۰"); },
     "(6037991234567890) AND ''=''", "۶۰۳۷۹۹۱۲۳۴۵۶۷۸۹۰"},
    {1003, "int", "(-1) OR ''=''", [](Control& c) { c.Set("ListIndex", "1"); }, "(6) AND ''=''",
     "O'Neil 50%"},
    {1006, "bit", "(1)", [](Control& c) { c.Click(); }, "(0)", "0"},
    {1007, "int", "((-1)) OR ''=''", [](Control& c) { c.Set("SelectedIDs", "6,7"); },
     "((6,7)) AND ''=''", "6,7"},
    {1007, "int", "((-1)) OR ''=''", [](Control& c) { c.Set("AllSelected", "True"); },
     "((-1)) OR ''=''", "-1"},
    {1002, "xml", "('') OR ''=''", [](Control& c) { TypeText(c, "abc"); }, "('') AND ''=''", "abc"},
};

TEST_F(ConfirmationTest, ReadsEveryKind) {
  for (const KindCase& c : kKindCases) {
    SCOPED_TRACE(std::to_string(c.kind) + " " + c.type);
    Run("delete tblVorekReportParameter");
    Add(3, "name", c.kind, c.type, 1, 1, "tblThing");
    ASSERT_TRUE(View("x = @3 z"));
    EXPECT_EQ(Confirmed(), "x =  " + std::string(c.empty) + " z");
    Control& widget = *panel.Fields().front().widget;
    c.enter(widget);
    EXPECT_EQ(Confirmed(), "x =  " + std::string(c.put) + " z");
    EXPECT_EQ(panel.ListOfVisualParameters, "@3=" + std::string(c.shown));
    // Twice gives the same; emptied, it stops restricting.
    EXPECT_EQ(Confirmed(), "x =  " + std::string(c.put) + " z");
    panel.cmdNew.Click();
    if (c.kind != 9 && c.kind != 1001) {
      EXPECT_EQ(Confirmed(), "x =  " + std::string(c.empty) + " z");
    }
  }
}

TEST_F(ConfirmationTest, KeepsListsOfEveryParameter) {
  Add(1, "a", 1002, "nvarchar");
  Add(12, "b", 1002, "int");
  Add(2, "unused", 1, "datetime");
  Add(3, "unused", 1002, "int");
  View("f(@1, @12) ");
  EXPECT_FALSE(panel.userChoice);
  panel.widgets.txt[1].Type("x");
  EXPECT_EQ(Confirmed(), "f('x', 0) ");
  EXPECT_TRUE(panel.userChoice && panel.result);
  EXPECT_EQ(panel.ListOfParameters, "@12=0&@3=&@2=''&@1='x'");
  EXPECT_EQ(panel.ListOfVisualParameters, "@12=&@3=&@2=&@1=x");
  const auto& values = process.main.ParameterValues;
  ASSERT_EQ(values.size(), 4u);
  EXPECT_EQ(values[0].parameter_id, 12);
  EXPECT_EQ(values[3].display_value, "x");
  View("f(@1, @12) ");
  EXPECT_FALSE(panel.userChoice || panel.result);
  EXPECT_EQ(panel.ListOfParameters, "");
}

TEST_F(ConfirmationTest, AsksForTheDatesOfAccountingReports) {
  Run("insert into tblVorekReport values (2834, 1)");
  Add(1, "date", 1, "datetime");
  Run("update tblVorekReportParameter set ReportID = 2834");
  std::string query = "x = @1 ";
  ASSERT_TRUE(panel.View(2834, query, 9000));
  EXPECT_EQ(Confirmed(), "");
  EXPECT_EQ(messages.texts, std::vector<std::string>{"خطا|تاريخ بايد داراي مقدار باشد"});
  EXPECT_FALSE(panel.userChoice || panel.result);
  panel.widgets.dat[1].SetFarsiDate("1404/01/01");
  EXPECT_EQ(Confirmed(), "x =  ('20250321') AND ''='' ");
}

// A field that holds a text back stops the confirmation, unless nobody can see it.
TEST_F(ConfirmationTest, WaitsForTextsThatArentTaken) {
  Add(1, "a", 1002, "nvarchar");
  Add(2, "b", 1, "datetime");
  Add(3, "c", 3, "int");
  View("f(@1, @2, @3) ");
  ParameterWidgets& widgets = panel.widgets;
  widgets.txt[1].Type("x");
  widgets.dat[1].Type("1404/13/01");
  widgets.tim[1].Type("25:00");
  EXPECT_EQ(Confirmed(), "");
  EXPECT_FALSE(panel.userChoice || panel.result);
  EXPECT_EQ(panel.Root().ActiveControl(), &widgets.dat[1]);
  widgets.dat[1].Type("1404/01/01");
  widgets.txt[1].KeyDown(13, 0);
  EXPECT_TRUE(searches.empty());
  EXPECT_EQ(panel.Root().ActiveControl(), &widgets.tim[1]);
  widgets.tim[1].SetVisible(false);
  EXPECT_EQ(Confirmed(), "f('x', '20250321', 0) ");
  widgets.tim[1].SetVisible(true);
  EXPECT_EQ(Confirmed(), "");
  panel.cmdNew.Click();
  EXPECT_EQ(Confirmed(), "f('', '', 0) ");
}

TEST_F(ConfirmationTest, TellsTheReasonBelowTheFieldAndMakesRoomForIt) {
  Run("update tblVorekReport set Cols = 2");
  for (int id = 1; id <= 4; ++id) Add(id, "first", 1, "datetime");
  View("f(@1, @2, @3, @4) ");
  ControlArray<VorekDate>& dat = panel.widgets.dat;
  int told = 0;
  panel.on_content_change = [&] { ++told; };
  const std::int32_t height = panel.Height();
  const std::int32_t below = dat[3].Top();
  dat[1].Type("x");
  ASSERT_EQ(panel.lblNote.Size(), 1u);
  const Label& note = panel.lblNote[0];
  EXPECT_EQ(note.Caption(), dat[1].Refusal());
  EXPECT_EQ(note.Top(), dat[1].Top() + dat[1].Height());
  // "the label" has 554 twips of the cell; its note of 60 signs needs two lines of the whole.
  EXPECT_EQ(note.Left() + note.Width(), dat[1].Left() + dat[1].Width() + 504);
  EXPECT_EQ(note.Height(), 2 * 285);
  EXPECT_GE(dat[3].Top(), note.Top() + note.Height());
  EXPECT_EQ(panel.widgets.lblDesc[3].Top(), dat[3].Top());
  EXPECT_EQ(panel.Height() - height, dat[3].Top() - below);
  EXPECT_EQ(told, 1);
  // Notes side by side share their room; one line further down needs its own.
  const std::int32_t moved = dat[3].Top();
  dat[2].Type("y");
  EXPECT_EQ(dat[3].Top(), moved);
  dat[3].Type("z");
  EXPECT_EQ(dat[3].Top(), moved);
  EXPECT_EQ(panel.lblNote[2].Top(), dat[3].Top() + dat[3].Height());
  panel.SetWidth(9500);
  EXPECT_EQ(panel.lblNote[0].Left() + panel.lblNote[0].Width(),
            dat[1].Left() + dat[1].Width() + 504);
  for (int i = 1; i <= 3; ++i) dat[static_cast<std::size_t>(i)].Type("1404/01/01");
  EXPECT_EQ(panel.lblNote.Size(), 0u);
  EXPECT_EQ(dat[3].Top(), below);
  EXPECT_EQ(panel.Height(), height);
}

TEST_F(ConfirmationTest, FoldsToTheValuesInForce) {
  Add(1, "a", 1, "datetime");
  Add(2, "b", 1007, "int", 1, 1, "tblThing");
  Add(3, "c", 1002, "nvarchar");
  panel.CanFold = true;
  View("f(@1, @2, @3) ");
  panel.SetReportCaption("title");
  const std::int32_t height = panel.Height();
  panel.widgets.dat[1].Type("1404/01/01");
  panel.cmdFold.Click();
  EXPECT_TRUE(panel.Folded());
  EXPECT_EQ(panel.lblValues.Caption(), "title - جستجو نشده");  // entered isn't in force yet
  panel.cmdFold.Click();
  panel.widgets.mlt[1].SetSelectedIDs("5,6");
  Confirmed();
  panel.cmdFold.Click();
  EXPECT_EQ(panel.lblValues.Caption(), "title - the label: 1404/01/01، the label: 2 مورد");
  EXPECT_LT(panel.Height(), height);
  EXPECT_FALSE(panel.frame.Visible() || panel.cmdOk.Visible());
  panel.cmdFold.Click();
  EXPECT_EQ(panel.Height(), height);
  EXPECT_EQ(panel.Root().ActiveControl(), &panel.widgets.dat[1]);
  panel.SetRoom(800);
  EXPECT_EQ(panel.Height(), 800);
  EXPECT_EQ(panel.ContentHeight(), height);
}

TEST_F(ConfirmationTest, RaisesNothingWhenTheDatabaseFails) {
  Add(1, "a", 1002);
  View("x = @1 ");
  Run("drop table tblVorekReportParameter");
  EXPECT_EQ(Confirmed(), "");
  EXPECT_FALSE(panel.userChoice);
}

TEST_F(ConfirmationTest, HearsEnterAndDelete) {
  Add(1, "a", 1002);
  Add(2, "b", 1003, "int", 1, 1, "tblThing");
  Add(3, "c", 2, "int", 1, 1, "tblThing");
  View("@1 @1 , @2 , @3 ");
  ParameterWidgets& widgets = panel.widgets;
  constexpr int kEnter = 13;
  const std::pair<Control*, bool> confirming[] = {{&widgets.txt[1], true},
                                                  {&widgets.cmb[1], true},
                                                  {&widgets.slt[1], false},
                                                  {&panel.frame, true}};
  for (const auto& [control, confirms] : confirming) {
    searches.clear();
    control->KeyDown(kEnter, 0);
    EXPECT_EQ(searches.size(), confirms ? 1u : 0u) << control->Path();
  }
  // On the form itself Enter leaves those alone that need it.
  const std::pair<Control*, bool> active[] = {
      {&widgets.txt[1], true}, {&widgets.cmb[1], false}, {&widgets.slt[1], false}};
  for (const auto& [control, confirms] : active) {
    searches.clear();
    control->SetFocus();
    panel.KeyDown(kEnter, 0);
    EXPECT_EQ(searches.size(), confirms ? 1u : 0u) << control->Path();
  }
  widgets.cmb[1].Choose(0);
  widgets.cmb[1].KeyDown(46, 0);
  EXPECT_EQ(widgets.cmb[1].ListIndex(), -1);
}

TEST_F(ConfirmationTest, ResetsAndCancels) {
  Add(1, "a", 9, "int", 1, 1, "tblThing");
  View("@1 @1 ");
  panel.widgets.app[1].SetID(5);
  panel.cmdNew.Click();
  EXPECT_EQ(clears, 1);
  EXPECT_EQ(panel.widgets.app[1].ID(), 5);
  int cancels = 0;
  panel.on_cancel = [&] { ++cancels; };
  panel.cmdCancel.Click();
  EXPECT_EQ(cancels, 0);  // it isn't offered
  panel.CancelVisible = true;
  View("@1 @1 ");
  panel.cmdCancel.Click();
  EXPECT_EQ(cancels, 1);
}

}  // namespace
}  // namespace vorek
