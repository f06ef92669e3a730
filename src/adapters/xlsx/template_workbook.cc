#include "adapters/xlsx/template_workbook.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "adapters/xlsx/related_parts.h"
#include "adapters/xlsx/sheet_marks.h"
#include "adapters/xlsx/sheet_xml.h"
#include "adapters/xlsx/xml_tree.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::xlsx {
namespace {

using Kind = SheetCell::Kind;

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr const char* kContentTypes = "[Content_Types].xml";
constexpr std::uint32_t kTextFormat = 49;

std::string LastWord(const std::string& type) { return type.substr(type.rfind('/') + 1); }

// The text of a string with its runs, without what tells how it is read aloud.
std::string StringText(const pugi::xml_node& node) {
  std::string text;
  for (const pugi::xml_node& child : node.children()) {
    if (LocalName(child) == "t") text += child.text().get();
    if (LocalName(child) == "r") text += ChildOf(child, "t").text().get();
  }
  return ReadSheetText(text);
}

std::string RichText(const std::string& xml) {
  pugi::xml_document tree;
  return ParseXml(xml, tree) ? StringText(tree.document_element()) : std::string();
}

std::string PrefixOf(const pugi::xml_node& root) {
  const std::string_view name = root.name();
  return std::string(name.substr(0, name.size() - LocalName(root).size()));
}

// A sheet with these cells in place of those that its tree holds.
void WriteSheet(const pugi::xml_node& root, const SheetCells& cells, const SheetCells::Sink& out) {
  std::string head = kHead + ("<" + std::string(root.name()));
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    head.append(" ").append(attribute.name()).append("=\"");
    AppendXml(attribute.value(), head);
    head += '"';
  }
  out(head + ">");
  for (const pugi::xml_node& child : root.children()) {
    if (LocalName(child) == "sheetData") {
      cells.Write(PrefixOf(root), out);
    } else {
      out(PrintXml(child));
    }
  }
  out("</" + std::string(root.name()) + ">");
}

// The style with the number format "@".
void MakeTextStyle(pugi::xml_node style) {
  const auto set = [&style](const char* name, unsigned value) {
    if (!style.attribute(name)) style.append_attribute(name);
    style.attribute(name).set_value(value);
  };
  set("numFmtId", kTextFormat);
  set("applyNumberFormat", 1);
}

}  // namespace

TemplateWorkbook::TemplateWorkbook(std::string bytes, const std::string& name, Question question)
    : archive_(std::move(bytes), name), question_(std::move(question)) {
  CheckKind();
  FindSheets();
  ReadSheet();
  ReadSharedStrings();
  ReadStyles();
}

TemplateWorkbook::Tree TemplateWorkbook::ReadTree(const std::string& part) const {
  auto tree = std::make_unique<pugi::xml_document>();
  if (!ParseXml(archive_.Read(part), *tree)) {
    archive_.Refuse("خوانده نمي شود: بخش " + part + " درست نيست.");
  }
  return tree;
}

TemplateWorkbook::Relations TemplateWorkbook::ReadRelations(const std::string& part) const {
  Relations relations;
  if (!archive_.Has(RelationsOf(part))) return relations;
  const Tree tree = ReadTree(RelationsOf(part));
  for (const pugi::xml_node& relation : tree->document_element().children()) {
    if (std::string_view(relation.attribute("TargetMode").value()) == "External") continue;
    relations[relation.attribute("Id").value()] = {
        LastWord(relation.attribute("Type").value()),
        PartOf(part, relation.attribute("Target").value())};
  }
  return relations;
}

// A workbook with macros would need another extension.
void TemplateWorkbook::CheckKind() const {
  if (text::Contains(archive_.Read(kContentTypes), "macroEnabled")) {
    archive_.Refuse("ماكرو دارد و پر نمي شود.");
  }
}

void TemplateWorkbook::FindSheets() {
  for (const auto& [id, relation] : ReadRelations("")) {
    if (relation.kind == "officeDocument") workbook_part_ = relation.target;
  }
  if (workbook_part_.empty()) archive_.Refuse("فايل اكسل نيست.");
  workbook_ = ReadTree(workbook_part_);
  workbook_relations_ = ReadRelations(workbook_part_);
  for (const pugi::xml_node& sheet : ChildOf(workbook_->document_element(), "sheets").children()) {
    std::string id;
    for (const pugi::xml_attribute& attribute : sheet.attributes()) {
      if (text::EndsWithIgnoreCase(attribute.name(), ":id")) id = attribute.value();
    }
    const auto found = workbook_relations_.find(id);
    if (found == workbook_relations_.end() || found->second.kind != "worksheet") continue;
    if (sheet_part_.empty()) {
      sheet_part_ = found->second.target;
      sheet_name_ = sheet.attribute("name").value();
    } else {
      other_sheets_.push_back(found->second.target);
    }
  }
  if (sheet_part_.empty()) archive_.Refuse("برگه اي ندارد.");
}

