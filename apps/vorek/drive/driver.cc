#include "drive/driver.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <utility>

#include "adapters/system/database_option.h"
#include "chart/chart_reader.h"
#include "command.h"
#include "drive/chart_text.h"
#include "drive/evaluation_object.h"
#include "drive/script_component.h"
#include "drive/script_print.h"
#include "engine/grid_heading.h"
#include "engine/report_control.h"
#include "engine/report_head.h"
#include "print/grid_print.h"
#include "print/page_text.h"
#include "printable.h"
#include "text/utf8.h"
#include "vorek/system.h"
#include "widgets/property.h"
#include "widgets/typed_control.h"

namespace vorek::drive {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kInvalidCall, reason);
}

std::string Word(const std::vector<std::string>& words, std::size_t index) {
  if (index < words.size()) return words[index];
  Refuse(words[0] + " needs more words");
}

std::int32_t Number(const std::vector<std::string>& words, std::size_t index) {
  const std::string word = Word(words, index);
  if (word.find_first_not_of("0123456789-") != std::string::npos) {
    Refuse("\"" + word + "\" is no number");
  }
  return property::FromText<std::int32_t>(word);
}

Menu* EntryWithCaption(const Menu& menu, const std::string& caption) {
  for (Control* child : menu.Children()) {
    auto& entry = dynamic_cast<Menu&>(*child);
    if (entry.Caption() == caption) return &entry;
    if (Menu* const below = EntryWithCaption(entry, caption)) return below;
  }
  return nullptr;
}

std::int32_t OptionalNumber(const std::vector<std::string>& words, std::size_t index,
                            std::int32_t missing) {
  return index < words.size() ? Number(words, index) : missing;
}

}  // namespace

Driver::Driver(std::ostream& out)
    : out_(out),
      clock_(std::make_shared<ScriptClock>(MachineClock())),
      stage_(std::make_shared<Stage>([this](const std::string& line) { Print(line); },
                                     [this](const Block& block) { Play(block); })),
      files_(std::make_shared<FileStage>([this](const std::string& line) { Print(line); })),
      documents_(
          std::make_shared<DocumentStage>([this](const std::string& line) { Print(line); })) {
  WorldOptions options = ConsoleWorld();
  options.clock = clock_;
  options.windows = stage_;
  options.file_dialogs = files_;
  options.documents = documents_;
  options.clipboard = clipboard_;
  options.components = components_;
  options.print_jobs =
      std::make_shared<ScriptPrints>([this](const std::string& line) { Print(line); });
  world_ = std::make_unique<World>(std::move(options));
  report_ = std::make_unique<VorekReport1>(*world_);
  objects_["evaluation"] = EvaluationObject(report_->Impl().Evaluation);
  ListenToEvents(*report_, [this](const std::string& event) { events_.push_back(event); });
}

const std::map<std::string, Driver::Command>& Driver::Commands() {
  static const std::map<std::string, Command> commands = {{"connect", &Driver::Connect},
                                                          {"view", &Driver::View},
                                                          {"refresh", &Driver::Refresh},
                                                          {"call", &Driver::Call},
                                                          {"get", &Driver::Get},
                                                          {"set", &Driver::Set},
                                                          {"click", &Driver::Click},
                                                          {"dblclick", &Driver::DblClick},
                                                          {"key", &Driver::Key},
                                                          {"type", &Driver::Type},
                                                          {"move", &Driver::Move},
                                                          {"select", &Driver::Select},
                                                          {"menu", &Driver::ChooseMenu},
                                                          {"dump", &Driver::Dump},
                                                          {"format", &Driver::Format},
                                                          {"events", &Driver::Events},
                                                          {"expect", &Driver::Expect},
                                                          {"clock", &Driver::SetClock},
                                                          {"close", &Driver::CloseForm},
                                                          {"chart", &Driver::PrintChart},
                                                          {"head", &Driver::PrintHead},
                                                          {"file", &Driver::QueueFile},
                                                          {"workbook", &Driver::QueueWorkbook},
                                                          {"clipboard", &Driver::PrintClipboard},
                                                          {"pages", &Driver::PrintPages},
                                                          {"component", &Driver::OfferComponent},
                                                          {"cancel", &Driver::CancelAt}};
  return commands;
}

