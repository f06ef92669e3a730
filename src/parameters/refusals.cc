#include <algorithm>
#include <map>

#include "parameters/vorek_parameters.h"
#include "text/number.h"
#include "widgets/typed_control.h"

// Texts that fields don't take: they stop the confirmation, and each is told in a line of its own
// below its field, for which everything below moves down.
namespace vorek {
namespace {

constexpr std::int32_t kLine = 285;            // twips, of a line of a note
constexpr std::int32_t kGap = 30;              // between a field and its note
constexpr std::int32_t kMargin = 50;           // around a cell
constexpr std::int32_t kNoteColor = 0x2020B8;  // a dark red

const TypedControl* Refusing(const Control* widget) {
  const auto* const typed = dynamic_cast<const TypedControl*>(widget);
  return typed != nullptr && typed->Refuses() && typed->Visible() ? typed : nullptr;
}

}  // namespace

Control* VorekParameters::RefusedField() const {
  for (const Field& field : fields_) {
    if (Refusing(field.widget) != nullptr) return field.widget;
  }
  return nullptr;
}

void VorekParameters::PlaceNotes() {
  lblNote.Unload(0);
  std::map<std::int32_t, std::int32_t> heights;  // of notes, by the lower edge of their fields
  for (const Field& field : fields_) {
    if (const TypedControl* const typed = Refusing(field.widget)) {
      Label& note = AddNote(field, typed->Refusal());
      std::int32_t& height = heights[field.top + field.widget->Height()];
      height = std::max(height, note.Height() + kGap);
    }
  }
  // How far down everything at that place has moved, notes at the same place not counted.
  const auto moved = [&heights](std::int32_t top) {
    std::int32_t sum = 0;
    for (const auto& [edge, height] : heights) sum += edge < top ? height : 0;
    return sum;
  };
  for (const Field& field : fields_) {
    field.widget->SetTop(field.top + moved(field.top));
    field.label->SetTop(field.label_top + moved(field.label_top));
  }
  for (std::size_t i = 0; i < lblNote.Size(); ++i) {
    lblNote[i].SetTop(lblNote[i].Top() + moved(lblNote[i].Top()));
  }
  measures_.notes_height = 0;
  for (const auto& [edge, height] : heights) measures_.notes_height += height;
  LayoutButtons();
  if (on_content_change) on_content_change();
}

// The note stands on the field's lower edge: below the field and the free part of its cell if that
// is enough, else below the label too, in as many lines as it needs.
Label& VorekParameters::AddNote(const Field& field, const std::string& text) {
  const Control& widget = *field.widget;
  const std::int32_t right = widget.Left() + widget.Width();
  const std::int32_t cell_right = right + measures_.label_width - kMargin;
  const std::int32_t cell_left =
      std::min(widget.Left(), right + measures_.label_width + kMargin - measures_.column_width);
  // Words that wrap leave a part of each line empty.
  const std::int32_t wanted = text::ToInt32(process_.windows().TextWidth(text, 0) * 1.15) + kMargin;
  const bool fits = wanted <= right - cell_left;
  const std::int32_t width = fits ? std::max(wanted, widget.Width()) : cell_right - cell_left;
  const std::int32_t lines = fits ? 1 : (wanted + width - 1) / width;
  Label& note = lblNote.Load();
  note.SetRightToLeft(true);
  note.SetForeColor(kNoteColor);
  note.SetTag(field.row.Id() + " note");
  note.SetCaption(text);
  note.Move(fits ? right - width : cell_left, field.top + widget.Height(), width, lines * kLine);
  return note;
}

}  // namespace vorek
