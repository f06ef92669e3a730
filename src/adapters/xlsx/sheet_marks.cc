#include "adapters/xlsx/sheet_marks.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "adapters/xlsx/sheet_xml.h"
#include "adapters/xlsx/xml_tree.h"

namespace vorek::xlsx {
namespace {

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Elements of a sheet that stay where they are: its cells, and what the user last looked at.
bool StaysPut(const pugi::xml_node& node) {
  return IsOneOf(LocalName(node), {"sheetData", "sheetViews"});
}

bool HoldsFormula(const pugi::xml_node& node) {
  return IsOneOf(LocalName(node), {"formula", "formula1", "formula2", "f"});
}

std::vector<Area> ReadAreas(std::string_view text) {
  std::vector<Area> areas;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    if (const std::optional<Area> area = ReadArea(text.substr(at, end - at))) {
      areas.push_back(*area);
    }
    at = end + 1;
  }
  return areas;
}

std::string AreasText(const std::vector<Area>& areas) {
  std::string text;
  for (const Area& area : areas) text += (text.empty() ? "" : " ") + AreaText(area);
  return text;
}

// The rows that a move has made, and the one that they are copies of.
struct Copies {
  const RowMove& move;
  std::int32_t source = 0;  // after the move; 0 for none

  bool Hold(const Area& area) const {
    return source > 0 && area.top <= source && area.bottom >= source;
  }
  void Stretch(Area& area) const {
    area.top = std::min(area.top, move.at);
    area.bottom = std::max(area.bottom, move.at + move.count - 1);
  }
};

std::vector<Area> Moved(std::string_view text, const Copies& copies, bool stretch) {
  std::vector<Area> moved;
  for (const Area& area : ReadAreas(text)) {
    std::optional<Area> now = MoveArea(area, copies.move);
    if (!now) continue;
    if (stretch && copies.Hold(*now)) copies.Stretch(*now);
    moved.push_back(*now);
  }
  return moved;
}

std::int32_t TopOf(const std::vector<Area>& areas) {
  std::int32_t top = 0;
  for (const Area& area : areas) top = top == 0 ? area.top : std::min(top, area.top);
  return top;
}

// Formulas of a format count from the first row of its cells: when that has moved up, they do.
void ShiftRules(const pugi::xml_node& node, std::int32_t rows) {
  if (rows == 0) return;
  ForEachElement(node, [rows](pugi::xml_node& element) {
    if (!HoldsFormula(element)) return;
    element.text().set(ShiftFormula(element.text().get(), rows, 0).c_str());
  });
}

void MoveBreak(pugi::xml_node node, const RowMove& move) {
  // A break belongs to the row below it.
  const auto place = move.Place(node.attribute("id").as_int() + 1);
  if (place) node.attribute("id").set_value(*place - 1);
}

// One copy of an element for each of the new rows, if it is of the copied row alone.
void RepeatInRows(pugi::xml_node node, const Area& area, const Copies& copies) {
  if (area.top != copies.source || area.bottom != copies.source) return;
  pugi::xml_node parent = node.parent();
  for (std::int32_t i = 0; i < copies.move.count; ++i) {
    pugi::xml_node copy = parent.append_copy(node);
    const std::int32_t row = copies.move.at + i;
    copy.attribute("ref").set_value(AreaText({row, area.left, row, area.right}).c_str());
  }
}

class MarkMover {
 public:
  MarkMover(const RowMove& move, std::int32_t source) : copies_{move, source} {}

  void Take(pugi::xml_node& node) {
    const std::string_view name = LocalName(node);
    if (name == "brk") {
      if (LocalName(node.parent()) == "rowBreaks") MoveBreak(node, copies_.move);
    } else if (name == "sqref") {
      TakeAreas(node, node.text().get(),
                [&](const std::string& text) { node.text().set(text.c_str()); });
    } else {
      for (const char* const attribute : {"ref", "sqref"}) TakeAttribute(node, attribute);
    }
  }

  // What has no cells any more goes, and single-row elements of the copied row are repeated.
  void Finish() {
    for (pugi::xml_node& node : repeated_) {
      if (const auto area = ReadArea(node.attribute("ref").value())) {
        RepeatInRows(node, *area, copies_);
      }
    }
    for (pugi::xml_node& node : gone_) node.parent().remove_child(node);
  }

 private:
  template <typename Put>
  void TakeAreas(pugi::xml_node& node, const std::string& text, const Put& put) {
    const bool stretch =
        IsOneOf(LocalName(node), {"conditionalFormatting", "dataValidation", "sqref"});
    const std::vector<Area> areas = Moved(text, copies_, stretch);
    if (areas.empty()) {
      if (IsOneOf(LocalName(node), {"mergeCell", "hyperlink", "conditionalFormatting",
                                    "dataValidation", "protectedRange", "ignoredError"})) {
        gone_.push_back(node);
      }
      return;
    }
    // A format of the extended kind names its cells below itself.
    const pugi::xml_node rules = LocalName(node) == "sqref" ? node.parent() : node;
    if (stretch) ShiftRules(rules, TopOf(areas) - TopOf(Moved(text, copies_, false)));
    put(AreasText(areas));
    if (IsOneOf(LocalName(node), {"mergeCell", "hyperlink"}) && copies_.source > 0) {
      repeated_.push_back(node);
    }
  }

  void TakeAttribute(pugi::xml_node& node, const char* name) {
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute || ReadAreas(attribute.value()).empty()) return;
    TakeAreas(node, attribute.value(),
              [&](const std::string& text) { attribute.set_value(text.c_str()); });
  }

  Copies copies_;
  std::vector<pugi::xml_node> gone_;
  std::vector<pugi::xml_node> repeated_;
};

void CountMerged(const pugi::xml_node& sheet) {
  pugi::xml_node merged = ChildOf(sheet, "mergeCells");
  if (!merged) return;
  const auto count = std::distance(merged.begin(), merged.end());
  if (count == 0) {
    merged.parent().remove_child(merged);
  } else if (pugi::xml_attribute told = merged.attribute("count")) {
    told.set_value(static_cast<long long>(count));
  }
}

}  // namespace

void MoveMarkFormulas(pugi::xml_node sheet, const RowMove& move, std::string_view name, bool own) {
  for (const pugi::xml_node& part : sheet.children()) {
    if (StaysPut(part)) continue;
    ForEachElement(part, [&](pugi::xml_node& node) {
      if (HoldsFormula(node)) {
        node.text().set(MoveFormula(node.text().get(), move, name, own).c_str());
      } else if (pugi::xml_attribute location = node.attribute("location")) {
        location.set_value(MoveFormula(location.value(), move, name, own).c_str());
      }
    });
  }
}

void MoveSheetMarks(pugi::xml_node sheet, const RowMove& move, std::string_view name,
                    std::int32_t copied) {
  MoveMarkFormulas(sheet, move, name, true);
  MarkMover mover(move, copied > 0 ? move.Place(copied).value_or(0) : 0);
  for (const pugi::xml_node& part : sheet.children()) {
    if (StaysPut(part)) continue;
    ForEachElement(part, [&](pugi::xml_node& node) { mover.Take(node); });
  }
  mover.Finish();
  CountMerged(sheet);
}

}  // namespace vorek::xlsx
