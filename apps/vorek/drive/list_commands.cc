#include "drive/by_user.h"
#include "drive/commands.h"
#include "drive/targets.h"
#include "vorek/shown_list.h"

namespace vorek::drive {
namespace {

// "* 901:5  a code  a name", with the mark of a row that is chosen.
std::string LineOf(const ShownRow& row) {
  std::string line = row.chosen ? "* " : "  ";
  if (row.form_type != 0) line += std::to_string(row.form_type) + ":";
  line += std::to_string(row.key) + "  ";
  if (!row.code.empty()) line += row.code + "  ";
  return line + row.text;
}

void PrintList(Session& session, const ShownList& list) {
  if (!list.error.empty()) session.Print("error " + Quote(list.error));
  for (const ShownRow& row : list.rows) session.Print(LineOf(row));
  if (list.more) session.Print("...");
}

void List(Session& session, const Words& words) {
  const UserTarget target(FindControl(session, Word(words, 1)));
  const std::optional<ShownList> list = words.size() > 2
                                            ? SearchList(target.root, target.path, words[2])
                                            : OpenList(target.root, target.path);
  MustBeDone(list.has_value(), words);
  PrintList(session, *list);
}

// The row of that number among those that the field holds.
bool ChooseNumber(const UserTarget& target, std::int32_t number, bool chosen) {
  const std::optional<ShownList> held = ListOf(target.root, target.path);
  const auto count = static_cast<std::int32_t>(held ? held->rows.size() : 0);
  if (number < 0 || number >= count) Refuse("the list has no row " + std::to_string(number));
  const ShownRow& row = held->rows[static_cast<std::size_t>(number)];
  return ChooseRow(target.root, target.path, row, chosen);
}

void Take(Session& session, const Words& words, bool chosen) {
  const UserTarget target(FindControl(session, Word(words, 1)));
  MustBeDone(Word(words, 2) == "all" ? ChooseAll(target.root, target.path, chosen)
                                     : ChooseNumber(target, Number(words, 2), chosen),
             words);
}

void Choose(Session& session, const Words& words) { Take(session, words, true); }

void Drop(Session& session, const Words& words) { Take(session, words, false); }

}  // namespace

Commands ListCommands() { return {{"list", List}, {"choose", Choose}, {"drop", Drop}}; }

}  // namespace vorek::drive
