#ifndef VOREK_TESTS_SUPPORT_RANDOM_REPORT_H_
#define VOREK_TESTS_SUPPORT_RANDOM_REPORT_H_

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/expression_columns.h"
#include "grid/report_context.h"
#include "grid/summary_label.h"
#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"

// Filled reports made at random, two of a kind for each seed, so that a pass can be held against a
// plain reading of its rules.
namespace vorek {

class QuietNotices : public Notices {
 public:
  void ShowMessage(const std::string& title, const std::string& message) override {
    told.push_back(title + "|" + message);
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
  std::vector<std::string> told;
};

class RandomReport {
 public:
  explicit RandomReport(unsigned seed) : random_(seed) {
    process.data.Rebind("Provider=VorekMemory;");
    state.ReportID = 7;
    database->Answer("tblVorekReportExpression", MakeResult({{"Name", kVarWChar}}, {}));
    flxMain.SetFixedRows(1);
    MakeFields();
    MakeRows();
  }

  // The grid bound to the result, its cells not formed yet.
  void Bind() {
    process.dten().rssqlQuery.Close();
    process.dten().rssqlQuery.Open("rows");
    flxMain.Bind(process.dten().rssqlQuery);
    state.QueryFields = FieldsOf(process.dten().rssqlQuery);
    flxMain.WriteCell(0, 0, "رديف");
  }

  // A run up to its numbered and coloured rows, with a calculated column for odd seeds.
  void Fill(bool calculated) {
    if (calculated) {
      database->Answer("tblVorekReportExpression",
                       MakeResult({{"Name", kVarWChar},
                                   {"GeneralExpression", kVarWChar},
                                   {"FirstRowExpression", kVarWChar},
                                   {"JustShowPositiveValue", kInteger}},
                                  {{"محاسبه", "C1*2-P2", std::nullopt, std::nullopt}}));
    }
    Bind();
    ReportContext report = Context();
    MakeExpressionColumns(report);
    FormCells(report, state.QueryFields);
    flxMain.NumberRows();
    ColorRows(report);
    process.main.ReportCache = {{7, "rows", static_cast<std::int16_t>(state.QueryFields.size())}};
  }

  // Rows written by hand, summary rows in odd places, hidden rows.
  void Disturb() {
    for (std::size_t i = Below(4); i > 0 && flxMain.Rows() > 1; --i) {
      const auto row =
          static_cast<std::int32_t>(1 + Below(static_cast<std::size_t>(flxMain.Rows() - 1)));
      const auto col =
          static_cast<std::int32_t>(1 + Below(static_cast<std::size_t>(flxMain.Cols() - 1)));
      flxMain.WriteCell(row, col, TextFor(col));
    }
    for (std::size_t i = Below(3); i > 0; --i) {
      const auto at =
          static_cast<std::int32_t>(1 + Below(static_cast<std::size_t>(flxMain.Rows())));
      flxMain.AddItem(Pick({"مجموع", "ميانگين", "مجموع", ""}), at);
      flxMain.WriteCell(at, 1, TextFor(1));
    }
    for (std::int32_t row = 1; row < flxMain.Rows(); ++row) {
      if (Below(10) == 0) flxMain.SetRowHeight(row, 0);
    }
  }

  ReportContext Context() { return {process, state, flxMain, flxTranspose, notices, evaluation}; }

  // All that can be seen of a grid, a line a row.
  static std::string Picture(const Grid& grid) {
    std::string all = "at " + std::to_string(grid.Row()) + "," + std::to_string(grid.Col()) +
                      " to " + std::to_string(grid.RowSel()) + "," + std::to_string(grid.ColSel()) +
                      "\n";
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
      for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const CellFormat format = grid.FormatAt(row, col);
        all += grid.TextMatrix(row, col);
        if (format.back_color != -1 || format.bold || format.text_style != 0) {
          all += "{" + std::to_string(format.back_color) + (format.bold ? "b" : "") +
                 std::to_string(format.text_style) + "}";
        }
        all += "|";
      }
      all += std::to_string(grid.RowHeight(row)) + "\n";
    }
    return all;
  }

  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
  std::string Pick(const std::vector<std::string>& choices) {
    return choices[Below(choices.size())];
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{{.providers = {database},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
  ReportState state;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  QuietNotices notices;
  EvaluationClass evaluation;

 private:
  // A number field never holds another text, a money field one with digit groups.
  std::string TextFor(std::int32_t col) {
    const auto field = static_cast<std::size_t>(col) - 1;
    const int type = field < fields_.size() ? fields_[field].ado_type : kVarWChar;
    if (field < fields_.size() && fields_[field].name == "زمان") return Pick({"", "01:30", "5"});
    const bool money = type == kCurrency || type == kDouble;
    const bool number = money || type == kInteger || type == kSmallInt || type == kBigInt;
    if (!number) return Pick({"", "12abc", "(1/234.5)", "متن", "7654321", "01:30", "-3"});
    return Pick({"", "7654321", "-3", "12", money ? "(1/234.5)" : "5"});
  }

  void MakeFields() {
    const std::vector<MemoryColumn> kinds = {
        {"تعداد", kInteger}, {"مبلغ", kCurrency},  {"زمان", kInteger},
        {"نرخ", kDouble},    {"شرح", kVarWChar},   {"بزرگ", kBigInt},
        {"دقيق", kNumeric},  {"تاريخ", kVarWChar}, {"كوچك", kSmallInt}};
    for (std::size_t i = 2 + Below(5); i > 0; --i) fields_.push_back(kinds[Below(kinds.size())]);
  }

  void MakeRows() {
    std::vector<MemoryRow> rows;
    for (std::size_t i = 1 + Below(Below(4) == 0 ? 60 : 9); i > 0; --i) {
      MemoryRow row;
      for (const MemoryColumn& field : fields_) row.push_back(Value(field));
      rows.push_back(row);
    }
    database->Answer("rows", MakeResult(fields_, rows));
  }

  std::optional<std::string> Value(const MemoryColumn& field) {
    if (Below(8) == 0) return std::nullopt;
    switch (field.ado_type) {
      case kVarWChar:
        return field.name == "تاريخ"
                   ? Pick({"1404/01/02", "1403/12/29", "1404/01/02", "1404\\02\\11"})
                   : Pick(
                         {"علي", "علي", "حسن", "Ali", "ali", "ALI", "", "كتاب", "کتاب", "12", "9"});
      case kSmallInt:
        return std::to_string(static_cast<int>(Below(200)) - 100);
      case kInteger:
        return std::to_string(field.name == "زمان" ? Below(3000)
                              : Below(3) == 0      ? Below(2000000000)
                                                   : Below(12));
      case kBigInt:
        return std::to_string(Below(3) == 0 ? random_() * 100ULL : Below(9));
      default:
        return Decimal();
    }
  }

  std::string Decimal() {
    const std::string sign = Below(3) == 0 ? "-" : "";
    switch (Below(4)) {
      case 0:
        return sign + std::to_string(Below(5));
      case 1:
        return sign + "0." + std::to_string(Below(100));
      case 2:
        return sign + std::to_string(Below(90000000) + 1000000) + "." + std::to_string(Below(1000));
      default:
        return sign + std::to_string(Below(10000)) + ".5";
    }
  }

  std::mt19937 random_;
  std::vector<MemoryColumn> fields_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_RANDOM_REPORT_H_
