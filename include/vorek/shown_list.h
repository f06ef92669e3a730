#ifndef VOREK_SHOWN_LIST_H_
#define VOREK_SHOWN_LIST_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The rows that a field offers to choose from, for a screen of a host's own: a selector, a list
// that is always open, a picker of records, a choice of several, a combo box. See shown_control.h
// for the root and the paths.
namespace vorek {

class Control;

struct ShownRow {
  std::int32_t key = 0;        // from the database; "#12" typed into the field means 12
  std::int32_t form_type = 0;  // of a record that a picker offers, "901:5" with its key; else 0
  std::string text;            // what a person reads
  std::string code;            // what he may know it by too; "" for a list without codes
  bool chosen = false;
};

struct ShownList {
  std::vector<ShownRow> rows;  // the first ones, at most 500 but of a combo box, which has all
  bool more = false;           // there are more than these: a search finds them
  bool several = false;        // any number of them can be chosen
  std::string error;           // why it couldn't be read, in the database's words; "" if it was
};

// The rows that the field holds, read by the calls below or found for a text that several rows fit.
// It reads nothing itself. None if there is no such field or it has no list.
std::optional<ShownList> ListOf(Control& root, std::string_view path);

// What a user does with a list. None, or false, and nothing happens, if there is no such field, if
// it or what it stands in is disabled or hidden, or if its kind takes no such thing.
//
// Opens the list: reads its first rows anew. Nothing is chosen by it, so that there is nothing to
// take back when a user turns away.
std::optional<ShownList> OpenList(Control& root, std::string_view path);
// Finds the rows whose text or code holds this one, as it is: no sign in it stands for others. A
// blank one opens the list. None for a combo box.
std::optional<ShownList> SearchList(Control& root, std::string_view path, const std::string& text);

// Chooses a row that the field holds, the one with this key, form type, text and code; in a choice
// of several it comes to those that are chosen. With `chosen` false it is taken out of them, also
// out of all, which leaves the others; any other field lets a row go by an empty text (TypeInto).
// True as well if it is as wanted already. False for a row that isn't held any more, since
// another list was read, and where the program has fixed the choice.
//
// Throws Error(kInvalidCall), in Persian, where a row is to be taken out of all of more than 5000,
// and what the database throws while these are read; the choice is the one before.
bool ChooseRow(Control& root, std::string_view path, const ShownRow& row, bool chosen = true);

// In a choice of several: all rows, read or not, or none of them. Both set no restriction.
bool ChooseAll(Control& root, std::string_view path, bool chosen = true);

}  // namespace vorek

#endif  // VOREK_SHOWN_LIST_H_