void TemplateWorkbook::ReadSheet() {
  sheet_ = ReadTree(sheet_part_);
  pugi::xml_node root = sheet_->document_element();
  prefix_ = PrefixOf(root);
  pugi::xml_node data = ChildOf(root, "sheetData");
  if (!data) archive_.Refuse("خوانده نمي شود: برگه خانه اي ندارد.");
  try {
    cells_ = std::make_unique<SheetCells>(data, question_);
  } catch (const Error& error) {
    if (error.Is(ErrorNumber::kCancelled)) throw;
    archive_.Refuse("خوانده نمي شود: " + error.Description());
  }
  while (data.first_child()) data.remove_child(data.first_child());
}

void TemplateWorkbook::ReadSharedStrings() {
  for (const auto& [id, relation] : workbook_relations_) {
    if (relation.kind != "sharedStrings" || !archive_.Has(relation.target)) continue;
    const Tree tree = ReadTree(relation.target);
    for (const pugi::xml_node& item : tree->document_element().children()) {
      if (LocalName(item) == "si") shared_strings_.push_back(StringText(item));
    }
  }
}

void TemplateWorkbook::ReadStyles() {
  for (const auto& [id, relation] : workbook_relations_) {
    if (relation.kind == "styles" && archive_.Has(relation.target)) styles_part_ = relation.target;
  }
  if (styles_part_.empty()) return;
  styles_ = ReadTree(styles_part_);
  std::set<unsigned> text_formats = {kTextFormat};
  const pugi::xml_node root = styles_->document_element();
  for (const pugi::xml_node& format : ChildOf(root, "numFmts").children()) {
    if (std::string_view(format.attribute("formatCode").value()) != "@") continue;
    text_formats.insert(format.attribute("numFmtId").as_uint());
  }
  for (const pugi::xml_node& style : ChildOf(root, "cellXfs").children()) {
    if (style.type() != pugi::node_element) continue;
    text_styles_.push_back(text_formats.count(style.attribute("numFmtId").as_uint()) > 0);
  }
}

bool TemplateWorkbook::IsTextStyle(std::uint32_t style) const {
  return style < text_styles_.size() && text_styles_[style];
}

std::string TemplateWorkbook::Text(std::int32_t row, std::int32_t column) const {
  const SheetCell* const cell = cells_->Find(row, column);
  if (cell == nullptr) return {};
  switch (cell->kind) {
    case Kind::kShared: {
      const double number = std::strtod(cell->value.c_str(), nullptr);
      const bool known = number >= 0 && number < static_cast<double>(shared_strings_.size());
      return known ? shared_strings_[static_cast<std::size_t>(number)] : std::string();
    }
    case Kind::kRich:
      return RichText(cell->value);
    case Kind::kError:  // "#DIV/0!" is no marker
    case Kind::kEmpty:
      return {};
    default:
      return cell->value;
  }
}

std::string TemplateWorkbook::Formula(std::int32_t row, std::int32_t column) const {
  const SheetCell* const cell = cells_->Find(row, column);
  if (cell == nullptr) return {};
  return cell->formula != 0 ? "=" + cells_->FormulaOf(*cell).text : Text(row, column);
}

void TemplateWorkbook::SetText(std::int32_t row, std::int32_t column, const std::string& text) {
  if (text.size() > WorkbookLimits::kCharacters &&
      Utf16Length(text) > WorkbookLimits::kCharacters) {
    archive_.Refuse("پر نمي شود: متن سطر " + std::to_string(row) + "، ستون " +
                    std::to_string(column) + " در خانه اكسل جا نمي گيرد.");
  }
  SheetCell& cell = cells_->At(row, column);
  cell.formula = 0;
  cell.value = text;
  const bool number = IsSheetNumber(text) && !IsTextStyle(cell.style);
  cell.kind = text.empty() ? Kind::kEmpty : number ? Kind::kNumber : Kind::kInline;
}

void TemplateWorkbook::SetFormula(std::int32_t row, std::int32_t column, const std::string& text) {
  if (text.size() > 1 && text.front() == '=') {
    cells_->SetFormula(cells_->At(row, column), text.substr(1));
  } else {
    SetText(row, column, text);
  }
}

