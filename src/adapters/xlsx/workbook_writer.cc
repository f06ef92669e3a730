#include "adapters/xlsx/workbook_writer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adapters/xlsx/sheet_xml.h"
#include "adapters/xlsx/workbook_parts.h"
#include "text/number.h"
#include "vorek/error.h"

namespace vorek::xlsx {
namespace {

constexpr std::size_t kFull = std::size_t{1} << 20U;  // bytes at which the buffer is handed on

// A width in characters as the file keeps it: with the margins, in digits of 7 pixels, to 1/256.
double FileWidth(double characters) {
  const double pixels =
      characters < 1 ? std::floor(characters * 12 + 0.5) : std::floor(characters * 7 + 0.5) + 5;
  return std::floor(pixels / 7 * 256) / 256;
}

}  // namespace

StreamedWorkbook::StreamedWorkbook(std::unique_ptr<OutputFile> out, WorkbookLook look)
    : out_(std::move(out)), look_(std::move(look)), zip_(*out_) {
  for (std::size_t style = 1; style <= look_.styles.size(); ++style) {
    words_.push_back(WordsFor(" s=\"" + std::to_string(style) + "\""));
  }
  words_.push_back(WordsFor(""));
  if (look_.row_style != WorkbookLook::kNoStyle) {
    row_words_ = " s=\"" + std::to_string(look_.row_style + 1) + "\" customFormat=\"1\"";
  }
  BeginSheet();
}

void StreamedWorkbook::Pack() {
  AwaitPacking();
  packed_.swap(buffer_);
  buffer_.clear();
  // Where no other thread can be had, the wait does the work.
  constexpr auto kHow = std::launch::async | std::launch::deferred;
  packing_ = std::async(kHow, [this] { zip_.Write(packed_); });
}

void StreamedWorkbook::AwaitPacking() {
  if (packing_.valid()) packing_.get();
}

void StreamedWorkbook::BeginSheet() {
  ++sheets_;
  row_ = 0;
  zip_.BeginEntry("xl/worksheets/sheet" + std::to_string(sheets_) + ".xml");
  buffer_ =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
      "<sheetViews><sheetView";
  if (look_.right_to_left) buffer_ += " rightToLeft=\"1\"";
  if (sheets_ == 1) buffer_ += " tabSelected=\"1\"";
  buffer_ += " workbookViewId=\"0\"/></sheetViews>";
  AddColumns();
  buffer_ += "<sheetData>";
}

void StreamedWorkbook::AddColumns() {
  constexpr double kWidest = 255;
  std::string columns;
  for (std::size_t i = 0; i < look_.column_widths.size(); ++i) {
    const double width = look_.column_widths[i];
    if (width < 0 || width > kWidest) continue;
    const std::string number = std::to_string(i + 1);
    columns += "<col min=\"" + number + "\" max=\"" + number + "\" width=\"" +
               text::PlainNumber(FileWidth(width)) + "\"" + (width == 0 ? " hidden=\"1\"" : "") +
               " customWidth=\"1\"/>";
  }
  if (!columns.empty()) buffer_ += "<cols>" + columns + "</cols>";
}

void StreamedWorkbook::EndSheet() {
  buffer_ += "</sheetData>";
  if (look_.protection != nullptr) buffer_ += ProtectionXml(*look_.protection);
  if (chart_.has_value()) buffer_ += kDrawingElement;
  buffer_ += "</worksheet>";
  Pack();
  AwaitPacking();
  zip_.EndEntry();
}

void StreamedWorkbook::BeginRow() {
  if (row_ == WorkbookLimits::kRows) {
    EndSheet();
    BeginSheet();
  }
  row_text_.clear();
  AppendNumber(++row_, row_text_);
  buffer_.append("<row r=\"").append(row_text_).append("\"").append(row_words_).append(">");
}

void StreamedWorkbook::EndRow() {
  buffer_ += "</row>";
  if (buffer_.size() >= kFull) Pack();
}

std::string StreamedWorkbook::PlaceOf(std::int32_t column) const {
  return "سطر " + std::to_string(row_) + "، ستون " + std::to_string(column);
}

void StreamedWorkbook::Check(std::int32_t column, std::string_view text) const {
  if (column < 1 || column > WorkbookLimits::kColumns) {
    throw Error(ErrorNumber::kInvalidCall, "برگه اكسل بيش از " +
                                               std::to_string(WorkbookLimits::kColumns) +
                                               " ستون ندارد: " + PlaceOf(column) + ".");
  }
  if (text.size() > WorkbookLimits::kCharacters &&
      Utf16Length(text) > WorkbookLimits::kCharacters) {
    throw Error(ErrorNumber::kInvalidCall,
                "متن خانه از " + std::to_string(WorkbookLimits::kCharacters) +
                    " حرف كه خانه اكسل جا دارد بيشتر است: " + PlaceOf(column) + ".");
  }
}

StreamedWorkbook::Words StreamedWorkbook::WordsFor(const std::string& style) {
  const std::string text = "\"" + style + " t=\"inlineStr\"><is><t";
  return {"\"" + style + "/>", "\"" + style + "><v>", text + ">",
          text + " xml:space=\"preserve\">"};
}

void StreamedWorkbook::AddHeads(std::size_t column) {
  while (heads_.size() <= column) {
    std::string head = "<c r=\"";
    AppendColumnName(static_cast<std::int32_t>(heads_.size()), head);
    heads_.push_back(std::move(head));
  }
}

void StreamedWorkbook::BeginCell(std::int32_t column, const std::string& words) {
  const auto index = static_cast<std::size_t>(column);
  if (index >= heads_.size()) AddHeads(index);
  buffer_.append(heads_[index]).append(row_text_).append(words);
}

void StreamedWorkbook::Text(std::int32_t column, std::string_view text, std::size_t style) {
  Check(column, text);
  const Words& words = WordsOf(style);
  if (text.empty()) {
    BeginCell(column, words.empty);
    return;
  }
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n'; };
  BeginCell(column, blank(text.front()) || blank(text.back()) ? words.blanks : words.text);
  AppendSheetText(text, buffer_);
  buffer_ += "</t></is></c>";
}

void StreamedWorkbook::Number(std::int32_t column, std::string_view number, std::size_t style) {
  Check(column, number);
  BeginCell(column, WordsOf(style).number);
  buffer_.append(number).append("</v></c>");
}

std::size_t StreamedWorkbook::AddStyle(SheetStyle style) {
  look_.styles.push_back(std::move(style));
  const std::size_t number = look_.styles.size();
  words_.insert(words_.end() - 1, WordsFor(" s=\"" + std::to_string(number) + "\""));
  return number - 1;
}

void StreamedWorkbook::WriteNumbersOf(const SheetChart& chart) {
  const std::size_t header = AddStyle({.bold = true, .text = true});
  const std::size_t words = AddStyle({.text = true});
  const std::size_t numbers = AddStyle({.number_format = chart.number_format});
  BeginRow();
  Text(1, chart.category_title, header);
  std::int32_t column = 1;
  for (const SheetChart::Series& series : chart.series) Text(++column, series.name, header);
  EndRow();
  for (std::size_t row = 0; row < chart.categories.size(); ++row) {
    BeginRow();
    Text(1, chart.categories[row], words);
    column = 1;
    for (const SheetChart::Series& series : chart.series) {
      ++column;
      if (!series.values[row].empty()) Number(column, series.values[row], numbers);
    }
    EndRow();
  }
}

void StreamedWorkbook::AddChart(const SheetChart& chart) {
  EndSheet();
  row_words_.clear();
  look_.column_widths.assign(chart.series.size() + 1, kChartColumnWidth);
  BeginSheet();
  WriteNumbersOf(chart);
  chart_ = PartsOf(chart);
}

void StreamedWorkbook::AddChartParts() {
  zip_.AddEntry("xl/worksheets/_rels/sheet" + std::to_string(sheets_) + ".xml.rels",
                SheetDrawingXml());
  zip_.AddEntry("xl/drawings/drawing1.xml", chart_->drawing);
  zip_.AddEntry("xl/drawings/_rels/drawing1.xml.rels", DrawingChartXml());
  zip_.AddEntry("xl/charts/chart1.xml", chart_->chart);
}

void StreamedWorkbook::Finish() {
  EndSheet();
  if (chart_.has_value()) AddChartParts();
  zip_.AddEntry("[Content_Types].xml", ContentTypesXml(sheets_, chart_.has_value()));
  zip_.AddEntry("_rels/.rels", PackageRelationsXml());
  zip_.AddEntry("xl/workbook.xml", WorkbookXml(sheets_, chart_.has_value() ? chart_->sheet : ""));
  zip_.AddEntry("xl/_rels/workbook.xml.rels", WorkbookRelationsXml(sheets_));
  zip_.AddEntry("xl/styles.xml", StylesXml(look_));
  zip_.Finish();
  out_->Commit();
}

}  // namespace vorek::xlsx
