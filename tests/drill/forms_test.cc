#include <map>

#include "drill/form_component.h"
#include "drill/form_launch.h"
#include "drill/record_condition.h"
#include "drill/record_selection.h"
#include "drill_fixture.h"

namespace vorek {
namespace {

class FormsTest : public DrillFixture {
 protected:
  // Components that tell what they are given.
  class Teller : public Component {
   public:
    explicit Teller(std::string& log) : log_(log) {}
    void Set(const std::string& property, const ComponentValue& value) override {
      log_ += property + "=" + Text(value) + ";";
      if (property == "PositionID") throw Error(ErrorNumber::kInvalidCall, "refused");
    }
    void Call(const std::string& method, const std::vector<ComponentValue>& arguments) override {
      log_ += method + "(" + (arguments.empty() ? "" : Text(arguments[0])) + ");";
    }

   private:
    static std::string Text(const ComponentValue& value) {
      const auto* const text = std::get_if<std::string>(&value);
      return text != nullptr ? *text : std::to_string(std::get<std::int32_t>(value));
    }
    std::string& log_;
  };

  void Offer(const std::string& prog_id) {
    factories->Add(prog_id, [this](std::int32_t) { return std::make_unique<Teller>(log); });
    process.services.components = factories;
  }

  std::string log;
  std::shared_ptr<ComponentFactories> factories = std::make_shared<ComponentFactories>();
};

TEST_F(FormsTest, MakesTheConditionOfARecord) {
  const struct {
    std::int32_t form_type;
    const char* query;
    std::vector<std::string> row;
    const char* caller;
    const char* condition;
    bool complete;
  } cases[] = {
      {1, "Select tblA.ID as k, tblA.b from tblA", {"12", "x"}, "", "ID=12", true},
      {1, "Select b, tblA.ID as k from tblA", {"x", "4/567"}, "", "ID=4567", true},
      {1, "Select q.FormID from q", {"9"}, "", "ID=9", true},
      {1, "Select q.x as 'FormID' from q", {"9"}, "", "ID=9", true},
      {1, "Select b from tblA", {"x"}, "", "", false},
      {1, "Select tblA.ID from tblA", {" "}, "ID=5&x=1", "ID=5", true},
      {1, "Select tblA.ID from tblA", {""}, "", "ID=-1", true},
      // A Persian date as a number, a text with a quote, and the Persian column of a date.
      {2,
       "Select tblD.DocDateFarsi, tblD.Code from tblD",
       {"1385/02/14", " O'Neil "},
       "",
       "DocDateFarsi=13850214 and Code='O''Neil'",
       true},
      {2,
       "Select tblD.DocDateFarsi, tblD.Code from tblD",
       {"1385/02/14", ""},
       "Code=c",
       "DocDateFarsi=13850214 and Code='c'",
       true},
      {2, "Select tblD.DocDateFarsi from tblD", {"1385/02/14"}, "", "DocDateFarsi=13850214", false},
      {3, "Select tblA.ID from tblA", {"1"}, "", "", false},  // no such form
  };
  for (const auto& c : cases) {
    Show(c.query, {std::vector<std::string>(c.row.size(), "h"), c.row});
    state.CallerStringValue = c.caller;
    const RecordCondition condition = MakeRecordCondition(report, c.form_type, 1);
    EXPECT_EQ(condition.text, c.condition) << c.query;
    EXPECT_EQ(condition.complete, c.complete) << c.query;
    EXPECT_EQ(MakeRecordCondition(report, c.form_type, 0).text, "") << c.query;
    EXPECT_EQ(MakeRecordCondition(report, c.form_type, 2).text, "") << c.query;
  }
}

TEST_F(FormsTest, KeepsTheCurrentRecord) {
  state.ReportFormTypeID = 1;
  Show("Select tblA.b, f(x, y) as z, tblA.ID as k from tblA",
       {{"b", "z", "k"}, {"p", "1", "11"}, {"q", "2", "12"}});
  SelectMainRecord(report, *this);
  EXPECT_EQ(Told(), "record;");
  EXPECT_EQ(state.FormID, 11);
  flxMain.SetRow(2);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormID, 12);
  EXPECT_EQ(state.UniqueWC, "ID=12");
  // Column 0 has no record.
  flxMain.SetRow(1);
  flxMain.SetCol(0);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormID, 12);
  // Another report begins anew.
  state.ReportID = 8;
  state.Forms = {};
  flxMain.SetCol(1);
  Told();
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormID, 12);
  EXPECT_EQ(state.FormTypeID, 1);
  EXPECT_EQ(Told(), "");
}

