#ifndef VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_
#define VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_

#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/xlsx/chart_part.h"
#include "adapters/xlsx/zip_writer.h"
#include "vorek/spreadsheet.h"

namespace vorek::xlsx {

// Writes the sheet's XML as its rows come; the parts around it follow at the end.
class StreamedWorkbook : public WorkbookWriter {
 public:
  StreamedWorkbook(std::unique_ptr<OutputFile> out, WorkbookLook look);

  void BeginRow() override;
  void Text(std::int32_t column, std::string_view text, std::size_t style) override;
  void Number(std::int32_t column, std::string_view number, std::size_t style) override;
  void EndRow() override;
  void AddChart(const SheetChart& chart) override;
  void Finish() override;
  std::size_t Sheets() const override { return sheets_ - (chart_.has_value() ? 1 : 0); }

 private:
  // What a cell is written of behind its row's number, in as few pieces as can be.
  struct Words {
    std::string empty;   // '" s="2"/>'
    std::string number;  // '" s="2"><v>'
    std::string text;    // '" s="2" t="inlineStr"><is><t>'
    std::string blanks;  // the same for a text with blanks at its ends
  };

  // Hands the buffer to the thread that deflates, and takes what went wrong with the one before.
  void Pack();
  void AwaitPacking();
  void BeginSheet();
  void EndSheet();
  void AddColumns();
  // Returns its number, as rows are written with it.
  std::size_t AddStyle(SheetStyle style);
  void WriteNumbersOf(const SheetChart& chart);
  void AddChartParts();
  static Words WordsFor(const std::string& style);
  const Words& WordsOf(std::size_t style) const {
    return style == WorkbookLook::kNoStyle ? words_.back() : words_[style];
  }
  void AddHeads(std::size_t column);
  void BeginCell(std::int32_t column, const std::string& words);
  void Check(std::int32_t column, std::string_view text) const;
  std::string PlaceOf(std::int32_t column) const;

  std::unique_ptr<OutputFile> out_;
  WorkbookLook look_;
  ZipWriter zip_;
  std::vector<std::string> heads_;  // '<c r="B' by column, 0 unused
  std::vector<Words> words_;        // by style, the last one for none
  std::string row_words_;           // behind a row's number
  std::string row_text_;            // the row's number
  std::string buffer_;
  std::string packed_;    // is being deflated by another thread
  std::int32_t row_ = 0;  // of the sheet
  std::size_t sheets_ = 0;
  std::optional<ChartParts> chart_;
  std::future<void> packing_;  // the last one: its end is awaited before all else goes
};

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_WORKBOOK_WRITER_H_
