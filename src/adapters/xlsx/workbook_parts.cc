#include "adapters/xlsx/workbook_parts.h"

#include "adapters/xlsx/sheet_xml.h"
#include "text/number.h"

namespace vorek::xlsx {
namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr const char* kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/";
constexpr const char* kPackage = "http://schemas.openxmlformats.org/package/2006/";
constexpr const char* kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* kContent = "application/vnd.openxmlformats-officedocument.";

std::string SheetNumber(std::size_t sheet) { return std::to_string(sheet); }

std::string Relation(const std::string& id, const char* kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + kOffice + "relationships/" + kind +
         "\" Target=\"" + target + "\"/>";
}

std::string Relations(const std::string& all) {
  return std::string(kHead) + "<Relationships xmlns=\"" + kPackage + "relationships\">" + all +
         "</Relationships>";
}

std::string PartType(const std::string& part, const std::string& kind) {
  return "<Override PartName=\"/xl/" + part + "\" ContentType=\"" + kContent + kind + "\"/>";
}

std::string FontXml(const std::string& name, double size, bool bold) {
  std::string xml = bold ? "<font><b/>" : "<font>";
  xml += "<sz val=\"" + text::PlainNumber(size) + "\"/><name val=\"";
  AppendXml(name, xml);
  return xml + "\"/></font>";
}

const char* AlignmentName(SheetAlignment alignment) {
  switch (alignment) {
    case SheetAlignment::kGeneral:
      return "general";
    case SheetAlignment::kLeft:
      return "left";
    case SheetAlignment::kCentre:
      return "center";
    case SheetAlignment::kRight:
      return "right";
    case SheetAlignment::kFill:
      return "fill";
    case SheetAlignment::kJustify:
      return "justify";
    case SheetAlignment::kCentreAcross:
      return "centerContinuous";
    case SheetAlignment::kDistributed:
      return "distributed";
  }
  return "general";
}

// The first number that a workbook may give a number format of its own.
constexpr std::size_t kOwnFormats = 164;

// A style's number format, by the number of its font.
std::size_t NumberFormatOf(std::size_t font, const SheetStyle& style) {
  constexpr std::size_t kText = 49;
  if (style.text) return kText;
  return style.number_format.empty() ? 0 : kOwnFormats + font;
}

std::string NumberFormatsXml(const std::vector<SheetStyle>& styles) {
  std::string xml;
  std::size_t count = 0;
  for (std::size_t i = 0; i < styles.size(); ++i) {
    const std::size_t number = NumberFormatOf(i + 1, styles[i]);
    if (number < kOwnFormats) continue;
    ++count;
    xml += "<numFmt numFmtId=\"" + std::to_string(number) + "\" formatCode=\"";
    AppendXml(styles[i].number_format, xml);
    xml += "\"/>";
  }
  return count == 0 ? "" : "<numFmts count=\"" + std::to_string(count) + "\">" + xml + "</numFmts>";
}

std::string FormatXml(std::size_t font, const SheetStyle& style) {
  const std::size_t number_format = NumberFormatOf(font, style);
  std::string xml = "<xf numFmtId=\"" + std::to_string(number_format) + "\" fontId=\"" +
                    std::to_string(font) + "\" fillId=\"0\" borderId=\"0\" xfId=\"0\"";
  if (number_format > 0) xml += " applyNumberFormat=\"1\"";
  return xml + " applyFont=\"1\" applyAlignment=\"1\"><alignment horizontal=\"" +
         AlignmentName(style.alignment) +
         "\" vertical=\"bottom\" textRotation=\"0\" wrapText=\"0\" indent=\"0\" "
         "shrinkToFit=\"0\" readingOrder=\"0\"/></xf>";
}

}  // namespace

std::string ContentTypesXml(std::size_t sheets, bool chart) {
  std::string xml = std::string(kHead) + "<Types xmlns=\"" + kPackage + "content-types\">" +
                    "<Default Extension=\"rels\" "
                    "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>" +
                    PartType("workbook.xml", "spreadsheetml.sheet.main+xml") +
                    PartType("styles.xml", "spreadsheetml.styles+xml");
  for (std::size_t sheet = 1; sheet <= sheets; ++sheet) {
    xml +=
        PartType("worksheets/sheet" + SheetNumber(sheet) + ".xml", "spreadsheetml.worksheet+xml");
  }
  if (chart) {
    xml += PartType("drawings/drawing1.xml", "drawing+xml") +
           PartType("charts/chart1.xml", "drawingml.chart+xml");
  }
  return xml + "</Types>";
}

std::string PackageRelationsXml() {
  return Relations(Relation("rId1", "officeDocument", "xl/workbook.xml"));
}

std::string WorkbookXml(std::size_t sheets, const std::string& chart_sheet) {
  std::string xml = std::string(kHead) + "<workbook xmlns=\"" + kMain + "\" xmlns:r=\"" + kOffice +
                    "relationships\"><sheets>";
  for (std::size_t sheet = 1; sheet <= sheets; ++sheet) {
    const std::string number = SheetNumber(sheet);
    xml += "<sheet name=\"";
    AppendXml(sheet == sheets && !chart_sheet.empty() ? chart_sheet : "Sheet" + number, xml);
    xml += "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
  }
  return xml + "</sheets></workbook>";
}

std::string WorkbookRelationsXml(std::size_t sheets) {
  std::string all;
  for (std::size_t sheet = 1; sheet <= sheets; ++sheet) {
    const std::string number = SheetNumber(sheet);
    all += Relation("rId" + number, "worksheet", "worksheets/sheet" + number + ".xml");
  }
  return Relations(all + Relation("rId" + SheetNumber(sheets + 1), "styles", "styles.xml"));
}

std::string SheetDrawingXml() {
  return Relations(Relation("rId1", "drawing", "../drawings/drawing1.xml"));
}

std::string DrawingChartXml() {
  return Relations(Relation("rId1", "chart", "../charts/chart1.xml"));
}

std::string StylesXml(const WorkbookLook& look) {
  constexpr double kUsualSize = 11;
  const std::string own_font = look.font.empty() ? "Calibri" : look.font;
  const double own_size = look.font_size > 0 ? look.font_size : kUsualSize;
  std::string fonts = FontXml(own_font, own_size, false);
  std::string formats = "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>";
  for (std::size_t i = 0; i < look.styles.size(); ++i) {
    const SheetStyle& style = look.styles[i];
    fonts += FontXml(style.font.empty() ? own_font : style.font,
                     style.size > 0 ? style.size : own_size, style.bold);
    formats += FormatXml(i + 1, style);
  }
  const std::string count = std::to_string(look.styles.size() + 1);
  return std::string(kHead) + "<styleSheet xmlns=\"" + kMain + "\">" +
         NumberFormatsXml(look.styles) + "<fonts count=\"" + count + "\">" + fonts +
         "</fonts><fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
         "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
         "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
         "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
         "</cellStyleXfs><cellXfs count=\"" +
         count + "\">" + formats +
         "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/>"
         "</cellStyles></styleSheet>";
}

}  // namespace vorek::xlsx
