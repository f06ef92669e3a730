#include <algorithm>
#include <cstdint>

#include "parameters/vorek_parameters.h"
#include "text/number.h"
#include "text/utf8.h"

// The building of the form. Cells are computed from the left and then turned over, so that column 0
// stands at the right edge.
namespace vorek {
namespace {

constexpr std::int32_t kNarrowestField = 2050;  // twips of a column behind its label

// A measure in twips. Throws Error(kOverflow) for spans beyond any screen.
std::int32_t Twips(std::int64_t value) { return text::ToInt32(static_cast<double>(value)); }

}  // namespace

bool VorekParameters::View(std::int32_t inReportID, std::string& roughSQL, std::int32_t new_width) {
  report_id_ = inReportID;
  dependencies_.Begin(inReportID);
  form_width_ = new_width;
  NameButtons();
  const std::size_t marker = roughSQL.find('@');
  const bool has_parameters = marker != std::string::npos && marker > 0;
  ListOfVisualParameters.clear();
  ListOfParameters.clear();
  query_ = roughSQL;
  userChoice = result = false;
  fields_.clear();
  lblNote.Unload(0);
  measures_.notes_height = 0;
  folded_ = false;
  values_.reset();
  widgets.Unload();
  ShowFold();
  if (text::TrimView(query_).empty()) return false;
  const bool stands = BuildForm();
  if (stands) BuildSettingsMenu();
  Resize();
  if (stands) return has_parameters;
  notices_.ShowMessage("اشکال", "اشکال پارامتر تعريف نشده");
  return false;
}

void VorekParameters::NameButtons() {
  cmdOk.SetCaption("تاييد");
  cmdNew.SetCaption("جديد");
  if (CancelVisible) cmdCancel.SetCaption("انصراف");
  cmdCancel.SetVisible(CancelVisible);
}

bool VorekParameters::BuildForm() {
  ReadMeasures();
  frame.SetWidth(form_width_ - 100);
  measures_.last_width = form_width_;
  std::string unknown = query_;
  for (const ParameterRow& row : ReadFormRows(process_.dten().rssqlGeneral1, report_id_)) {
    if (!Uses(row)) continue;
    AddParameterControl(row);
    unknown = text::ReplaceIgnoreCase(unknown, row.Marker(), "AtSignReplaced");
  }
  if (!fields_.empty()) fields_.front().widget->SetFocus();
  return !text::Contains(unknown, "@");
}

void VorekParameters::ReadMeasures() {
  Recordset& slot = process_.dten().rssqlGeneral1;
  measures_ = {};
  measures_.row_height = widgets.txt[0].Height() + 50;
  cells_ = {};
  cells_.columns = ReadColumnCount(slot, report_id_);
  tab_counter_ = 0;
  measures_.label_width =
      ReadLabelWidth(slot, report_id_, process_.windows(), measures_.column_width);
  if (measures_.column_width - measures_.label_width < kNarrowestField) {
    measures_.column_width = measures_.label_width + kNarrowestField;
  }
}

// A marker at the very end of the query has nothing behind it and isn't seen.
bool VorekParameters::Uses(const ParameterRow& row) const {
  const std::string marker = row.Marker();
  return text::ContainsIgnoreCase(query_, marker + ")") ||
         text::ContainsIgnoreCase(query_, marker + ",") ||
         text::ContainsIgnoreCase(query_, marker + " ");
}

void VorekParameters::AddParameterControl(const ParameterRow& row) {
  const ParameterKind* const kind = FindKind(row.control_type);
  if (kind == nullptr) return;
  if (!row.has_spans) {
    throw Error(ErrorNumber::kNullUse, "Report " + std::to_string(report_id_) + ", parameter " +
                                           row.Id() + ": ColSpan or RowSpan is NULL");
  }
  if (row.name.starts_with("از ") || row.name.starts_with("from ")) {
    cells_.BeginPair(row.col_span);
  }
  Control& widget = kind->load(widgets, row, GivenValue);
  const CellCursor::Cell next = cells_.Reserve(row.col_span + kind->extra_cells, row.row_span);
  Label& label = AddLabel(row, *kind, widget);
  PlaceWidget(row, *kind, widget);
  fields_.push_back({row, &widget, &label, widget.Top(), label.Top()});
  measures_.used_rows = cells_.UsedRows(next);
  LayoutButtons();
  cells_.current = next;
  ++tab_counter_;
  NumberButtons();
}

std::int32_t VorekParameters::CellLeft() const {
  return Twips(cells_.current.column * measures_.column_width + measures_.label_width);
}

std::int32_t VorekParameters::CellTop() const {
  return Twips(cells_.current.row * measures_.row_height);
}

Label& VorekParameters::AddLabel(const ParameterRow& row, const ParameterKind& kind,
                                 Control& widget) {
  Label& label = widgets.Load(widgets.lblDesc);
  label.SetCaption(row.description);
  label.SetWidth(process_.windows().TextWidth(row.description, 0));
  label.SetRightToLeft(true);
  label.SetVisible(row.visible);
  label.SetTag(row.Id());
  if (kind.array == "chk") {
    label.SetVisible(false);
    static_cast<CheckBox&>(widget).SetCaption(row.description);
  }
  IgnoreErrors([&] {
    label.SetLeft(CellLeft() - label.Width() + 50);
    label.SetTop(CellTop() + 100);
    Mirror(label);
  });
  return label;
}

void VorekParameters::PlaceWidget(const ParameterRow& row, const ParameterKind& kind,
                                  Control& widget) {
  widget.SetVisible(row.visible);
  widget.SetTag(row.Id());
  widget.SetToolTipText(row.name);
  if (kind.array != "cmb") widget.SetRightToLeft(true);
  widget.SetTabIndex(tab_counter_);
  widget.SetTabStop(true);
  ListenToKeys(widget);
  ListenToChanges(widget);
  IgnoreErrors([&] { widget.SetTop(CellTop() + (kind.array == "chk" ? 50 : 100)); });
  IgnoreErrors([&] {
    if (!kind.width_follows) return;
    const std::int64_t width = std::int64_t{measures_.column_width} * row.col_span;
    widget.SetWidth(Twips(width - measures_.label_width - 100));
  });
  IgnoreErrors([&] { widget.SetLeft(CellLeft() + 100); });
  IgnoreErrors([&] {
    if (!kind.height_follows || row.row_span == 1) return;
    widget.SetHeight(Twips(std::int64_t{row.row_span} * measures_.row_height - 50));
  });
  IgnoreErrors([&] { Mirror(widget); });
}

void VorekParameters::Mirror(Control& control) {
  control.SetLeft(Twips(std::int64_t{frame.Width()} - control.Width() - control.Left()));
}

void VorekParameters::NumberButtons() {
  cmdOk.SetTabIndex(tab_counter_);
  cmdNew.SetTabIndex(tab_counter_ + 1);
  if (CancelVisible) cmdCancel.SetTabIndex(tab_counter_ + 2);
  cmdFold.SetTabIndex(tab_counter_ + 3);
  for (Button* button : {&cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    if (button->Visible()) button->SetTabIndex(tab_counter_ + 2);
  }
}

void VorekParameters::LayoutButtons() {
  frame.SetTop(cmdOk.Height() + 100);
  frame.SetLeft(50);
  IgnoreErrors([&] {
    frame.SetHeight(
        Twips(measures_.used_rows * measures_.row_height + 100 + measures_.notes_height));
  });
  cmdCancel.SetLeft(50);
  if (CancelVisible) cmdCancel.SetTop(50);
  cmdNew.SetLeft(frame.Width() - cmdNew.Width());
  cmdNew.SetTop(cmdCancel.Top());
  const Button* last = &cmdNew;
  for (Button* button : {&cmdOk, &cmdSaveParameterConfig, &cmdLoadParameterConfig}) {
    button->SetTop(last->Top());
    button->SetLeft(last->Left() - button->Width());
    last = button;
  }
  cmdFold.SetLeft(CancelVisible ? cmdCancel.Left() + cmdCancel.Width() + 50 : 50);
  lblValues.SetLeft(cmdFold.Left() + cmdFold.Width() + 100);
  lblValues.SetWidth(std::max(Width() - lblValues.Left() - 100, 0));
  PlaceCaption();
  TakeHeight();
}

}  // namespace vorek
