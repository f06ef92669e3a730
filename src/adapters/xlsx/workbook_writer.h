#ifndef VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_
#define VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_

#include <memory>
#include <string>
#include <vector>

#include "adapters/xlsx/zip_writer.h"
#include "platform/spreadsheet.h"

namespace vorek::xlsx {

// Writes the sheet's XML as its rows come; the parts around it follow at the end.
class StreamedWorkbook : public WorkbookWriter {
 public:
  StreamedWorkbook(std::unique_ptr<OutputFile> out, WorkbookLook look);

  void BeginRow() override;
  void Text(std::int32_t column, std::string_view text, std::size_t style) override;
  void Number(std::int32_t column, std::string_view number, std::size_t style) override;
  void EndRow() override;
  void Finish() override;
  std::size_t Sheets() const override { return sheets_; }

 private:
  void BeginSheet();
  void EndSheet();
  void AddColumns();
  void BeginCell(std::int32_t column, std::size_t style);
  void Check(std::int32_t column, std::string_view text) const;
  std::string PlaceOf(std::int32_t column) const;

  std::unique_ptr<OutputFile> out_;
  WorkbookLook look_;
  ZipWriter zip_;
  std::vector<std::string> column_names_;  // by column, 0 unused
  std::vector<std::string> style_words_;   // ' s="2"' by style
  std::string row_words_;                  // behind a row's number
  std::string row_text_;                   // the row's number
  std::string buffer_;
  std::int32_t row_ = 0;  // of the sheet
  std::size_t sheets_ = 0;
};

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_
