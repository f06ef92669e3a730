#include "faults/operations.h"

#include <algorithm>
#include <utility>

#include "eval/function_file.h"
#include "export/crystal_print.h"
#include "export/form_access.h"
#include "export/form_send_to_text_file.h"
#include "export/form_template.h"
#include "parameters/saved_settings.h"
#include "vorek/evaluation.h"
#include "vorek/export.h"
#include "vorek/script.h"

namespace vorek {
namespace {

using Step = std::function<void(Stage&)>;

void Nothing(Stage&) {}

std::string Everything(Stage& stage) {
  std::string all = stage.Shown() + stage.pages;
  for (const auto& [name, bytes] : stage.Files()) all += name + ":" + bytes + "\n";
  return all;
}

// A run that fails without an exception has told why; a contract that lets it be silent stands in
// the state.
void Require(Stage& stage, bool shown) {
  if (shown || !stage.windows->told.empty()) return;
  const failing_memory::Pause pause;
  throw Error(ErrorNumber::kInternal, "silent: " + stage.Control().state.StopReason);
}

Step View(std::int32_t report, const std::string& parameters = "") {
  return [=](Stage& stage) { Require(stage, stage.report->View(report, parameters)); };
}

Step Begin(std::int16_t user = 1, std::int16_t position = 1) {
  return [=](Stage& stage) { stage.Begin(user, position); };
}

Step Viewed(std::int32_t report, const std::string& parameters = "") {
  return [=](Stage& stage) {
    stage.Begin();
    stage.report->View(report, parameters);
  };
}

// What the mouse does on a grid's cell.
void Press(Grid& grid, std::int32_t row, std::int32_t col, int button) {
  grid.PointAt(row, col);
  if (button == 1 && row >= grid.FixedRows() && col >= grid.FixedCols()) {
    grid.SelectByUser(row, col, row, col);
  }
  grid.MouseDown(button, 0, 0, 0);
}

// --- Showing -------------------------------------------------------------------------------------

Operation ViewOf(const std::string& name, std::int32_t report, const std::string& parameters = "",
                 std::int16_t user = 1, std::int16_t position = 1) {
  return {name, Begin(user, position), Nothing, View(report, parameters), Everything};
}

// Nothing is known of the database yet: neither its tables nor the texts that were run.
Operation FirstView() {
  Operation operation = ViewOf("first view", 105);
  operation.reset = Begin();
  operation.goes_on = true;
  return operation;
}

Operation Refreshing() {
  return {"refresh", Viewed(105), Nothing,
          [](Stage& stage) { Require(stage, stage.report->Refresh()); }, Everything};
}

Operation Searching() {
  return {"panel search", Viewed(106),
          [](Stage& stage) {
            VorekParameters& panel = stage.Control().VorekParameters1;
            for (const VorekParameters::Field& field : panel.Fields()) {
              if (field.row.parameter_id == 2) field.widget->Type("نور");
            }
          },
          [](Stage& stage) { stage.Control().VorekParameters1.cmdOk.Click(); }, Everything};
}

Operation Asking() {
  return {"dialog",
          [](Stage& stage) {
            stage.Begin();
            stage.windows->Answers("FormAskUser", [](Form& form) {
              dynamic_cast<FormAskUser&>(form).VorekParameters1.cmdOk.Click();
            });
          },
          Nothing,
          [](Stage& stage) {
            stage.report->ViewRepotRelations(219, "@1='1404/01/01'");
            Require(stage, stage.Control().state.FoundRows >= 0);
          },
          Everything};
}

// --- Passes --------------------------------------------------------------------------------------

Operation Sorting() {
  return {"sort", Begin(), Viewed(220),
          [](Stage& stage) {
            Press(stage.Control().flxMain, 0, 3, 1);
            stage.Control().flxMain.Click();
          },
          Everything};
}

Operation CrossTable() {
  return {"cross table", Viewed(227), View(227),
          [](Stage& stage) {
            Press(stage.Control().flxTranspose, 1, 0, 1);
            stage.Control().flxTranspose.Click();
          },
          Everything};
}

Operation TreeRows() {
  return {"tree", Viewed(401), View(401),
          [](Stage& stage) {
            Press(stage.Control().flxMain, 1, 0, 1);
            stage.Control().flxMain.Click();
          },
          Everything};
}

Operation TreeSorting() {
  return {"tree sort", Begin(), Viewed(401),
          [](Stage& stage) { Press(stage.Control().flxMain, 0, 3, 1); }, Everything};
}

Operation MenuEntry(const std::string& name, std::int32_t report, std::int32_t column,
                    Menu HeaderMenu::*entry) {
  return {name, Viewed(report),
          [=](Stage& stage) {
            stage.report->View(report);
            Press(stage.Control().flxMain, 0, column, 2);
          },
          [=](Stage& stage) { (stage.Control().FlexPopupMenu.*entry).Click(); }, Everything};
}

// --- Files ---------------------------------------------------------------------------------------

void PutOldFile(Stage& stage, const std::string& name) {
  SystemFiles().Write(stage.Path(name), "the old one");
}

Operation Exporting(const std::string& file, std::int32_t report,
                    const ExportOptions& options = {}) {
  return {"export " + file, Viewed(report), [=](Stage& stage) { PutOldFile(stage, file); },
          [=](Stage& stage) {
            ExportOptions to = options;
            to.path = stage.Path(file);
            ExportReport(*stage.report, to);
          },
          Everything};
}

Operation TextByMenu() {
  Operation operation = MenuEntry("text file by menu", 220, 3, &HeaderMenu::mnuSendToTextFile);
  operation.begin = [](Stage& stage) {
    Viewed(220)(stage);
    stage.windows->Answers("FormSendToTextFile", [&stage](Form& form) {
      auto& dialog = dynamic_cast<FormSendToTextFile&>(form);
      dialog.txtSaveFileName.SetText(stage.Path("menu.txt"));
      dialog.cmdOk.Click();
    });
  };
  return operation;
}

Operation WorkbookByMenu() {
  Operation operation = MenuEntry("workbook by menu", 105, 2, &HeaderMenu::mnuSendToOfficeExcel);
  operation.begin = [](Stage& stage) {
    Viewed(105)(stage);
    stage.windows->Answers("FormTemplate",
                           [](Form& form) { dynamic_cast<FormTemplate&>(form).cmdOk.Click(); });
  };
  return operation;
}

Operation PrintByMenu() {
  Operation operation = MenuEntry("print by menu", 247, 2, &HeaderMenu::mnuSendToOfficeExcel);
  operation.begin = [](Stage& stage) {
    Viewed(247)(stage);
    stage.windows->Answers("FormTemplate", [](Form& form) {
      auto& dialog = dynamic_cast<FormTemplate&>(form);
      dialog.SSTab1.Choose(1);
      if (dialog.cmbCrystalReport.ListCount() > 0) dialog.cmbCrystalReport.SetListIndex(0);
      dialog.cmdOk.Click();
    });
  };
  const Step reset = operation.reset;
  operation.reset = [reset](Stage& stage) {
    reset(stage);
    stage.pages.clear();
    std::filesystem::remove_all(stage.Path("temporary"));
    std::filesystem::create_directory(stage.Path("temporary"));
  };
  operation.left = [](Stage& stage) { return stage.Shown() + stage.pages; };
  return operation;
}

Operation FastWorkbook() {
  Operation operation = MenuEntry("fast workbook", 105, 2, &HeaderMenu::mnuSendToOfficeExcellFast);
  operation.silent = true;
  return operation;
}

Operation AppendingToAccess() {
  Operation operation = MenuEntry("access append", 247, 2, &HeaderMenu::mnuSendToAccess);
  operation.begin = [](Stage& stage) {
    Viewed(247)(stage);
    stage.windows->Answers("FormAccess", [&stage](Form& form) {
      auto& dialog = dynamic_cast<FormAccess&>(form);
      dialog.cmdSave.Click();
      // Who is told of a failure goes no further.
      if (stage.windows->told.empty()) dialog.cmdOk.Click();
    });
  };
  const Step reset = operation.reset;
  operation.reset = [reset](Stage& stage) {
    reset(stage);
    stage.next_file = stage.Path("invoices.mdb");
    SystemFiles().Write(stage.next_file, SystemFiles().Read("samples/invoices.mdb"));
  };
  return operation;
}

Operation Staging() {
  constexpr const char* kStaged =
      "select cast(count(*) as nvarchar(20)) + N'/' + isnull(max(Column2), N'') as s "
      "from tblVorekCrystalReport where UserID = 1";
  return {"print staging", Viewed(105),
          [](Stage& stage) { stage.Query("delete tblVorekCrystalReport"); },
          [](Stage& stage) {
            ReportContext report = stage.Control().Context();
            StageRows(report);
          },
          [](Stage& stage) { return stage.Query(kStaged)->columns[0].Display(0); }};
}

// --- Settings and scripts ------------------------------------------------------------------------

Operation SavingSettings() {
  return {"settings", Begin(),
          [](Stage& stage) {
            std::filesystem::remove(stage.Path("settings.conf"));
            stage.settings->Save("Excel", "Folder", "old");
            stage.settings->Save("Other", "Key", "kept");
          },
          [](Stage& stage) {
            stage.settings->Save("Excel", "Folder", "new");
            stage.settings->Get("Other", "Key", "");
          },
          Everything};
}

Operation SavingParameters() {
  constexpr const char* kSaved = "select * from tblVorekReportParameterConfig where ReportID = 106";
  return {"saved parameters", Begin(),
          [](Stage& stage) {
            Recordset& slot = stage.State().process.dten().rssqlGeneral5;
            WriteSetting(slot, 106, "نام", "@1=1");
          },
          [](Stage& stage) {
            Recordset& slot = stage.State().process.dten().rssqlGeneral5;
            WriteSetting(slot, 106, "نام", "@1=2");
            ReadSettingNames(slot, 106);
          },
          [](Stage& stage) {
            const ResultSetPtr rows = stage.Query(kSaved);
            std::string all = std::to_string(rows->rows);
            for (const ResultColumn& column : rows->columns) {
              for (std::size_t row = 0; row < rows->rows; ++row) all += "|" + column.Display(row);
            }
            return all;
          }};
}

Operation KeepingFunctions() {
  return {"function file", Begin(),
          [](Stage& stage) {
            KeyedList<FunctionClass> functions;
            ReadFunctions("\n\"@OLD\",\"X+1\"\n", functions);
            SystemFiles().Write(stage.Path("functions.fun"), WriteFunctions(functions));
          },
          [](Stage& stage) {
            EvaluationClass evaluation({stage.Path("functions.fun"), stage.files.get(), nullptr});
            evaluation.NuevaFuncion("doble", "x*2");
            evaluation.Expresion("@doble(@old(2))");
            if (evaluation.AnalizaExpr().Number() == 6) return;
            const failing_memory::Pause pause;
            // A file that can't be read gives no functions.
            throw Error(ErrorNumber::kPathAccess, evaluation.DErr());
          },
          Everything};
}

Operation RunningScript() {
  constexpr const char* kScript =
      "create table tblFault (ID int primary key, Name nvarchar(50), Amount decimal(12, 2))\nGO\n"
      "declare @i int\nset @i = 0\nwhile @i < 8 begin set @i = @i + 1\n"
      "insert into tblFault values (@i, N'سطر ' + cast(@i as nvarchar(9)), @i * 1.25) end\nGO\n"
      "begin try select 1 / 0 end try begin catch select 7 as caught end catch\nGO\n"
      "select f.Name, sum(f.Amount) over (order by f.ID) as Total, "
      "(select count(*) from tblFault g where g.Name like f.Name) as Same from tblFault f "
      "where f.Name like N'%سطر%' order by f.ID desc\n";
  return {"script", [](Stage& stage) { stage.Begin(); },
          [](Stage& stage) {
            IgnoreErrors([&] { stage.Query("drop table tblFault"); });
            stage.pages.clear();
          },
          [](Stage& stage) {
            if (stage.connection == nullptr) stage.connection = stage.Connect();
            std::vector<ResultSetPtr> results;
            try {
              results = RunScript(*stage.connection, kScript, {});
            } catch (const Error& error) {
              if (error.Is(ErrorNumber::kConnection)) stage.connection.reset();
              throw;
            }
            const failing_memory::Pause pause;
            for (const ResultSetPtr& rows : results) {
              for (const ResultColumn& column : rows->columns) {
                for (std::size_t row = 0; row < rows->rows; ++row) {
                  stage.pages += column.Display(row) + "|";
                }
              }
            }
          },
          [](Stage& stage) {
            std::string all = stage.pages;
            IgnoreErrors([&] {
              all += stage.Query("select count(*) c from tblFault")->columns[0].Display(0);
            });
            return all;
          }};
}

Operation Slow(Operation operation) {
  operation.share = 12;
  return operation;
}

}  // namespace

std::vector<Operation> Operations() {
  ExportOptions filled;
  filled.template_number = 1;
  return {FirstView(),
          ViewOf("view", 105),
          ViewOf("view with formulas", 220),
          ViewOf("view with rights", 205, "", 4, 5),
          ViewOf("view of a cross table", 227),
          Slow(ViewOf("view of a tree", 401)),
          ViewOf("view with parameters", 203, "@1=5"),
          ViewOf("view of a panel", 106),
          ViewOf("view of merged rows", 209),
          ViewOf("view of a ledger", 2842, "@1='20240320'"),
          ViewOf("view of a procedure", 240, "@1=1"),
          Refreshing(),
          Searching(),
          Asking(),
          Sorting(),
          CrossTable(),
          Slow(TreeRows()),
          Slow(TreeSorting()),
          MenuEntry("sum", 220, 3, &HeaderMenu::mnuSum),
          MenuEntry("average", 220, 3, &HeaderMenu::mnuavg),
          Exporting("a.csv", 220),
          Exporting("a.txt", 220, {.path = {}, .remove_money = true}),
          Exporting("a.json", 220),
          Exporting("a.html", 220),
          Exporting("a.xlsx", 220),
          Exporting("filled.xlsx", 201, filled),
          TextByMenu(),
          WorkbookByMenu(),
          PrintByMenu(),
          FastWorkbook(),
          AppendingToAccess(),
          Staging(),
          SavingSettings(),
          SavingParameters(),
          KeepingFunctions(),
          RunningScript()};
}

}  // namespace vorek
