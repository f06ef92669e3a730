#include "adapters/xlsx/sheet_cells.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "adapters/xlsx/sheet_xml.h"
#include "adapters/xlsx/xml_tree.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"

namespace vorek::xlsx {
namespace {

using Kind = SheetCell::Kind;

constexpr std::size_t kFull = std::size_t{1} << 16U;
constexpr std::uint32_t kMostShared = 100000;  // numbers of shared formulas

// The number at the head of an attribute; `missing` for none.
std::int64_t NumberOf(const pugi::xml_attribute& attribute, std::int64_t missing) {
  const std::string_view text = attribute.value();
  std::int64_t number = missing;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string AttributesBut(const pugi::xml_node& node,
                          std::initializer_list<std::string_view> left) {
  std::string all;
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (std::find(left.begin(), left.end(), attribute.name()) != left.end()) continue;
    all.append(" ").append(attribute.name()).append("=\"");
    AppendXml(attribute.value(), all);
    all += '"';
  }
  return all;
}

Kind KindOf(std::string_view type) {
  if (type == "s") return Kind::kShared;
  if (type == "str") return Kind::kString;
  if (type == "inlineStr") return Kind::kRich;
  if (type == "b") return Kind::kBoolean;
  if (type == "e") return Kind::kError;
  if (type == "d") return Kind::kDate;
  return Kind::kNumber;
}

std::string_view TypeOf(Kind kind) {
  switch (kind) {
    case Kind::kShared:
      return " t=\"s\"";
    case Kind::kInline:
    case Kind::kRich:
      return " t=\"inlineStr\"";
    case Kind::kString:
      return " t=\"str\"";
    case Kind::kBoolean:
      return " t=\"b\"";
    case Kind::kError:
      return " t=\"e\"";
    case Kind::kDate:
      return " t=\"d\"";
    default:
      return {};
  }
}

bool Before(const SheetRow& row, std::int32_t number) { return row.number < number; }
bool Left(const SheetCell& cell, std::int32_t column) { return cell.column < column; }

}  // namespace

SheetCells::SheetCells(const pugi::xml_node& sheet_data, Question question)
    : question_(std::move(question)), formulas_(1) {
  std::int32_t number = 0;
  for (const pugi::xml_node& row : sheet_data.children()) {
    AskAt(rows_.size());
    if (LocalName(row) == "row") ReadRow(row, number);
  }
  const auto before = [](const SheetRow& a, const SheetRow& b) { return a.number < b.number; };
  std::stable_sort(rows_.begin(), rows_.end(), before);
  const auto same = [](const SheetRow& a, const SheetRow& b) { return a.number == b.number; };
  if (std::adjacent_find(rows_.begin(), rows_.end(), same) != rows_.end()) {
    throw Error(ErrorNumber::kInvalidCall, "يك سطر برگه دو بار آمده است.");
  }
  shared_.clear();
  shared_.shrink_to_fit();
}

void SheetCells::ReadRow(const pugi::xml_node& row, std::int32_t& number) {
  const std::int64_t told = NumberOf(row.attribute("r"), number + 1);
  if (told < 1 || told > WorkbookLimits::kRows) {
    throw Error(ErrorNumber::kInvalidCall, "شماره سطر برگه نادرست است.");
  }
  number = static_cast<std::int32_t>(told);
  SheetRow read{number, AttributesBut(row, {"r", "spans"}), {}};
  std::int32_t column = 0;
  for (const pugi::xml_node& cell : row.children()) {
    if (LocalName(cell) == "c") ReadCell(cell, number, column, read);
  }
  std::stable_sort(read.cells.begin(), read.cells.end(),
                   [](const SheetCell& a, const SheetCell& b) { return a.column < b.column; });
  rows_.push_back(std::move(read));
}

void SheetCells::ReadCell(const pugi::xml_node& cell, std::int32_t row, std::int32_t& column,
                          SheetRow& into) {
  ++column;
  if (const pugi::xml_attribute place = cell.attribute("r")) {
    const std::optional<Area> area = ReadArea(place.value());
    if (!area) throw Error(ErrorNumber::kInvalidCall, "جاي خانه اي از برگه نادرست است.");
    column = area->left;
  }
  SheetCell read;
  read.column = column;
  read.styled = static_cast<bool>(cell.attribute("s"));
  read.style = static_cast<std::uint32_t>(NumberOf(cell.attribute("s"), 0));
  const pugi::xml_node value = ChildOf(cell, "v");
  const pugi::xml_node rich = ChildOf(cell, "is");
  if (rich && !ChildOf(rich, "r")) {
    read.kind = Kind::kInline;
    read.value = ReadSheetText(ChildOf(rich, "t").text().get());
  } else if (rich) {
    read.kind = Kind::kRich;
    read.value = PrintXml(rich);
  } else if (value) {
    read.kind = KindOf(cell.attribute("t").value());
    read.value = value.text().get();
  }
  if (const pugi::xml_node formula = ChildOf(cell, "f")) ReadFormula(formula, row, read);
  into.cells.push_back(std::move(read));
}

void SheetCells::ReadFormula(const pugi::xml_node& formula, std::int32_t row, SheetCell& cell) {
  const std::string_view type = formula.attribute("t").value();
  SheetFormula read;
  read.text = formula.text().get();
  if (type == "shared") {
    const auto number = static_cast<std::uint64_t>(NumberOf(formula.attribute("si"), 0));
    if (number >= kMostShared) {
      throw Error(ErrorNumber::kInvalidCall, "شماره فرمول مشترك برگه نادرست است.");
    }
    if (number >= shared_.size()) shared_.resize(number + 1);
    Shared& shared = shared_[number];
    if (!read.text.empty()) {
      shared = {read.text, row, cell.column};
    } else {
      read.text = ShiftFormula(shared.text, row - shared.row, cell.column - shared.column);
    }
  } else if (!type.empty() && type != "normal") {
    read.attributes = AttributesBut(formula, {"ref"});
    read.area = formula.attribute("ref").value();
  }
  if (read.text.empty() && read.attributes.empty()) return;
  cell.formula = static_cast<std::uint32_t>(formulas_.size());
  formulas_.push_back(std::move(read));
}

std::size_t SheetCells::IndexOf(std::int32_t row) const {
  // Passes go from row to row.
  for (std::size_t at = last_; at < rows_.size() && at <= last_ + 1; ++at) {
    if (rows_[at].number == row) return last_ = at;
  }
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), row, Before);
  return last_ = static_cast<std::size_t>(found - rows_.begin());
}