// --- Running lines -------------------------------------------------------------------------------

void Driver::Run(std::istream& script) {
  Block block;
  std::string line;
  while (std::getline(script, line)) block.push_back({block.size() + 1, line});
  Play(block);
}

void Driver::RunLine(const std::string& line) {
  Execute(SplitWords(line));
  RaiseFailure();
}

void Driver::Play(const Block& block) {
  for (std::size_t at = 0; at < block.size(); ++at) {
    const std::vector<std::string> words = SplitWords(block[at].text);
    if (!words.empty() && words[0] == "when") {
      at = ReadWhen(block, at);
    } else {
      PlayLine(block[at]);
    }
  }
}

void Driver::PlayLine(const ScriptLine& line) {
  try {
    RunLine(line.text);
  } catch (const Error& error) {
    const bool told = error.Description().starts_with("line ");
    if (told) throw;
    throw Error(error.Number(), "line " + std::to_string(line.number) + ": " + error.Description());
  }
}

// Queues the lines up to the "end" of this "when"; returns where that stands.
std::size_t Driver::ReadWhen(const Block& block, std::size_t at) {
  const std::string where = "line " + std::to_string(block[at].number) + ": ";
  const std::vector<std::string> head = SplitWords(block[at].text);
  if (head.size() != 2) Refuse(where + "when FORM");
  Block body;
  int depth = 1;
  for (std::size_t i = at + 1; i < block.size(); ++i) {
    const std::vector<std::string> words = SplitWords(block[i].text);
    if (!words.empty() && words[0] == "when") ++depth;
    if (words.size() == 1 && words[0] == "end" && --depth == 0) {
      stage_->Queue(head[1], std::move(body));
      return i;
    }
    body.push_back(block[i]);
  }
  Refuse(where + "the end of this when is missing");
}

void Driver::Execute(const Words& words) {
  if (words.empty()) return;
  const auto found = Commands().find(words[0]);
  if (found == Commands().end()) Refuse("unknown command " + words[0]);
  (this->*found->second)(words);
}

void Driver::RaiseFailure() {
  if (!stage_->Failure() || stage_->TopForm() != nullptr) return;
  const std::string reason = *stage_->Failure();
  stage_->ClearFailure();
  Refuse(reason);
}

void Driver::Print(const std::string& line) {
  last_line_ = line;
  out_ << PrintableLines(line) << '\n';
}

// --- Finding what a line speaks of
// -----------------------------------------------------------------

// A path begins at the root's own name, or at any control below it.
Control* Driver::FindIn(Control& root, const std::string& path) {
  const std::size_t dot = path.find('.');
  if (!text::EqualsIgnoreCase(path.substr(0, dot), root.Name())) return root.Find(path);
  return root.Find(dot == std::string::npos ? "" : path.substr(dot + 1));
}

// A form that shows by the head of a path: "FormReport.x" is the newest of that name,
// "FormReport(2).x" the second one.
Form* Driver::FormOf(const std::string& head) const {
  const std::size_t open = head.find('(');
  const bool counted = open != std::string::npos && head.ends_with(')');
  if (!counted) return stage_->FormNamed(head, 0);
  const auto number =
      property::FromText<std::int32_t>(head.substr(open + 1, head.size() - open - 2));
  return number < 1 ? nullptr
                    : stage_->FormNamed(head.substr(0, open), static_cast<std::size_t>(number));
}

Control& Driver::FindControl(const std::string& path) {
  const std::size_t dot = std::min(path.find('.'), path.size());
  if (Form* const form = FormOf(path.substr(0, dot))) {
    Control* const control = dot == path.size() ? form : form->Find(path.substr(dot + 1));
    if (control != nullptr) return *control;
  }
  std::vector<Control*> roots;
  if (stage_->TopForm() != nullptr) roots.push_back(stage_->TopForm());
  roots.push_back(&report_->Root());
  roots.insert(roots.end(), stage_->OpenForms().rbegin(), stage_->OpenForms().rend());
  for (Control* root : roots) {
    if (Control* const control = FindIn(*root, path)) return *control;
  }
  throw Error(ErrorNumber::kItemNotFound, "there is no control " + path);
}