TEST_F(FormsTest, TakesTheFormOfEachRow) {
  Show("Select q.FormTypeID, q.FormID as k from q",
       {{"FormTypeID", "k"}, {"1", "21"}, {"2", "22"}, {"x", "99999999999"}});
  SelectMainRecord(report, *this);
  EXPECT_EQ(Told(), "record;");
  flxMain.SetRow(2);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID, 2);
  EXPECT_EQ(state.FormID, 22);
  EXPECT_EQ(Told(), "");  // its keys aren't in the query
  flxMain.SetRow(3);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID, 0);
  EXPECT_EQ(state.FormID, 22);  // no number of 32 bits
}

TEST_F(FormsTest, TakesAProceduresFormFromTheHeaders) {
  Run("update tblVorekReport set SQLSP = 'spX' where ID = 7");
  Show("", {{"code", "ID", "FormTypeID", "FormID"},
            {"8", "5", "3", "6"},
            {"9", "", "0", ""},
            {"7", "1", "1", "6"}});
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID * 10 + state.FormID, 35);
  EXPECT_EQ(Told(), "record;");
  flxMain.SetRow(2);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID * 10 + state.FormID, 0);
  EXPECT_EQ(Told(), "");
  flxMain.SetRow(3);
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID * 10 + state.FormID, 11);
  EXPECT_EQ(Told(), "record;");
  Show("", {{"code", "formid", "formtypeid"}, {"8", "6", "3"}});
  SelectMainRecord(report, *this);
  EXPECT_EQ(state.FormTypeID * 10 + state.FormID, 36);
}

TEST_F(FormsTest, TellsTheRecordOfACrossTable) {
  Run("insert into tblVorekFormType values (3, '', 1); insert into tblVorekTableFormRelationship "
      "values (3, 'tblA', 1)");
  Show("Select tblA.ID as k, tblA.b from tblA", {{"k", "b"}, {"1", "2"}});
  flxTranspose.SetRows(3);
  flxTranspose.SetCols(3);
  flxTranspose.WriteCell(2, 1, "77");
  flxTranspose.SetRow(2);
  state.ReportFormTypeID = 1;
  SelectTransposeRecord(report, *this);
  EXPECT_EQ(state.FormID, 77);
  EXPECT_EQ(Told(), "record;");
  // A form without a component.
  state.FormID = 0;
  state.ReportFormTypeID = 3;
  SelectTransposeRecord(report, *this);
  EXPECT_EQ(state.FormID, 0);
  EXPECT_EQ(Told(), "");
  // By columns no event is raised.
  state.ReportFormTypeID = -1;
  Show("Select q.FormID as k, q.FormTypeID as t from q", {{"k", "t"}, {"1", "2"}});
  flxTranspose.WriteCell(2, 2, "3");
  SelectTransposeRecord(report, *this);
  EXPECT_EQ(state.FormTypeID * 100 + state.FormID, 377);
  EXPECT_EQ(Told(), "");
  flxTranspose.SetRow(0);
  SelectTransposeRecord(report, *this);
  EXPECT_EQ(Told(), "record;");
}

TEST_F(FormsTest, ReadsTheNameOfAComponent) {
  const struct {
    const char* file;
    const char* prog_id;
    std::int32_t number;
  } cases[] = {{"comSale.comGoods.dll", "comSale.comGoods", -1},
               {"comSale.comGoods.dll#3", "comSale.comGoods", 3},
               {"comSale.comGoods.dll#0", "comSale.comGoods", 0},
               {"dll", "", -1},
               {"#", "", 0}};
  for (const auto& c : cases) {
    const ComponentName name = ParseComponentName(c.file);
    EXPECT_EQ(name.prog_id, c.prog_id) << c.file;
    EXPECT_EQ(name.number, c.number) << c.file;
  }
}