void TemplateWorkbook::SetTextFormat(std::int32_t row, std::int32_t column) {
  SheetCell& cell = cells_->At(row, column);
  if (styles_ == nullptr || IsTextStyle(cell.style)) return;
  const auto made = as_text_.find(cell.style);
  if (made != as_text_.end()) {
    cell.style = made->second;
  } else {
    pugi::xml_node styles = ChildOf(styles_->document_element(), "cellXfs");
    pugi::xml_node style;
    std::uint32_t index = 0;
    for (const pugi::xml_node& child : styles.children()) {
      if (child.type() == pugi::node_element && index++ == cell.style) style = child;
    }
    if (!style) return;
    pugi::xml_node copy = styles.append_copy(style);
    MakeTextStyle(copy);
    const auto number = static_cast<std::uint32_t>(text_styles_.size());
    text_styles_.push_back(true);
    if (pugi::xml_attribute count = styles.attribute("count")) count.set_value(number + 1);
    as_text_[cell.style] = number;
    cell.style = number;
    styles_changed_ = true;
  }
  cell.styled = true;
}

void TemplateWorkbook::InsertCopies(std::int32_t row, std::int32_t before, std::int32_t count) {
  if (count <= 0) return;
  const std::int32_t last = std::max(cells_->LastRow(), before - 1);
  if (count > WorkbookLimits::kRows - last) {
    archive_.Refuse("جاي " + std::to_string(count) + " سطر را در يك برگه ندارد.");
  }
  const auto copy = [&](const RowMove& move) { cells_->InsertCopies(row, move, sheet_name_); };
  Move({before, count}, copy, row);
}

void TemplateWorkbook::DeleteRow(std::int32_t row) {
  Move(
      {row, -1}, [this](const RowMove& move) { cells_->DeleteRow(move, sheet_name_); }, 0);
}

// What can't follow the move stops the work: a reference that stayed would give a wrong figure.
void TemplateWorkbook::Move(const RowMove& move, const std::function<void(const RowMove&)>& cells,
                            std::int32_t copied) {
  moves_.push_back(move);
  try {
    cells(move);
    MoveSheetMarks(sheet_->document_element(), move, sheet_name_, copied);
  } catch (const UnmovedReference& error) {
    archive_.Refuse(error.Description());
  }
}

void TemplateWorkbook::Protect(const SheetProtection& protection) {
  pugi::xml_node root = sheet_->document_element();
  pugi::xml_node old = ChildOf(root, "sheetProtection");
  if (old) root.remove_child(old);
  pugi::xml_document tree;
  if (!ParseXml(ProtectionXml(protection), tree)) return;
  pugi::xml_node after = ChildOf(root, "sheetData");
  if (const pugi::xml_node calculated = ChildOf(root, "sheetCalcPr")) after = calculated;
  root.insert_copy_after(tree.document_element(), after)
      .set_name((prefix_ + "sheetProtection").c_str());
}

// --- Saving --------------------------------------------------------------------------------------

template <typename Change>
void TemplateWorkbook::ChangePart(ChangedParts& changed, const std::string& part,
                                  const Change& change) const {
  if (changed.count(part) > 0 || !archive_.Has(part)) return;
  pugi::xml_document tree;
  // Some programs write drawings of old that are no XML: they stay as they are.
  if (!ParseXml(archive_.Read(part), tree)) return;
  change(tree.document_element());
  changed[part] = kHead + PrintXml(tree.document_element());
}

void TemplateWorkbook::ChangeWorkbook(ChangedParts& changed) {
  pugi::xml_node root = workbook_->document_element();
  for (const RowMove& move : moves_) MoveDefinedNames(root, move, sheet_name_);
  pugi::xml_node calculation = ChildOf(root, "calcPr");
  if (!calculation) {
    pugi::xml_node after = ChildOf(root, "sheets");
    for (const char* const name : {"functionGroups", "externalReferences", "definedNames"}) {
      if (const pugi::xml_node found = ChildOf(root, name)) after = found;
    }
    calculation = root.insert_child_after((PrefixOf(root) + "calcPr").c_str(), after);
  }
  if (!calculation.attribute("fullCalcOnLoad")) calculation.append_attribute("fullCalcOnLoad");
  calculation.attribute("fullCalcOnLoad").set_value("1");
  changed[workbook_part_] = kHead + PrintXml(root);
  ChangePart(changed, RelationsOf(workbook_part_), [](pugi::xml_node relations) {
    for (pugi::xml_node relation = relations.first_child(); relation;) {
      const pugi::xml_node next = relation.next_sibling();
      if (LastWord(relation.attribute("Type").value()) == "calcChain") {
        relations.remove_child(relation);
      }
      relation = next;
    }
  });
}