Object* Driver::FindObject(const std::string& path) {
  const auto found = objects_.find(text::ToLower(path));
  return found == objects_.end() ? nullptr : found->second.get();
}

Grid& Driver::FindGrid(const Words& words) {
  auto* const grid = dynamic_cast<Grid*>(&FindControl(Word(words, 1)));
  if (grid == nullptr) Refuse(words[1] + " is no grid");
  return *grid;
}

// --- Commands
// --------------------------------------------------------------------------------------

void Driver::Connect(const Words& words) {
  const std::string connection = Word(words, 1);
  static constexpr std::pair<std::string_view, std::string_view> kKeys[] = {
      {"user", "UserID"},
      {"position", "PositionID"},
      {"employee", "EmployeeID"},
      {"period", "PeriodID"}};
  for (std::size_t i = 2; i < words.size(); ++i) {
    const std::size_t equal = std::min(words[i].find('='), words[i].size());
    const auto found = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& key) {
      return key.first == std::string_view(words[i]).substr(0, equal);
    });
    if (found == std::end(kKeys) || equal == words[i].size()) Refuse("unknown word " + words[i]);
    report_->Root().Set(found->second, words[i].substr(equal + 1));
  }
  report_->SetOleConnectionString(DatabaseOption(connection, ""));
}

void Driver::View(const Words& words) {
  const bool result = report_->View(Number(words, 1), words.size() > 2 ? words[2] : "",
                                    words.size() > 3 ? words[3] : "");
  Print(std::string("view: ") + (result ? "true" : "false"));
}

void Driver::Refresh(const Words& words) {
  const bool result = report_->Refresh(false, words.size() > 1 ? words[1] : "");
  Print(std::string("refresh: ") + (result ? "true" : "false"));
}

void Driver::Call(const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  const Arguments arguments(words.begin() + 2, words.end());
  std::string result;
  if (Object* const object = FindObject(place.path)) {
    result = object->Call(place.member, arguments);
  } else if (place.path.empty() || text::EqualsIgnoreCase(place.path, "VorekReport1")) {
    result = CallMethod(ReportMethods(*report_), place.member, arguments);
  } else {
    result = CallMethod(ControlMethods(FindControl(place.path)), place.member, arguments);
  }
  Print(result);
}

void Driver::Get(const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  if (Object* const object = FindObject(place.path)) {
    Print(object->Get(place.member, place.arguments));
    return;
  }
  Control& control = place.path.empty() ? report_->Root() : FindControl(place.path);
  Print(control.Get(place.member, place.arguments));
}

void Driver::Set(const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  const std::string value = Word(words, 2);
  if (Object* const object = FindObject(place.path)) {
    object->Set(place.member, place.arguments, value);
    return;
  }
  Control& control = place.path.empty() ? report_->Root() : FindControl(place.path);
  control.Set(place.member, value, place.arguments);
}

// The mouse goes down on a cell of a grid and up again.
void Driver::PressOnGrid(Grid& grid, const Words& words) {
  const std::int32_t row = Number(words, 2);
  const std::int32_t col = Number(words, 3);
  const std::int32_t button = OptionalNumber(words, 4, 1);
  const std::int32_t shift = OptionalNumber(words, 5, 0);
  grid.PointAt(row, col);
  if (button == 1 && row >= grid.FixedRows() && col >= grid.FixedCols()) {
    grid.SelectByUser(row, col, row, col);
  }
  grid.MouseDown(button, shift, 0, 0);
}

void Driver::Click(const Words& words) {
  Control& control = FindControl(Word(words, 1));
  if (auto* const grid = dynamic_cast<Grid*>(&control)) PressOnGrid(*grid, words);
  control.Click();
}

void Driver::DblClick(const Words& words) {
  Control& control = FindControl(Word(words, 1));
  if (auto* const grid = dynamic_cast<Grid*>(&control)) PressOnGrid(*grid, words);
  control.DblClick();
}

