#include "engine/form_ask_user_report.h"

#include <gtest/gtest.h>

#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

class FormAskUserReportTest : public testing::Test {
 protected:
  FormAskUserReportTest() {
    // A catalogue without rows.
    for (const char* part :
         {"sysobjects", "syscolumns", "tblVorek", "tblUser", "tblEmployee", "tblPosition"}) {
      database->Answer(part, MakeResult({{"ID", kInteger}}, {}));
    }
    MainModule& main = world.process.main;
    main.ConnectionText = "Provider=VorekMemory;";
    main.GlobalUserID = 9;
    main.GlobalPositionID = 8;
    main.GlobalEmployeeID = 7;
    world.process.data.Rebind(main.ConnectionText);
  }
  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  WorldState world{{.providers = {database},
                    .windows = windows,
                    .clock = std::make_shared<FixedClock>(),
                    .files = {},
                    .function_file = {}}};
};

TEST_F(FormAskUserReportTest, ShowsTheReportAsTheUserOfTheWorld) {
  FormAskUserReport form(world);
  std::int32_t id = -1;
  windows->Queue([&](Form&) {
    const ReportState& state = form.VorekReport11.state;
    EXPECT_EQ(state.UserID * 100 + state.PositionID * 10 + state.EmployeeID, 987);
    EXPECT_TRUE(state.CancelVisible);
    EXPECT_EQ(form.VorekReport11.Path(), "FormAskUserReport.VorekReport11");
    EXPECT_EQ(form.VorekReport11.Width(), form.Width() - 100);
    form.SetHeight(6000);
    EXPECT_EQ(form.VorekReport11.Height(), 5600);
    bool cancel = false;
    form.VorekReport11.events.DblClick(cancel);
    EXPECT_FALSE(form.Shown());
  });
  EXPECT_FALSE(form.ShowSearch(id));
  EXPECT_EQ(windows->shown.back(), "FormAskUserReport|جستجو|");
}

TEST_F(FormAskUserReportTest, IsHiddenByThePanelsCancel) {
  FormAskUserReport form(world);
  std::int32_t id = -1;
  windows->Queue([&](Form&) {
    form.VorekReport11.VorekParameters1.on_cancel();
    EXPECT_FALSE(form.Shown());
  });
  form.ShowSearch(id);
}

}  // namespace
}  // namespace vorek
