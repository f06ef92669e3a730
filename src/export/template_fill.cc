#include "export/template_fill.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "export/long_work.h"
#include "export/sheet_lock.h"
#include "export/template_file.h"
#include "text/key_list.h"
#include "text/number.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::int32_t kNoRow = -2;
constexpr std::int32_t kMostEmptyRows = 5;  // without a marker, in a row
constexpr std::int32_t kLastLetters = 256;  // columns beyond it have no name

std::string TimeOfDay(const DateTime& now) {
  std::string text;
  for (const int part : {now.hour, now.minute, now.second}) {
    if (!text.empty()) text += ':';
    text += (part < 10 ? "0" : "") + std::to_string(part);
  }
  return text;
}

// The values of the parameters, and under numbers below 0 those of the user and the day.
std::string WorkingList(ReportContext& report) {
  const MainModule& main = report.process.main;
  const DateTime now = report.process.clock().Now();
  std::string list = report.state.ListOfVisualParameters;
  setParameterValue(list, "@-1", main.UserFullName);
  setParameterValue(list, "@-2", main.EmployeeFullName);
  setParameterValue(list, "@-3", main.PositionName);
  setParameterValue(list, "@-4", text::DateText(text::ToPersian({now.year, now.month, now.day})));
  setParameterValue(list, "@-5", TimeOfDay(now));
  return list;
}

// The number at the head of a text; nothing for one beyond 32 bits.
bool ReadNumber(std::string_view text, std::int32_t& number) {
  return IgnoreErrors([&] { number = text::ToInt32(text::NumericPrefix(text)); });
}

std::string ColumnLetters(std::int32_t column) {
  std::string letters;
  if (column < 1 || column > kLastLetters) return letters;
  if (column > 26) letters += static_cast<char>('A' + (column - 1) / 26 - 1);
  return letters + static_cast<char>('A' + (column - 1) % 26);
}

// One fill of one sheet, from the scan to the last row.
class TemplateFill {
 public:
  TemplateFill(ReportContext& report, Grid& grid, const PlainMoney& money, TemplateSheet& sheet,
               LongWork& work)
      : report_(report),
        grid_(grid),
        money_(money),
        sheet_(sheet),
        work_(work),
        list_(WorkingList(report)),
        visible_(VisibleRowCount(grid)),
        scan_width_(grid.Cols() + 10) {}

  void Run() {
    std::int32_t without_marker = 0;
    for (std::int32_t row = 1; without_marker < kMostEmptyRows && row <= WorkbookLimits::kRows;
         ++row) {
      ++without_marker;
      bool marked = false;
      const std::int32_t detail = ScanRow(row, marked);
      if (marked || detail > 0) without_marker = 0;
      // By a second detail row the rows of the grid are used up.
      if (detail == 0 || current_ == kNoRow) continue;
      if (visible_ < 2) {
        sheet_.DeleteRow(row);
        return;
      }
      FillBlock(row, detail);
      row += visible_ - 1;
    }
    if (report_.state.LockPrintPreview) sheet_.Protect(SheetLock());
  }

 private:
  struct Placed {
    std::int32_t grid_column;
    std::int32_t column;
  };

  std::string ParameterOf(std::string_view marker) const {
    std::int32_t number = 0;
    if (!ReadNumber(marker.substr(1), number)) return {};
    return getParameterValue(list_, "@" + std::to_string(number));
  }

  // Puts the parameters of a row. The column in which it turns out to be a detail row, else 0.
  std::int32_t ScanRow(std::int32_t row, bool& marked) {
    const std::int32_t last = std::min(scan_width_, sheet_.LastColumn(row));
    for (std::int32_t column = 1; column <= last; ++column) {
      const std::string text = sheet_.Text(row, column);
      if (text.empty()) continue;
      if (text.front() == '#') return column;
      if (text.front() != '^') continue;
      marked = true;
      sheet_.SetText(row, column, ParameterOf(text));
      // The value may be a marker itself.
      const std::string value = sheet_.Text(row, column);
      if (value.starts_with('^')) sheet_.SetText(row, column, ParameterOf(value));
      if (value.starts_with('#')) return column;
    }
    return 0;
  }

  void FillBlock(std::int32_t row, std::int32_t marker_column) {
    current_ = NextVisibleRow(grid_, current_);
    MakeRoom(row, marker_column);
    FillFirstRow(row);
    StretchFormulas(row);
    FillRows(row);
  }

  void MakeRoom(std::int32_t row, std::int32_t marker_column) {
    const bool own_first_row = sheet_.Text(row + 1, marker_column).starts_with('#');
    const std::int32_t copies = visible_ - (own_first_row ? 2 : 1);
    if (copies > 0) sheet_.InsertCopies(own_first_row ? row + 1 : row, row + 1, copies);
  }

  void FillFirstRow(std::int32_t row) {
    const std::int32_t last = std::min(scan_width_, sheet_.LastColumn(row));
    for (std::int32_t column = 1; column <= last; ++column) {
      const std::string text = sheet_.Text(row, column);
      std::string filled = PutMarkers(text, column);
      if (filled != text) sheet_.SetText(row, column, filled);
      if (filled.starts_with('^')) {
        sheet_.SetTextFormat(row, column);
        sheet_.SetText(row, column, ParameterOf(filled));
      }
      const std::string formula = sheet_.Formula(row, column);
      if (formula.starts_with('^')) sheet_.SetFormula(row, column, ParameterOf(formula));
    }
  }

