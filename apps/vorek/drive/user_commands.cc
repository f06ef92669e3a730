#include "drive/by_user.h"
#include "drive/commands.h"
#include "drive/targets.h"
#include "vorek/shown_control.h"
#include "widgets/form.h"
#include "widgets/typed_control.h"

namespace vorek::drive {
namespace {

// The mouse goes down on a cell of a grid.
void PressOnGrid(Grid& grid, const Words& words) {
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

// What the mouse is on; a cell of a grid has it pressed.
Control& Pressed(Session& session, const Words& words) {
  Control& control = FindControl(session, Word(words, 1));
  auto* const grid = dynamic_cast<Grid*>(&control);
  if (grid != nullptr && CanReach(control)) PressOnGrid(*grid, words);
  return control;
}

void Click(Session& session, const Words& words) {
  const UserTarget target(Pressed(session, words));
  MustBeDone(Press(target.root, target.path), words);
}

void DblClick(Session& session, const Words& words) {
  Control& control = Pressed(session, words);
  MustBeDone(CanReach(control), words);
  control.DblClick();
}

void Key(Session& session, const Words& words) {
  const UserTarget target(FindControl(session, Word(words, 1)));
  const std::int32_t key = Number(words, 2);
  MustBeDone(PressKey(target.root, target.path, key, OptionalNumber(words, 3, 0)), words);
}

// A text that a field doesn't take is no failure of the script: its user can go on.
void Type(Session& session, const Words& words) {
  Control& control = FindControl(session, Word(words, 1));
  const UserTarget target(control);
  MustBeDone(TypeInto(target.root, target.path, Word(words, 2)), words);
  const auto* const typed = dynamic_cast<const TypedControl*>(&control);
  if (typed != nullptr && typed->Refuses()) {
    session.Print("refused " + control.PathName() + ": " + typed->Refusal());
  }
}

void Move(Session& session, const Words& words) {
  Grid& grid = FindGrid(session, words);
  grid.PointAt(Number(words, 2), Number(words, 3));
  grid.MouseMove(0, 0, 0, 0);
}

void Select(Session& session, const Words& words) {
  const std::int32_t row = Number(words, 2);
  const std::int32_t col = Number(words, 3);
  FindGrid(session, words)
      .SelectByUser(row, col, OptionalNumber(words, 4, row), OptionalNumber(words, 5, col));
}

void CloseForm(Session& session, const Words&) {
  Form* const form = session.stage->UppermostForm();
  if (form == nullptr) Refuse("no form is open");
  form->CloseBox();
}

}  // namespace

Commands UserCommands() {
  return {{"click", Click}, {"dblclick", DblClick}, {"key", Key},        {"type", Type},
          {"move", Move},   {"select", Select},     {"close", CloseForm}};
}

}  // namespace vorek::drive
