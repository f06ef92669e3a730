#include "export/table_export.h"

#include <string>
#include <string_view>
#include <vector>

#include "export/long_work.h"
#include "export/markup.h"
#include "export/row_blocks.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::string Json(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string out = "\"";
  for (const char c : text::ValidUtf8(text)) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20) {
      out += "\\u00";
      out += kDigits[byte >> 4U];
      out += kDigits[byte & 0xFU];
    } else {
      out += c;
    }
  }
  return out + '"';
}

std::string JsonColumns(const Grid& grid) {
  std::string text;
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    text += (col > 0 ? ",\n  " : "\n  ") + ("{\"column\": " + std::to_string(col)) +
            ", \"header\": " + Json(grid.TextMatrix(0, col)) +
            ", \"width\": " + std::to_string(grid.ColWidth(col)) +
            ", \"alignment\": " + std::to_string(grid.ColAlignment(col)) +
            ", \"hidden\": " + (grid.ColWidth(col) == 0 ? "true}" : "false}");
  }
  return text;
}

void AppendJsonRows(const Grid& grid, RowRange rows, std::string& text) {
  std::string scratch;
  for (std::int32_t row = rows.first; row < rows.end; ++row) {
    text += row > 1 ? ",\n  [" : "\n  [";
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (col > 0) text += ", ";
      text += Json(grid.CellView(row, col, scratch));
    }
    text += "]";
  }
}

void AppendHtmlRows(const Grid& grid, const std::vector<std::int32_t>& columns, RowRange rows,
                    std::string& text) {
  std::string scratch;
  for (std::int32_t row = rows.first; row < rows.end; ++row) {
    if (row > 0 && grid.RowHeight(row) == 0) continue;
    text += "<tr>";
    for (const std::int32_t col : columns) {
      text += row == 0 ? "<th>" : "<td>";
      text += HtmlText(text::ValidUtf8(grid.CellView(row, col, scratch)));
      text += row == 0 ? "</th>" : "</td>";
    }
    text += "</tr>\n";
  }
}

std::vector<std::int32_t> VisibleColumns(const Grid& grid) {
  std::vector<std::int32_t> columns = {0};
  for (std::int32_t col = 1; col < grid.Cols(); ++col) {
    if (grid.ColWidth(col) != 0) columns.push_back(col);
  }
  return columns;
}

constexpr std::string_view kStyle =
    "<style>body{font-family:\"B Mitra\",Vazirmatn,Tahoma,sans-serif}"
    "table{border-collapse:collapse}td,th{border:1px solid #999;padding:2px 6px}"
    "th{background:#dde8f5;position:sticky;top:0}</style>";

}  // namespace

void WriteJsonFile(ReportContext& report, OutputFile& out) {
  const Grid& grid = report.ActiveGrid();
  out.Write("{\"report\": " + std::to_string(report.state.ReportID) +
            ", \"title\": " + Json(report.state.Title) + ",\n \"columns\": [" + JsonColumns(grid) +
            "],\n \"rows\": [");
  LongWork work(report, grid.Rows());
  WriteInBlocks({1, grid.Rows()}, out, work,
                [&grid](RowRange rows, std::string& text) { AppendJsonRows(grid, rows, text); });
  out.Write("]}\n");
}

void WriteHtmlFile(ReportContext& report, OutputFile& out) {
  const Grid& grid = report.ActiveGrid();
  const std::string title = HtmlText(report.state.Title);
  out.Write("<!DOCTYPE html>\n<html lang=\"fa\" dir=\"rtl\"><head><meta charset=\"utf-8\"><title>" +
            title + "</title>" + std::string(kStyle) + "</head>\n<body><h1>" + title +
            "</h1>\n<table>\n");
  const std::vector<std::int32_t> columns = VisibleColumns(grid);
  LongWork work(report, grid.Rows());
  WriteInBlocks({0, grid.Rows()}, out, work, [&](RowRange rows, std::string& text) {
    AppendHtmlRows(grid, columns, rows, text);
  });
  out.Write("</table></body></html>\n");
}

}  // namespace vorek
