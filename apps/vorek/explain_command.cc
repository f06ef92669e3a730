#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adapters/sqlite/explain.h"
#include "author/report_stages.h"
#include "command.h"
#include "engine/world_state.h"
#include "given_parameters.h"
#include "shown_report.h"
#include "text/number.h"
#include "vorek/connection_string.h"

namespace vorek {
namespace {

struct ExplainOptions {
  ReportOptions report;
  std::string cell;
  std::string format = "text";
};

struct CellPlace {
  std::int32_t row;
  std::int32_t column;
};

// "4,6": a row and a column of the grid, as they are numbered there.
CellPlace ParseCell(const std::string& text) {
  const std::size_t comma = text.find(',');
  const auto number = [](const std::string& digits) {
    const bool whole = !digits.empty() && digits.size() < 10 &&
                       digits.find_first_not_of("0123456789") == std::string::npos;
    return whole ? std::stoi(digits) : 0;
  };
  CellPlace place{number(text.substr(0, comma)),
                  comma == std::string::npos ? 0 : number(text.substr(comma + 1))};
  if (place.row >= 1 && place.column >= 1) return place;
  std::cerr << "--cell takes a row and a column of the grid, as 4,6\n";
  throw CLI::RuntimeError(2);
}

// The statements as the embedded database runs them, and how it goes about each; a server is given
// them as they are.
void AddDatabaseStages(const std::string& connection_string, ReportStages& stages) {
  const std::string name = ConnectionValue(ParseConnectionString(connection_string), {"Provider"});
  const ProviderList providers = ConsoleWorld().providers;
  const auto connection = FindProvider(providers, name).Connect(connection_string);
  std::string translated;
  std::string plan;
  std::string refused;
  for (const std::string& statement : stages.statements) {
    try {
      const std::string sql = sqlite::Explain(*connection, statement);
      translated += sql;
      if (!sql.starts_with("--")) plan += sqlite::ExplainPlan(*connection, statement);
    } catch (const Error& error) {
      refused = error.Description();
    }
  }
  stages.stages.push_back({"translated", refused, WithCoveredSecrets(translated)});
  if (!plan.empty()) stages.stages.push_back({"plan", "", plan});
}

ReportStages StagesOf(const ReportOptions& options) {
  World world(ConsoleWorld());
  Process& process = world.State().process;
  process.main.ConnectionText = ConnectionString(options.connect);
  process.data.Rebind(process.main.ConnectionText);
  process.main.GlobalUserID = options.connect.user;
  process.main.GlobalPositionID = options.connect.position;
  CheckGivenParameters(process, options.report, options.parameters);
  ReportState host;
  host.EmployeeID = options.connect.employee;
  host.PositionID = options.connect.position;
  ReportStages stages = ExplainReport(process, host, options.report, options.parameters);
  if (!stages.found) {
    throw Error(ErrorNumber::kItemNotFound,
                "There is no report " + std::to_string(options.report) + ".");
  }
  if (!stages.statements.empty()) AddDatabaseStages(process.main.ConnectionText, stages);
  return stages;
}

// A cell of the report with how it came about.
struct ExplainedCell {
  CalculationTrace trace;
  std::string header;
  std::string shown;
};

ExplainedCell ExplainCell(const ExplainOptions& options) {
  const CellPlace place = ParseCell(options.cell);
  ExplainedCell cell{{.row = place.row, .column = place.column}, "", ""};
  ShownReport shown(options.report, ConsoleWorld(), &cell.trace);
  const Grid& grid = shown.Control().flxMain;
  if (place.row >= grid.Rows() || place.column >= grid.Cols()) {
    shown.Refuse("the grid has rows 1 to " + std::to_string(grid.Rows() - 1) +
                 " and columns 1 to " + std::to_string(grid.Cols() - 1));
  }
  cell.header = grid.TextMatrix(0, place.column);
  cell.shown = grid.TextMatrix(place.row, place.column);
  return cell;
}

void PrintText(const std::string& text) {
  std::cout << text;
  if (!text.empty() && text.back() != '\n') std::cout << '\n';
}

void PrintStages(const ReportStages& stages) {
  std::cout << stages.title << '\n';
  std::string before;
  for (const ReportStage& stage : stages.stages) {
    std::cout << "\n== " << stage.name << (stage.note.empty() ? "" : ": " + stage.note) << '\n';
    PrintText(stage.text == before ? "(as before)" : stage.text);
    before = stage.text;
  }
}

std::string ValueText(const std::optional<double>& value) {
  return value ? text::PlainNumber(*value) : "";
}

void PrintCell(const ExplainedCell& cell) {
  const CalculationTrace& trace = cell.trace;
  std::cout << "\n== cell: row " << trace.row << ", column " << trace.column << ", " << cell.header
            << '\n';
  if (trace.told) {
    std::cout << "formula  " << trace.formula << "\nnumbers  " << trace.with_numbers
              << "\nvalue    " << ValueText(trace.value) << "\ncode     " << trace.code
              << (trace.code == 0 ? "" : ", " + trace.code_text) << '\n';
  } else {
    std::cout << "no formula: the cell comes from the query\n";
  }
  std::cout << "cell     " << cell.shown << '\n';
}

using Json = nlohmann::ordered_json;

Json CellJson(const ExplainedCell& cell) {
  const CalculationTrace& trace = cell.trace;
  Json json = {{"row", trace.row}, {"column", trace.column}, {"header", cell.header}};
  if (trace.told) {
    json["formula"] = trace.formula;
    json["numbers"] = trace.with_numbers;
    json["value"] = trace.value ? Json(*trace.value) : Json(nullptr);
    json["code"] = trace.code;
    json["code_text"] = trace.code_text;
  }
  json["cell"] = cell.shown;
  return json;
}

void PrintJson(std::int32_t report, const ReportStages& stages,
               const std::optional<ExplainedCell>& cell) {
  Json json = {{"report", report}, {"title", stages.title}, {"stages", Json::array()}};
  for (const ReportStage& stage : stages.stages) {
    json["stages"].push_back({{"name", stage.name}, {"note", stage.note}, {"text", stage.text}});
  }
  if (cell) json["cell"] = CellJson(*cell);
  std::cout << json.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
}

void Explain(const ExplainOptions& options) {
  std::optional<ExplainedCell> cell;
  if (!options.cell.empty()) cell = ExplainCell(options);
  const ReportStages stages = StagesOf(options.report);
  if (options.format == "json") return PrintJson(options.report.report, stages, cell);
  PrintStages(stages);
  if (cell) PrintCell(*cell);
}

}  // namespace

void AddExplainCommand(CLI::App& app) {
  auto options = std::make_shared<ExplainOptions>();
  CLI::App* const command = app.add_subcommand(
      "explain", "Show a report's text at each stage, and how a calculated cell came about");
  AddReportOptions(*command, options->report);
  command->get_option("--user")->required(false);
  command->add_option("--cell", options->cell,
                      "ROW,COLUMN of the grid: run the report and show the formula of that cell");
  command->add_option("--format", options->format, "text or json")
      ->check(CLI::IsMember({"text", "json"}));
  command->callback([options] { Explain(*options); });
}

}  // namespace vorek