  // Replaces the markers of a cell of the first row from the left and notes where they stood.
  std::string PutMarkers(std::string text, std::int32_t column) {
    for (std::size_t at = text.find('#'); at != std::string::npos;) {
      const std::size_t end = std::min(text.find('#', at + 1), text.size());
      std::int32_t number = 0;
      const bool known = ReadNumber(std::string_view(text).substr(at + 1, end - at - 1), number) &&
                         number >= 1 && number <= grid_.Cols();
      std::size_t next = at + 1;
      if (known) {
        Note(number - 1, column);
        const std::string marker = "#" + std::to_string(number);
        const std::string value(money_.Text(grid_, current_, number - 1, scratch_));
        const bool here = text.compare(at, marker.size(), marker) == 0;
        text = Put(text, marker, value);
        if (here) next = at + value.size();
      }
      at = text.find('#', next);
    }
    return text;
  }

  // The value in place of each marker, unless that makes far more of it than a cell holds: a text
  // full of markers must not take all memory.
  static std::string Put(const std::string& text, const std::string& marker,
                         std::string_view value) {
    constexpr std::size_t kMost = 4 * WorkbookLimits::kCharacters;  // bytes of a full cell
    if (text.size() / marker.size() * value.size() > kMost) {
      std::size_t count = 0;
      for (std::size_t at = text.find(marker); at != std::string::npos;
           at = text.find(marker, at + marker.size())) {
        ++count;
      }
      if (count * value.size() > kMost) {
        throw Error(ErrorNumber::kInvalidCall,
                    "متن يك خانه الگو با مقدار نشانه " + marker + " از اندازه خانه بيشتر مي شود.");
      }
    }
    return text::Replace(text, marker, value);
  }

  void Note(std::int32_t grid_column, std::int32_t column) {
    const auto same = [&](const Placed& placed) {
      return placed.grid_column == grid_column && placed.column == column;
    };
    if (std::any_of(placed_.begin(), placed_.end(), same)) return;
    placed_.push_back({grid_column, column});
  }

  // The formulas just below the block take all of it in, each in its own column.
  void StretchFormulas(std::int32_t row) {
    const std::int32_t last = row + visible_ - 1;
    for (std::int32_t column = scan_width_; column >= 1; --column) {
      const std::string formula = sheet_.Formula(last + 1, column);
      const std::string letters = ColumnLetters(column);
      if (formula.empty() || letters.empty()) continue;
      const std::string stretched =
          text::Replace(formula, letters + std::to_string(row), letters + std::to_string(last));
      if (stretched != formula) sheet_.SetFormula(last + 1, column, stretched);
    }
  }

  void FillRows(std::int32_t row) {
    // From the right, so that the marker #12 comes before #1; column 0 isn't among them.
    std::erase_if(placed_, [this](const Placed& placed) {
      return placed.grid_column < 1 || placed.column >= scan_width_;
    });
    std::stable_sort(placed_.begin(), placed_.end(), [](const Placed& a, const Placed& b) {
      return a.grid_column > b.grid_column;
    });
    for (std::int32_t at = row; current_ >= 0; ++at) {
      for (const Placed& placed : placed_) PutValue(at, placed);
      work_.Step();
      current_ = NextVisibleRow(grid_, current_);
    }
    current_ = kNoRow;
  }

  void PutValue(std::int32_t row, const Placed& placed) {
    const std::string text = sheet_.Text(row, placed.column);
    const std::string marker = "#" + std::to_string(placed.grid_column + 1);
    if (!text::Contains(text, marker)) return;
    sheet_.SetText(row, placed.column,
                   Put(text, marker, money_.Text(grid_, current_, placed.grid_column, scratch_)));
  }

  ReportContext& report_;
  Grid& grid_;
  const PlainMoney& money_;
  TemplateSheet& sheet_;
  LongWork& work_;
  std::string list_;
  std::int32_t visible_;
  std::int32_t scan_width_;     // columns of the sheet that are looked at
  std::int32_t current_ = -1;   // row of the grid
  std::vector<Placed> placed_;  // where the columns' markers stood in the detail row
  std::string scratch_;
};

}  // namespace

std::int32_t VisibleRowCount(const Grid& grid) {
  if (!grid.RowHeightsDiffer()) return grid.Rows();
  std::int32_t count = 0;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) count += grid.RowHeight(row) > 0 ? 1 : 0;
  return count;
}

std::int32_t NextVisibleRow(const Grid& grid, std::int32_t row) {
  if (row < -1) return kNoRow;
  for (++row; row < grid.Rows(); ++row) {
    if (grid.RowHeight(row) > 0) return row;
  }
  return kNoRow;
}

std::string FillExcelTemplate(ReportContext& report, Grid& grid, const std::string& templatePath,
                              const PlainMoney& money, OutputFile& out) {
  LongWork work(report, VisibleRowCount(grid));
  const TemplateFile file = OpenTemplateFile(report.process, templatePath, [&] { work.Ask(); });
  TemplateFill(report, grid, money, *file.sheet, work).Run();
  file.sheet->Save(out);
  out.Commit();
  return file.note;
}

}  // namespace vorek