// A form sees a key before its active control does, and so does the report control.
void Driver::PressKey(Control& control, int code, int shift) {
  Control& root = control.Root();
  if (auto* const form = dynamic_cast<Form*>(&root); form != nullptr && form->Shown()) {
    if (&control != form) control.GotFocus();
    form->FormKeyDown(code, shift);
    return;
  }
  root.KeyDown(code, shift);
  if (&control != &root) control.KeyDown(code, shift);
}

void Driver::Key(const Words& words) {
  PressKey(FindControl(Word(words, 1)), Number(words, 2), OptionalNumber(words, 3, 0));
}

// A text that a field doesn't take is no failure of the script: its user can go on.
void Driver::Type(const Words& words) {
  Control& control = FindControl(Word(words, 1));
  control.GotFocus();
  control.Type(Word(words, 2));
  control.LostFocus();
  const auto* const typed = dynamic_cast<const TypedControl*>(&control);
  if (typed != nullptr && typed->Refuses()) {
    Print("refused " + control.PathName() + ": " + typed->Refusal());
  }
}

void Driver::Move(const Words& words) {
  Grid& grid = FindGrid(words);
  grid.PointAt(Number(words, 2), Number(words, 3));
  grid.MouseMove(0, 0, 0, 0);
}

void Driver::Select(const Words& words) {
  const std::int32_t row = Number(words, 2);
  const std::int32_t col = Number(words, 3);
  FindGrid(words).SelectByUser(row, col, OptionalNumber(words, 4, row),
                               OptionalNumber(words, 5, col));
}

void Driver::ChooseMenu(const Words& words) {
  Menu* const menu = stage_->OpenMenu();
  if (menu == nullptr) Refuse("no menu is open");
  const std::string entry = Word(words, 1);
  auto* chosen = dynamic_cast<Menu*>(menu->Find(entry));
  if (chosen == nullptr) chosen = EntryWithCaption(*menu, entry);
  if (chosen == nullptr) Refuse("the menu has no entry " + entry);
  stage_->CloseMenu();
  if (chosen->Enabled()) {
    chosen->Click();
  } else {
    Print("disabled " + chosen->Name() + " " + Quote(chosen->ToolTipText()));
  }
}

// The entries as they stand, those of a submenu behind their own.
void Driver::DumpMenu(const Menu& menu, const std::string& indent) {
  for (const Control* child : menu.Children()) {
    const auto& entry = dynamic_cast<const Menu&>(*child);
    std::string line = indent + entry.Name() + " " + Quote(entry.Caption());
    if (!entry.Enabled()) line += " disabled " + Quote(entry.ToolTipText());
    Print(line);
    DumpMenu(entry, indent + "  ");
  }
}

// What a script can name below the control. A part that stands in several forms has a list of its
// own.
void Driver::DumpNames(const Control& control, const std::string& indent) {
  Print(indent + control.PathName() + " " + std::string(control.Kind()));
  const bool part = control.Kind() == "VorekReport1" || control.Kind() == "VorekParameters";
  if (part && !indent.empty()) return;
  for (const Control* const child : control.Children()) DumpNames(*child, indent + "  ");
}

void Driver::Dump(const Words& words) {
  Control& control = FindControl(Word(words, 1));
  if (const auto* const menu = dynamic_cast<Menu*>(&control)) {
    DumpMenu(*menu, "");
  } else if (const auto* const grid = dynamic_cast<Grid*>(&control)) {
    DumpGrid(*grid);
  } else {
    DumpNames(control, "");
  }
}

void Driver::DumpGrid(const Grid& grid) {
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    std::string line;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (col > 0) line += '\t';
      line += grid.TextMatrix(row, col);
    }
    Print(line);
  }
}

void Driver::Format(const Words& words) {
  const Grid& grid = FindGrid(words);
  const std::int32_t row = Number(words, 2);
  const std::int32_t col = Number(words, 3);
  const CellFormat format = grid.FormatAt(row, col);
  const std::int32_t alignment = format.alignment >= 0 ? format.alignment : grid.ColAlignment(col);
  Print("back=" + std::to_string(format.back_color) + " alignment=" + std::to_string(alignment) +
        " bold=" + property::ToText(format.bold) + " style=" + std::to_string(format.text_style) +
        " width=" + std::to_string(grid.ColWidth(col)) +
        " height=" + std::to_string(grid.RowHeight(row)));
}

