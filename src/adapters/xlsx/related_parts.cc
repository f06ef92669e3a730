#include "adapters/xlsx/related_parts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "adapters/xlsx/xml_tree.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek::xlsx {
namespace {

void SetText(pugi::xml_node node, const std::string& text) { node.text().set(text.c_str()); }

void MoveTextFormula(pugi::xml_node& node, const RowMove& move, std::string_view sheet) {
  const std::string text = node.text().get();
  const std::string moved = MoveFormula(text, move, sheet, false);
  if (moved != text) SetText(node, moved);
}

// A row counted from 0, as anchors have it.
int PlaceFromZero(int row, const RowMove& move) {
  return move.Place(row + 1).value_or(row + 1) - 1;
}

void MoveAnchor(const pugi::xml_node& anchor, const RowMove& move) {
  const std::string_view held = anchor.attribute("editAs").value();
  if (held == "absolute") return;
  pugi::xml_node from = ChildOf(ChildOf(anchor, "from"), "row");
  pugi::xml_node to = ChildOf(ChildOf(anchor, "to"), "row");
  const int old = from.text().as_int();
  const int now = PlaceFromZero(old, move);
  from.text().set(now);
  if (!to) return;
  // One that keeps its size goes as its first cell does.
  const int end = to.text().as_int();
  to.text().set(held == "oneCell" ? end + now - old : PlaceFromZero(end, move));
}

void MoveRef(pugi::xml_node node, const RowMove& move) {
  pugi::xml_attribute ref = node.attribute("ref");
  const std::optional<Area> area = ReadArea(ref.value());
  if (!area) return;
  if (const std::optional<Area> moved = MoveArea(*area, move)) {
    ref.set_value(AreaText(*moved).c_str());
  }
}

// "0, 15, 4, 2, 2, 15, 8, 4": columns and rows of two corners, each with an offset.
std::string MovedBox(const std::string& text, const RowMove& move) {
  std::array<int, 8> numbers{};
  std::size_t at = 0;
  for (int& number : numbers) {
    number = static_cast<int>(text::NumericPrefix(std::string_view(text).substr(at)));
    at = std::min(text.find(',', at), text.size() - 1) + 1;
  }
  const int top = numbers[2];
  numbers[2] = PlaceFromZero(top, move);
  numbers[6] += numbers[2] - top;
  std::string moved;
  for (const int number : numbers) moved += (moved.empty() ? "" : ", ") + std::to_string(number);
  return moved;
}

}  // namespace

void MoveDefinedNames(pugi::xml_node workbook, const RowMove& move, std::string_view sheet) {
  for (pugi::xml_node name : ChildOf(workbook, "definedNames").children()) {
    MoveTextFormula(name, move, sheet);
  }
}

void MoveAnchors(pugi::xml_node drawing, const RowMove& move) {
  for (const pugi::xml_node& anchor : drawing.children()) {
    if (ChildOf(anchor, "from")) MoveAnchor(anchor, move);
  }
}

void MoveComments(pugi::xml_node comments, const RowMove& move) {
  std::vector<pugi::xml_node> gone;
  ForEachElement(comments, [&](pugi::xml_node& node) {
    const std::optional<Area> area = ReadArea(node.attribute("ref").value());
    if (!area) return;
    if (!MoveArea(*area, move)) {
      gone.push_back(node);
    } else {
      MoveRef(node, move);
    }
  });
  for (pugi::xml_node& node : gone) node.parent().remove_child(node);
}

void MoveBoxes(pugi::xml_node vml, const RowMove& move) {
  ForEachElement(vml, [&](pugi::xml_node& node) {
    if (LocalName(node) == "Row") {
      SetText(node, std::to_string(PlaceFromZero(node.text().as_int(), move)));
    } else if (LocalName(node) == "Anchor") {
      SetText(node, MovedBox(node.text().get(), move));
    }
  });
}

void MoveTable(pugi::xml_node table, const RowMove& move, std::string_view sheet) {
  ForEachElement(table, [&](pugi::xml_node& node) {
    MoveRef(node, move);
    if (text::EndsWithIgnoreCase(LocalName(node), "Formula")) MoveTextFormula(node, move, sheet);
  });
}

void MovePivotSource(pugi::xml_node cache, const RowMove& move, std::string_view sheet) {
  ForEachElement(cache, [&](pugi::xml_node& node) {
    if (LocalName(node) != "worksheetSource") return;
    if (text::EqualsIgnoreCase(node.attribute("sheet").value(), sheet)) MoveRef(node, move);
  });
}

void MoveChart(pugi::xml_node chart, const RowMove& move, std::string_view sheet) {
  ForEachElement(chart, [&](pugi::xml_node& node) {
    if (LocalName(node) == "f") MoveTextFormula(node, move, sheet);
  });
}

void DropChartValues(pugi::xml_node chart) {
  std::vector<pugi::xml_node> caches;
  ForEachElement(chart, [&](pugi::xml_node& node) {
    const std::string_view name = LocalName(node);
    const bool kept = name == "numCache" || name == "strCache" || name == "multiLvlStrCache";
    if (kept && ChildOf(node.parent(), "f")) caches.push_back(node);
  });
  for (pugi::xml_node& cache : caches) cache.parent().remove_child(cache);
}

}  // namespace vorek::xlsx