const SheetCell* SheetCells::Find(std::int32_t row, std::int32_t column) const {
  const std::size_t index = IndexOf(row);
  if (index >= rows_.size() || rows_[index].number != row) return nullptr;
  const std::vector<SheetCell>& cells = rows_[index].cells;
  const auto found = std::lower_bound(cells.begin(), cells.end(), column, Left);
  return found != cells.end() && found->column == column ? &*found : nullptr;
}

std::int32_t SheetCells::LastColumn(std::int32_t row) const {
  const std::size_t index = IndexOf(row);
  const bool there = index < rows_.size() && rows_[index].number == row;
  return !there || rows_[index].cells.empty() ? 0 : rows_[index].cells.back().column;
}

SheetCell& SheetCells::At(std::int32_t row, std::int32_t column) {
  const std::size_t index = IndexOf(row);
  if (index >= rows_.size() || rows_[index].number != row) {
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(index), SheetRow{row, {}, {}});
  }
  std::vector<SheetCell>& cells = rows_[index].cells;
  auto found = std::lower_bound(cells.begin(), cells.end(), column, Left);
  if (found == cells.end() || found->column != column) {
    found = cells.insert(found, SheetCell());
    found->column = column;
  }
  return *found;
}

void SheetCells::SetFormula(SheetCell& cell, std::string text) {
  cell.kind = Kind::kEmpty;
  cell.value.clear();
  if (cell.formula == 0) {
    cell.formula = static_cast<std::uint32_t>(formulas_.size());
    formulas_.emplace_back();
  }
  formulas_[cell.formula].text = std::move(text);
}

void SheetCells::MoveFormulas(const RowMove& move, std::string_view sheet, bool own) {
  for (SheetFormula& formula : formulas_) {
    if (!formula.text.empty()) formula.text = MoveFormula(formula.text, move, sheet, own);
    if (!own || formula.area.empty()) continue;
    const std::optional<Area> area = ReadArea(formula.area);
    const std::optional<Area> moved = area ? MoveArea(*area, move) : std::nullopt;
    if (moved) formula.area = AreaText(*moved);
  }
}