void Driver::Events(const Words&) {
  const std::vector<std::string> events = std::exchange(events_, {});
  for (const std::string& event : events) Print(event);
}

void Driver::Expect(const Words& words) {
  const std::string expected = Word(words, 1);
  if (expected == last_line_) return;
  Refuse("expected " + Quote(expected) + ", the last line is " + Quote(last_line_));
}

void Driver::SetClock(const Words& words) { clock_->Fix(Word(words, 1)); }

void Driver::QueueFile(const Words& words) { files_->Queue(Word(words, 1)); }

void Driver::OfferComponent(const Words& words) {
  const std::string prog_id = Word(words, 1);
  components_->Add(prog_id, [this, prog_id](std::int32_t) {
    return std::make_unique<ScriptComponent>(prog_id,
                                             [this](const std::string& line) { Print(line); });
  });
}

void Driver::CancelAt(const Words& words) { stage_->CancelAt(Number(words, 1)); }

void Driver::QueueWorkbook(const Words& words) { documents_->Queue(Word(words, 1)); }

// A line a row: the rows of what was put there are parted by carriage returns.
void Driver::PrintClipboard(const Words&) {
  std::istringstream rows(clipboard_->Text());
  for (std::string row; std::getline(rows, row, '\r');) Print(row);
}

void Driver::PrintPages(const Words& words) {
  ReportContext context = report_->Impl().Context();
  const Grid& grid = context.ActiveGrid();
  const print::PrintedColumns columns(ColumnView(grid), grid);
  print::PageSetup setup = print::PaperFor(grid, columns);
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i] == "landscape" || words[i] == "portrait") {
      setup.landscape = words[i] == "landscape";
    } else if (words[i] == "all-wide") {
      setup.fit_width = false;
    } else {
      Refuse("unknown word " + words[i]);
    }
  }
  const print::GridPrint pages(context, columns, HeadingOf(context), setup);
  for (std::size_t page = 0; page < pages.PageCount(); ++page) {
    for (const std::string& line : print::TextsOfPage(pages, page)) Print(line);
  }
}

void Driver::CloseForm(const Words&) {
  Form* const form = stage_->UppermostForm();
  if (form == nullptr) Refuse("no form is open");
  form->CloseBox();
}

void Driver::PrintChart(const Words& words) {
  const bool turned = words.size() > 2 && words[2] == "turned";
  const ReportContext report = report_->Impl().Context();
  const ChartModel chart = ReadChart(report, ColumnView(report.ActiveGrid()), turned);
  for (const std::string& line : ChartLines(chart, Word(words, 1))) Print(line);
}

void Driver::PrintHead(const Words&) {
  const ReportHead head = HeadOf(report_->Impl().Context());
  Print(head.title);
  if (head.asked) Print(InWords(head.values));
}

// --- Completion
// ------------------------------------------------------------------------------------

namespace {

void AddPaths(const Control& control, const std::string& head, std::set<std::string>& words) {
  for (Control* child : control.Children()) {
    words.insert(child->Path());
    AddPaths(*child, head, words);
  }
}

}  // namespace

std::vector<std::string> Driver::Completions(const std::string& head, const std::string& word) {
  std::set<std::string> words;
  if (text::TrimView(head).empty()) {
    for (const auto& [name, command] : Commands()) words.insert(name);
    words.insert("when");
  } else if (head.starts_with("menu") && stage_->OpenMenu() != nullptr) {
    for (Control* entry : stage_->OpenMenu()->Children()) words.insert(entry->Name());
  } else {
    words.insert(report_->Root().Name());
    AddPaths(report_->Root(), head, words);
    const std::size_t dot = word.rfind('.');
    const std::string path = dot == std::string::npos ? "" : word.substr(0, dot);
    IgnoreErrors([&] {
      for (const std::string_view name : FindControl(path).PropertyNames()) {
        words.insert(path + "." + std::string(name));
      }
    });
  }
  std::vector<std::string> matching;
  std::copy_if(
      words.begin(), words.end(), std::back_inserter(matching),
      [&](const std::string& candidate) { return text::StartsWithIgnoreCase(candidate, word); });
  return matching;
}

}  // namespace vorek::drive
