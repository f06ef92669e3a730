// What hostile values do to the rows that come back, on a real database.

#include "parameters/parameter_fixture.h"
#include "text/utf8.h"

namespace vorek {
namespace {

class HostileValueTest : public ParameterTest {
 protected:
  // The keys of the rows that the finished query gives, "error" if the database refuses it.
  std::string Rows() {
    const std::string query = Confirmed();
    std::string keys;
    try {
      const ResultSetPtr result = Run(query);
      for (std::size_t row = 0; result != nullptr && row < result->rows; ++row) {
        keys += result->columns[0].Display(row) + " ";
      }
    } catch (const Error&) {
      return "error";
    }
    return keys;
  }
  std::size_t Things() { return Run("select ID from tblThing")->rows; }
};

TEST_F(HostileValueTest, SearchedTextsLoseTheirQuotes) {
  Add(1, "name", 1002, "nvarchar");
  Add(12, "other", 1002, "nvarchar");
  View("select ID from tblThing where Name like @1 order by ID");
  const std::pair<const char*, const char*> cases[] = {
      {"O'Neil", ""},  // the quote goes, so that the name isn't found
      {"ONeil", ""},
      {"Neil", "6 "},
      {"'; drop table tblThing; --", ""},
      {"') or 1=1 --", ""},
      {"a&b", ""},
      {"@12", "error"},  // names the marker that it is put for
      {"<UserID>", ""},
      {"\u202Eabxc\u202C", ""},
      {"%", "5 6 7 8 "},  // a sign of like stays one
  };
  for (const auto& [typed, keys] : cases) {
    panel.widgets.txt[1].Type(typed);
    EXPECT_EQ(Rows(), keys) << typed;
    EXPECT_EQ(Things(), 4u) << typed;
  }
  panel.widgets.txt[1].Type(std::string(100000, 'x'));
  EXPECT_EQ(Rows(), "");
}

// A compared text is pasted between quotes as it is: a quote in it ends the literal.
TEST_F(HostileValueTest, ComparedTextsReachTheStatementAsTheyAre) {
  Add(1, "name", 1002, "nvarchar");
  View("select ID from tblThing where Name = @1 order by ID");
  const std::pair<const char*, const char*> cases[] = {
      {"abxc", "8 "}, {"O'Neil 50%", "error"}, {"x') or (''='", "5 6 7 8 "}, {"a&b", ""}};
  for (const auto& [typed, keys] : cases) {
    panel.widgets.txt[1].Type(typed);
    EXPECT_EQ(Rows(), keys) << typed;
  }
  panel.widgets.txt[1].Type("a&b");
  Rows();
  EXPECT_EQ(panel.ListOfParameters, "@1='a&b'");
}

TEST_F(HostileValueTest, NumbersAreNumbersWhateverIsTyped) {
  Add(1, "key", 1002, "int");
  View("select ID from tblThing where ID = @1 order by ID");
  const std::pair<const char*, const char*> cases[] = {
      {"6", "6 "},        {"۶", "6 "},       {"٦", "6 "}, {"\u200F6\u200E", "6 "},
      {"6 or 1=1", "6 "}, {"6; drop", "6 "}, {"'6'", ""}, {"@1", ""},
      {"0x06", ""},       {"<UserID>", ""},  {"--", ""},  {"6)--", "6 "}};
  for (const auto& [typed, keys] : cases) {
    panel.widgets.txt[1].Type(typed);
    EXPECT_EQ(Rows(), keys) << typed;
  }
  panel.widgets.txt[1].Type(std::string(100000, '9'));
  Rows();
  EXPECT_EQ(Things(), 4u);
}

TEST_F(HostileValueTest, WidgetsRefuseWhatIsNoneOfTheirValues) {
  Add(1, "list", 1007, "int", 1, 1, "tblThing");
  Add(2, "money", 11, "money");
  Add(3, "date", 1, "datetime");
  Add(4, "time", 3, "varchar");
  View("select ID from tblThing where (ID in  @1) and (ID >= @2) and ('1' <> @3) and ('1' <> @4)");
  panel.widgets.mlt[1].SetSelectedIDs("5,6) or (1=1,7,'8',-1,99999999999");
  EXPECT_EQ(panel.widgets.mlt[1].SelectedIDs(), "5,7");
  for (TypedControl* widget : {static_cast<TypedControl*>(&panel.widgets.acr[1]),
                               static_cast<TypedControl*>(&panel.widgets.dat[1]),
                               static_cast<TypedControl*>(&panel.widgets.tim[1])}) {
    for (const std::string& typed : {std::string("1'; drop table tblThing"), std::string("@1"),
                                     std::string("1) or (1=1"), std::string(100000, 'x')}) {
      widget->Type(typed);
      EXPECT_TRUE(widget->Refuses()) << widget->Path();
      EXPECT_LT(text::Length(widget->Refusal()), 200u) << widget->Path();
      EXPECT_EQ(Confirmed(), "") << widget->Path();
    }
    widget->DropRefusal();
  }
  EXPECT_EQ(Rows(), "5 7 ");
}

// What is typed into a list is searched for, never run.
TEST_F(HostileValueTest, ListsSearchForTheTextItself) {
  Add(1, "thing", 2, "int", 1, 1, "tblThing");
  View("x = @1 ");
  VorekSelector& selector = panel.widgets.slt[1];
  ASSERT_TRUE(selector.SupportAlternative());
  const std::pair<std::string, std::string> cases[] = {{"O'Neil", "6 "},
                                                       {"50%", "6 "},
                                                       {"b_c", "7 "},
                                                       {"[", ""},
                                                       {"'; drop table tblThing; --", ""},
                                                       {"علی کریمی", "5 "},
                                                       {"۱۰۷", "7 "},
                                                       {"\u200Fabx", "8 "},
                                                       {"ab", "7 8 "},
                                                       {std::string(100000, '%'), ""}};
  for (const auto& [typed, keys] : cases) {
    selector.Search(typed);
    std::string found;
    for (const ListRow& row : selector.Rows()) found += std::to_string(row.id) + " ";
    EXPECT_EQ(found, keys) << typed.substr(0, 40);
  }
  EXPECT_EQ(Things(), 4u);
}

}  // namespace
}  // namespace vorek