SheetRow SheetCells::CopyOf(const SheetRow& row, std::int32_t number) {
  SheetRow copy = row;
  copy.number = number;
  const std::int32_t down = number - row.number;
  for (SheetCell& cell : copy.cells) {
    if (cell.formula == 0) continue;
    SheetFormula formula = formulas_[cell.formula];
    formula.text = ShiftFormula(formula.text, down, 0);
    if (!formula.area.empty()) formula.area = ShiftFormula(formula.area, down, 0);
    cell.formula = static_cast<std::uint32_t>(formulas_.size());
    formulas_.push_back(std::move(formula));
  }
  return copy;
}

void SheetCells::InsertCopies(std::int32_t row, const RowMove& move, std::string_view sheet) {
  MoveFormulas(move, sheet, true);
  const std::size_t index = IndexOf(move.at);
  for (std::size_t i = index; i < rows_.size(); ++i) rows_[i].number += move.count;
  const std::int32_t moved_row = row >= move.at ? row + move.count : row;
  last_ = 0;
  const std::size_t from = IndexOf(moved_row);
  if (from >= rows_.size() || rows_[from].number != moved_row) return;
  const SheetRow source = rows_[from];
  std::vector<SheetRow> copies;
  copies.reserve(static_cast<std::size_t>(move.count));
  for (std::int32_t i = 0; i < move.count; ++i) {
    AskAt(copies.size());
    copies.push_back(CopyOf(source, move.at + i));
  }
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(index),
               std::make_move_iterator(copies.begin()), std::make_move_iterator(copies.end()));
}

void SheetCells::DeleteRow(const RowMove& move, std::string_view sheet) {
  std::erase_if(rows_, [&](const SheetRow& row) { return row.number == move.at; });
  MoveFormulas(move, sheet, true);
  for (SheetRow& row : rows_) row.number -= row.number > move.at ? 1 : 0;
  last_ = 0;
}

void SheetCells::WriteCell(const SheetCell& cell, const std::string& row, const std::string& prefix,
                           std::string& out) const {
  out.append("<").append(prefix).append("c r=\"");
  AppendColumnName(cell.column, out);
  out.append(row).append("\"");
  if (cell.styled) {
    out += " s=\"";
    AppendNumber(cell.style, out);
    out += '"';
  }
  // A formula's value is the reader's to calculate.
  const bool has_formula = cell.formula != 0;
  if (!has_formula) out += TypeOf(cell.kind);
  if (!has_formula && cell.kind == Kind::kEmpty) {
    out += "/>";
    return;
  }
  out += '>';
  if (has_formula) {
    const SheetFormula& formula = formulas_[cell.formula];
    out.append("<").append(prefix).append("f").append(formula.attributes);
    if (!formula.area.empty()) out.append(" ref=\"").append(formula.area).append("\"");
    out += '>';
    AppendXml(formula.text, out);
    out.append("</").append(prefix).append("f>");
  } else if (cell.kind == Kind::kRich) {
    out += cell.value;
  } else if (cell.kind == Kind::kInline) {
    out.append("<").append(prefix).append("is><").append(prefix).append(
        "t xml:space=\"preserve\">");
    AppendSheetText(cell.value, out);
    out.append("</").append(prefix).append("t></").append(prefix).append("is>");
  } else {
    out.append("<").append(prefix).append("v>");
    AppendXml(cell.value, out);
    out.append("</").append(prefix).append("v>");
  }
  out.append("</").append(prefix).append("c>");
}

void SheetCells::Write(const std::string& prefix, const Sink& out) const {
  std::string buffer = "<" + prefix + "sheetData>";
  std::string number;
  for (const SheetRow& row : rows_) {
    number.clear();
    AppendNumber(row.number, number);
    buffer.append("<").append(prefix).append("row r=\"").append(number).append("\"");
    buffer.append(row.attributes).append(">");
    for (const SheetCell& cell : row.cells) WriteCell(cell, number, prefix, buffer);
    buffer.append("</").append(prefix).append("row>");
    if (buffer.size() < kFull) continue;
    out(buffer);
    buffer.clear();
  }
  out(buffer + "</" + prefix + "sheetData>");
}

}  // namespace vorek::xlsx
