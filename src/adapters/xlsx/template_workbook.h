#ifndef VOREK_ADAPTERS_XLSX_TEMPLATE_WORKBOOK_H_
#define VOREK_ADAPTERS_XLSX_TEMPLATE_WORKBOOK_H_

#include <functional>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "adapters/xlsx/archive.h"
#include "adapters/xlsx/sheet_cells.h"
#include "vorek/spreadsheet.h"

namespace vorek::xlsx {

// A workbook whose first sheet is filled in place. Parts that don't speak of that sheet's rows, and
// hold no formulas, are written as they were packed.
class TemplateWorkbook : public TemplateSheet {
 public:
  // The question is asked while the sheet is read, gets copies and is saved.
  TemplateWorkbook(std::string bytes, const std::string& name, Question question);

  std::int32_t LastColumn(std::int32_t row) const override { return cells_->LastColumn(row); }
  std::string Text(std::int32_t row, std::int32_t column) const override;
  std::string Formula(std::int32_t row, std::int32_t column) const override;
  void SetText(std::int32_t row, std::int32_t column, const std::string& text) override;
  void SetFormula(std::int32_t row, std::int32_t column, const std::string& text) override;
  void SetTextFormat(std::int32_t row, std::int32_t column) override;
  void InsertCopies(std::int32_t row, std::int32_t before, std::int32_t count) override;
  void DeleteRow(std::int32_t row) override;
  void Protect(const SheetProtection& protection) override;
  void Save(OutputFile& out) override;

 private:
  struct Relation {
    std::string kind;  // the last word of its type: "worksheet", "drawing"
    std::string target;
  };
  using Relations = std::map<std::string, Relation>;  // by id
  using ChangedParts = std::map<std::string, std::string>;
  using Tree = std::unique_ptr<pugi::xml_document>;

  Tree ReadTree(const std::string& part) const;
  Relations ReadRelations(const std::string& part) const;
  void FindSheets();
  void ReadSheet();
  void ReadSharedStrings();
  void ReadStyles();
  void CheckKind() const;
  bool IsTextStyle(std::uint32_t style) const;

  void ChangeWorkbook(ChangedParts& changed);
  void ChangeContentTypes(ChangedParts& changed) const;
  void ChangeSheetsBeside(ChangedParts& changed) const;
  void ChangeRelated(ChangedParts& changed) const;
  void ChangeCharts(ChangedParts& changed) const;
  // Reads a part, changes it for each move, and keeps it.
  template <typename Change>
  void ChangePart(ChangedParts& changed, const std::string& part, const Change& change) const;
  void Move(const RowMove& move, const std::function<void(const RowMove&)>& cells,
            std::int32_t copied);
  ChangedParts Changes();

  Archive archive_;
  Question question_;
  std::string workbook_part_;
  Tree workbook_;
  Relations workbook_relations_;
  std::string sheet_part_;
  std::string sheet_name_;
  std::vector<std::string> other_sheets_;  // parts
  Tree sheet_;
  std::string prefix_;  // of the sheet's elements
  std::unique_ptr<SheetCells> cells_;
  std::vector<std::string> shared_strings_;
  std::string styles_part_;
  Tree styles_;
  bool styles_changed_ = false;
  std::vector<bool> text_styles_;                   // by style: its format is "@"
  std::map<std::uint32_t, std::uint32_t> as_text_;  // styles made of others
  std::vector<RowMove> moves_;
};

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_TEMPLATE_WORKBOOK_H_