void TemplateWorkbook::ChangeContentTypes(ChangedParts& changed) const {
  ChangePart(changed, kContentTypes, [](pugi::xml_node types) {
    for (pugi::xml_node type = types.first_child(); type;) {
      const pugi::xml_node next = type.next_sibling();
      pugi::xml_attribute content = type.attribute("ContentType");
      if (text::Contains(content.value(), "calcChain+xml")) {
        types.remove_child(type);
      } else if (text::Contains(content.value(), "template.main+xml")) {
        // A template makes a workbook.
        content.set_value(
            text::Replace(content.value(), "template.main+xml", "sheet.main+xml").c_str());
      }
      type = next;
    }
  });
}

// Sheets with formulas: they may use the filled one.
void TemplateWorkbook::ChangeSheetsBeside(ChangedParts& changed) const {
  for (const std::string& part : other_sheets_) {
    if (!archive_.Has(part)) continue;
    pugi::xml_document tree;
    if (!ParseXml(archive_.Read(part), tree)) continue;
    pugi::xml_node root = tree.document_element();
    bool uses = false;
    ForEachElement(root, [&uses](pugi::xml_node& node) {
      const std::string_view name = LocalName(node);
      uses = uses || name == "f" || name == "formula" || name == "formula1" || name == "hyperlink";
    });
    if (!uses) continue;
    pugi::xml_node data = ChildOf(root, "sheetData");
    SheetCells cells(data, question_);
    for (const RowMove& move : moves_) {
      cells.MoveFormulas(move, sheet_name_, false);
      MoveMarkFormulas(root, move, sheet_name_, false);
    }
    std::string& xml = changed[part];
    WriteSheet(root, cells, [&xml](std::string_view piece) { xml += piece; });
  }
}

void TemplateWorkbook::ChangeRelated(ChangedParts& changed) const {
  const auto each = [this](auto&& move_one) {
    return [this, move_one](pugi::xml_node root) {
      for (const RowMove& move : moves_) move_one(root, move);
    };
  };
  for (const auto& [id, relation] : ReadRelations(sheet_part_)) {
    const std::string& kind = relation.kind;
    if (kind == "drawing") {
      ChangePart(changed, relation.target,
                 each([](pugi::xml_node root, const RowMove& move) { MoveAnchors(root, move); }));
    } else if (kind == "comments" || kind == "threadedComment") {
      ChangePart(changed, relation.target,
                 each([](pugi::xml_node root, const RowMove& move) { MoveComments(root, move); }));
    } else if (kind == "vmlDrawing") {
      ChangePart(changed, relation.target,
                 each([](pugi::xml_node root, const RowMove& move) { MoveBoxes(root, move); }));
    } else if (kind == "table") {
      ChangePart(changed, relation.target, each([this](pugi::xml_node root, const RowMove& move) {
                   MoveTable(root, move, sheet_name_);
                 }));
    }
  }
}

void TemplateWorkbook::ChangeCharts(ChangedParts& changed) const {
  for (const std::string& part : archive_.Names()) {
    const bool xml = part.ends_with(".xml");
    if (xml && text::Contains(part, "/charts/") && !text::Contains(part, "/_rels/")) {
      ChangePart(changed, part, [this](pugi::xml_node root) {
        for (const RowMove& move : moves_) MoveChart(root, move, sheet_name_);
        DropChartValues(root);
      });
    } else if (xml && !moves_.empty() && text::Contains(part, "pivotCacheDefinition")) {
      ChangePart(changed, part, [this](pugi::xml_node root) {
        for (const RowMove& move : moves_) MovePivotSource(root, move, sheet_name_);
      });
    }
  }
}

TemplateWorkbook::ChangedParts TemplateWorkbook::Changes() {
  ChangedParts changed;
  try {
    ChangeWorkbook(changed);
    ChangeContentTypes(changed);
    ChangeSheetsBeside(changed);
    if (!moves_.empty()) ChangeRelated(changed);
    ChangeCharts(changed);
  } catch (const UnmovedReference& error) {
    archive_.Refuse(error.Description());
  }
  if (styles_changed_) changed[styles_part_] = kHead + PrintXml(styles_->document_element());
  return changed;
}

void TemplateWorkbook::Save(OutputFile& out) {
  const ChangedParts changed = Changes();
  ZipWriter zip(out);
  std::set<std::string> written;
  for (const std::string& part : archive_.Names()) {
    if (part.ends_with("calcChain.xml") || part.ends_with('/') || !written.insert(part).second) {
      continue;
    }
    question_();
    const auto found = changed.find(part);
    if (part == sheet_part_) {
      zip.BeginEntry(part);
      WriteSheet(sheet_->document_element(), *cells_, [&](std::string_view piece) {
        question_();
        zip.Write(piece);
      });
      zip.EndEntry();
    } else if (found != changed.end()) {
      zip.AddEntry(part, found->second);
    } else {
      archive_.CopyTo(zip, part);
    }
  }
  zip.Finish();
}

}  // namespace vorek::xlsx
