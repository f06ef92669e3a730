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

constexpr std::size_t kFull = std::size_t{1} << 16U;  // bytes at which the buffer is handed on

// A width in characters as the file keeps it: with the margins, in digits of 7 pixels, to 1/256.
double FileWidth(double characters) {
  const double pixels =
      characters < 1 ? std::floor(characters * 12 + 0.5) : std::floor(characters * 7 + 0.5) + 5;
  return std::floor(pixels / 7 * 256) / 256;
}

}  // namespace

StreamedWorkbook::StreamedWorkbook(std::unique_ptr<OutputFile> out, WorkbookLook look)
    : out_(std::move(out)), look_(std::move(look)), zip_(*out_) {
  for (std::size_t style = 0; style < look_.styles.size(); ++style) {
    style_words_.push_back(" s=\"" + std::to_string(style + 1) + "\"");
  }
  if (look_.row_style != WorkbookLook::kNoStyle) {
    row_words_ = style_words_[look_.row_style] + " customFormat=\"1\"";
  }
  buffer_.reserve(kFull * 2);
  BeginSheet();
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
  buffer_ += "</worksheet>";
  zip_.Write(buffer_);
  buffer_.clear();
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
  if (buffer_.size() < kFull) return;
  zip_.Write(buffer_);
  buffer_.clear();
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

void StreamedWorkbook::BeginCell(std::int32_t column, std::size_t style) {
  const auto index = static_cast<std::size_t>(column);
  while (column_names_.size() <= index) {
    std::string name;
    AppendColumnName(static_cast<std::int32_t>(column_names_.size()), name);
    column_names_.push_back(std::move(name));
  }
  buffer_.append("<c r=\"").append(column_names_[index]).append(row_text_).append("\"");
  if (style != WorkbookLook::kNoStyle) buffer_ += style_words_[style];
}

void StreamedWorkbook::Text(std::int32_t column, std::string_view text, std::size_t style) {
  Check(column, text);
  BeginCell(column, style);
  if (text.empty()) {
    buffer_ += "/>";
    return;
  }
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n'; };
  const bool edges = blank(text.front()) || blank(text.back());
  buffer_ += edges ? " t=\"inlineStr\"><is><t xml:space=\"preserve\">" : " t=\"inlineStr\"><is><t>";
  AppendSheetText(text, buffer_);
  buffer_ += "</t></is></c>";
}

void StreamedWorkbook::Number(std::int32_t column, std::string_view number, std::size_t style) {
  Check(column, number);
  BeginCell(column, style);
  buffer_.append("><v>").append(number).append("</v></c>");
}

void StreamedWorkbook::Finish() {
  EndSheet();
  zip_.AddEntry("[Content_Types].xml", ContentTypesXml(sheets_));
  zip_.AddEntry("_rels/.rels", PackageRelationsXml());
  zip_.AddEntry("xl/workbook.xml", WorkbookXml(sheets_));
  zip_.AddEntry("xl/_rels/workbook.xml.rels", WorkbookRelationsXml(sheets_));
  zip_.AddEntry("xl/styles.xml", StylesXml(look_));
  zip_.Finish();
  out_->Commit();
}

}  // namespace vorek::xlsx