TEST_F(FormsTest, GivesAComponentTheUserAndTheKey) {
  process.main.GlobalPositionID = 6;
  process.main.GlobalEmployeeID = 7;
  Run("update tblVorekFormType set FileName = 'comA.comForm.dll#4' where ID = 1");
  Show("Select b, tblA.ID from tblA", {{"b", "ID"}, {"x", "31"}});
  state.ReportFormTypeID = 1;
  Offer("COMA.comform");
  LaunchForm(report, *this, 1);
  EXPECT_EQ(log,
            "UserID=5;Number=4;PositionID=6;EmployeeID=7;OleConnectionString=Provider=VorekSQLite;"
            "Data Source=:memory:;Mode=Create;View(31);");
  log.clear();
  LaunchForm(report, *this, 2);
  EXPECT_TRUE(log.ends_with(";ClearShow();")) << log;
}

TEST_F(FormsTest, TellsAComponentThatIsNotThere) {
  Show("Select tblA.ID from tblA", {{"ID"}, {"31"}});
  state.ReportFormTypeID = 1;
  const std::string message =
      "message شما مجاز به انجام اين عمل نيستيد. براي اطلاعات بيشتر به نگهدارنده سيستم مراجعه "
      "نماييد.;";
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), message);
  Offer("comB.comForm");
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), message);
  EXPECT_EQ(log, "");
}

TEST_F(FormsTest, RegistersAComponentOnce) {
  struct Late : Components {
    std::unique_ptr<Component> Create(const std::string& prog_id, std::int32_t form_type) override {
      asked += prog_id + " " + std::to_string(form_type) + ";";
      if (registered.empty()) throw Error(ErrorNumber::kNoComponent, "not yet");
      return std::make_unique<Teller>(log);
    }
    void Register(const std::string& file_name) override { registered += file_name; }
    std::string asked, registered, log;
  };
  const auto late = std::make_shared<Late>();
  process.services.components = late;
  Show("Select tblA.ID from tblA", {{"ID"}, {"31"}});
  state.ReportFormTypeID = 1;
  LaunchForm(report, *this, 1);
  EXPECT_EQ(late->asked, "comA.comForm 1;comA.comForm 1;");
  EXPECT_EQ(late->registered, "comA.comForm.dll");
  EXPECT_TRUE(late->log.ends_with("View(31);"));
}

TEST_F(FormsTest, AsksTheHostForAFormThatTheSystemBuilt) {
  Show("Select tblD.DocDateFarsi, tblD.Code from tblD", {{"d", "c"}, {"1385/02/14", "k"}});
  state.ReportFormTypeID = 2;
  state.CallerStringValue = "a=b";
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), "");  // without parameter 123
  process.main.SystemParameter123 = true;
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), "view 2|DocDateFarsi=13850214 and Code='k'|a=b;");
  LaunchForm(report, *this, 2);
  EXPECT_EQ(Told(), "clear 2|a=b;");
  state.QueryRecordCount = 0;
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), "clear 2|a=b;");
  // A key that isn't in the query.
  state.QueryRecordCount = 2;
  Show("Select q.FormTypeID, q.FormID from q", {{"t", "f"}, {"2", "41"}});
  state.ReportFormTypeID = -1;
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), "view 2| ID=41|a=b;");
  state.ReportFormTypeID = 2;
  LaunchForm(report, *this, 1);
  EXPECT_EQ(Told(), "clear 2|a=b;");
}

TEST_F(FormsTest, LaunchesAProceduresFormByTheHeaders) {
  state.IsStoredProcedure = true;
  Run("insert into tblVorekFormType values (903, 'comA.comForm.dll', 0), (50, "
      "'comScreenMill.comScreenRun.dll', 0); insert into tblSaleReturn values (31, null), (32, 8)");
  Show("", {{"FormTypeID", "FORMID"}, {"903", "31"}, {"903", "32"}, {"50", "33"}});
  Offer("comA.comForm");
  state.ReportID = 2844;
  LaunchForm(report, *this, 1);
  EXPECT_TRUE(log.ends_with(";ReturnType=0;View(31);")) << log;
  EXPECT_EQ(Told(), "again;");
  state.ReportID = 7;
  LaunchForm(report, *this, 2);
  EXPECT_TRUE(log.ends_with(";ReturnType=1;View(32);")) << log;
  log.clear();
  LaunchForm(report, *this, 3);
  EXPECT_EQ(Told() + log, "");  // the runner is the host's
  process.main.SystemParameter123 = true;
  LaunchForm(report, *this, 3);
  EXPECT_EQ(Told() + log, "view 50| ID=33|;");
}

}  // namespace
}  // namespace vorek
