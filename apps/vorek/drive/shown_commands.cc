#include <sstream>

#include "chart/chart_reader.h"
#include "drive/chart_text.h"
#include "drive/commands.h"
#include "drive/targets.h"
#include "engine/grid_heading.h"
#include "engine/report_control.h"
#include "engine/report_head.h"
#include "print/grid_print.h"
#include "print/page_text.h"
#include "widgets/form.h"
#include "widgets/property.h"

namespace vorek::drive {
namespace {

// The entries as they stand, hidden ones too; those of a submenu behind their own.
void DumpMenu(Session& session, const Menu& menu, const std::string& indent) {
  for (const Control* const child : menu.Children()) {
    const auto& entry = dynamic_cast<const Menu&>(*child);
    std::string line = indent + entry.Name() + " " + Quote(entry.Caption());
    if (!entry.Enabled()) line += " disabled " + Quote(entry.ToolTipText());
    session.Print(line);
    DumpMenu(session, entry, indent + "  ");
  }
}

// What a script can name below the control. A part that stands in several forms has a list of its
// own.
void DumpNames(Session& session, const Control& control, const std::string& indent) {
  session.Print(indent + control.PathName() + " " + std::string(control.Kind()));
  const bool part = control.Kind() == "VorekReport1" || control.Kind() == "VorekParameters";
  if (part && !indent.empty()) return;
  for (const Control* const child : control.Children()) {
    DumpNames(session, *child, indent + "  ");
  }
}

void DumpGrid(Session& session, const Grid& grid) {
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    std::string line;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (col > 0) line += '\t';
      line += grid.TextMatrix(row, col);
    }
    session.Print(line);
  }
}

void Dump(Session& session, const Words& words) {
  const Control& control = FindControl(session, Word(words, 1));
  if (const auto* const menu = dynamic_cast<const Menu*>(&control)) {
    DumpMenu(session, *menu, "");
  } else if (const auto* const grid = dynamic_cast<const Grid*>(&control)) {
    DumpGrid(session, *grid);
  } else {
    DumpNames(session, control, "");
  }
}

void Format(Session& session, const Words& words) {
  const Grid& grid = FindGrid(session, words);
  const std::int32_t row = Number(words, 2);
  const std::int32_t col = Number(words, 3);
  const CellFormat format = grid.FormatAt(row, col);
  const std::int32_t alignment = format.alignment >= 0 ? format.alignment : grid.ColAlignment(col);
  session.Print(
      "back=" + std::to_string(format.back_color) + " alignment=" + std::to_string(alignment) +
      " bold=" + property::ToText(format.bold) + " style=" + std::to_string(format.text_style) +
      " width=" + std::to_string(grid.ColWidth(col)) +
      " height=" + std::to_string(grid.RowHeight(row)));
}

void Events(Session& session, const Words&) {
  for (const std::string& event : session.TakeEvents()) session.Print(event);
}

void Expect(Session& session, const Words& words) {
  const std::string expected = Word(words, 1);
  if (expected == session.LastLine()) return;
  Refuse("expected " + Quote(expected) + ", the last line is " + Quote(session.LastLine()));
}

// A line a row: the rows of what was put there are parted by carriage returns.
void PrintClipboard(Session& session, const Words&) {
  std::istringstream rows(session.clipboard->Text());
  for (std::string row; std::getline(rows, row, '\r');) session.Print(row);
}

void SetPaper(print::PageSetup& setup, const std::string& word) {
  if (word == "landscape" || word == "portrait") {
    setup.landscape = word == "landscape";
  } else if (word == "all-wide") {
    setup.fit_width = false;
  } else {
    Refuse("unknown word " + word);
  }
}

void PrintPages(Session& session, const Words& words) {
  ReportContext context = session.Report().Impl().Context();
  const Grid& grid = context.ActiveGrid();
  const print::PrintedColumns columns(ColumnView(grid), grid);
  print::PageSetup setup = print::PaperFor(grid, columns);
  for (std::size_t i = 1; i < words.size(); ++i) SetPaper(setup, words[i]);
  const print::GridPrint pages(context, columns, HeadingOf(context), setup);
  for (std::size_t page = 0; page < pages.PageCount(); ++page) {
    for (const std::string& line : print::TextsOfPage(pages, page)) session.Print(line);
  }
}

void PrintChart(Session& session, const Words& words) {
  const bool turned = words.size() > 2 && words[2] == "turned";
  const ReportContext report = session.Report().Impl().Context();
  const ChartModel chart = ReadChart(report, ColumnView(report.ActiveGrid()), turned);
  for (const std::string& line : ChartLines(chart, Word(words, 1))) session.Print(line);
}

void PrintHead(Session& session, const Words&) {
  const ReportHead head = HeadOf(session.Report().Impl().Context());
  session.Print(head.title);
  if (head.asked) session.Print(InWords(head.values));
}

}  // namespace

Commands ShownCommands() {
  return {{"dump", Dump},        {"format", Format},    {"events", Events},
          {"expect", Expect},    {"chart", PrintChart}, {"clipboard", PrintClipboard},
          {"pages", PrintPages}, {"head", PrintHead}};
}

}  // namespace vorek::drive
