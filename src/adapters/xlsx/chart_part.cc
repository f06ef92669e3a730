#include "adapters/xlsx/chart_part.h"

#include <array>

#include "adapters/xlsx/sheet_xml.h"

namespace vorek::xlsx {

const char* const kDrawingElement =
    "<drawing xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
    "r:id=\"rId1\"/>";

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr const char* kSpaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"";
constexpr const char* kCategoryAxis = "111";
constexpr const char* kValueAxis = "222";

// Those of the windows' charts on a light ground, in their order.
constexpr std::array<const char*, 8> kColors = {"1F6FEB", "C26A00", "1A7F37", "8250DF",
                                                "B42318", "0E7C86", "C0368A", "6B5D00"};

std::string Value(const std::string& element, const std::string& value) {
  return "<c:" + element + " val=\"" + value + "\"/>";
}

std::string Color(std::size_t index) {
  return "<a:srgbClr val=\"" + std::string(kColors.at(index % kColors.size())) + "\"/>";
}

// Behind the last colour they come again, hatched.
std::string Fill(std::size_t index) {
  if (index < kColors.size()) return "<a:solidFill>" + Color(index) + "</a:solidFill>";
  return "<a:pattFill prst=\"pct50\"><a:fgClr>" + Color(index) +
         "</a:fgClr><a:bgClr><a:srgbClr val=\"FFFFFF\"/></a:bgClr></a:pattFill>";
}

// Or dashed.
std::string Line(std::size_t index) {
  return "<a:ln w=\"25400\"><a:solidFill>" + Color(index) + "</a:solidFill>" +
         (index < kColors.size() ? "" : "<a:prstDash val=\"dash\"/>") + "</a:ln>";
}

// A title in the direction of Persian texts; nothing for an empty one.
std::string Title(const std::string& text) {
  if (text.empty()) return {};
  std::string xml =
      "<c:title><c:tx><c:rich><a:bodyPr/><a:p><a:pPr rtl=\"1\"><a:defRPr/></a:pPr>"
      "<a:r><a:rPr lang=\"fa-IR\"/><a:t>";
  AppendXml(text, xml);
  return xml + "</a:t></a:r></a:p></c:rich></c:tx><c:overlay val=\"0\"/></c:title>";
}

// The names and numbers of a chart by their places on its sheet.
class Places {
 public:
  explicit Places(const SheetChart& chart)
      : sheet_(Quoted(chart.sheet)), last_(std::to_string(chart.categories.size() + 1)) {}

  std::string Name(std::size_t series) const { return Cell(series + 2, "1"); }
  std::string Categories() const { return Rows(1); }
  std::string Values(std::size_t series) const { return Rows(series + 2); }

 private:
  static std::string Quoted(const std::string& sheet) {
    std::string quoted = "'";
    for (const char c : sheet) quoted += c == '\'' ? std::string("''") : std::string(1, c);
    std::string xml;
    AppendXml(quoted + "'!", xml);
    return xml;
  }
  static std::string Column(std::size_t number) {
    std::string name = "$";
    AppendColumnName(static_cast<std::int32_t>(number), name);
    return name + "$";
  }
  std::string Cell(std::size_t column, const std::string& row) const {
    return sheet_ + Column(column) + row;
  }
  std::string Rows(std::size_t column) const { return Cell(column, "2:") + Column(column) + last_; }

  std::string sheet_;
  std::string last_;  // row
};

std::string Reference(const char* element, const char* kind, const std::string& place) {
  const std::string name(element);
  const std::string reference(kind);
  return "<c:" + name + "><c:" + reference + "><c:f>" + place + "</c:f></c:" + reference +
         "></c:" + name + ">";
}

// The look of a series: a line, a bar, or parts of which each has a colour of its own.
std::string SeriesLook(const SheetChart& chart, std::size_t series) {
  if (chart.kind == ChartKind::kLines) {
    return "<c:spPr>" + Line(series) + "</c:spPr><c:marker>" + Value("symbol", "none") +
           "</c:marker>";
  }
  if (chart.kind != ChartKind::kShares) {
    return "<c:spPr>" + Fill(series) + "</c:spPr>" + Value("invertIfNegative", "0");
  }
  std::string xml;
  for (std::size_t part = 0; part < chart.categories.size(); ++part) {
    xml += "<c:dPt>" + Value("idx", std::to_string(part)) + "<c:bubble3D val=\"0\"/><c:spPr>" +
           Fill(part) + "</c:spPr></c:dPt>";
  }
  return xml +
         "<c:dLbls><c:txPr><a:bodyPr/><a:p><a:pPr><a:defRPr b=\"1\"><a:solidFill><a:srgbClr "
         "val=\"FFFFFF\"/></a:solidFill></a:defRPr></a:pPr><a:endParaRPr lang=\"fa-IR\"/></a:p>"
         "</c:txPr>" +
         Value("showLegendKey", "0") + Value("showVal", "0") + Value("showCatName", "0") +
         Value("showSerName", "0") + Value("showPercent", "1") + Value("showBubbleSize", "0") +
         Value("showLeaderLines", "0") + "</c:dLbls>";
}

std::string SeriesXml(const SheetChart& chart, const Places& places, std::size_t series) {
  const std::string number = std::to_string(series);
  std::string xml = "<c:ser>" + Value("idx", number) + Value("order", number) +
                    Reference("tx", "strRef", places.Name(series)) + SeriesLook(chart, series) +
                    Reference("cat", "strRef", places.Categories()) +
                    Reference("val", "numRef", places.Values(series));
  if (chart.kind == ChartKind::kLines) xml += Value("smooth", "0");
  return xml + "</c:ser>";
}

std::string AllSeries(const SheetChart& chart) {
  const Places places(chart);
  const std::size_t count = chart.kind == ChartKind::kShares ? 1 : chart.series.size();
  std::string xml;
  for (std::size_t series = 0; series < count; ++series) xml += SeriesXml(chart, places, series);
  return xml;
}

// Of the numbers on an axis; those of the sheet's cells where none is given.
std::string NumberFormat(const std::string& format) {
  std::string xml = "<c:numFmt formatCode=\"";
  AppendXml(format.empty() ? "General" : format, xml);
  return xml + "\" sourceLinked=\"" + (format.empty() ? "1" : "0") + "\"/>";
}

struct Axis {
  const char* element;
  const char* number;
  const char* crossed;  // the number of the other one
  const char* orientation;
  const char* place;
  std::string lines;
  std::string title;
  std::string number_format;
};

std::string AxisXml(const Axis& axis) {
  const std::string element = std::string("c:") + axis.element;
  return "<" + element + ">" + Value("axId", axis.number) + "<c:scaling>" +
         Value("orientation", axis.orientation) + "</c:scaling>" + Value("delete", "0") +
         Value("axPos", axis.place) + axis.lines + Title(axis.title) +
         NumberFormat(axis.number_format) + Value("majorTickMark", "out") +
         Value("minorTickMark", "none") + Value("tickLblPos", "low") +
         Value("crossAx", axis.crossed) + Value("crosses", "autoZero") + "</" + element + ">";
}

std::string Axes(const SheetChart& chart) {
  const std::string lines =
      "<c:majorGridlines><c:spPr><a:ln w=\"6350\"><a:solidFill><a:srgbClr val=\"D9DDE0\"/>"
      "</a:solidFill></a:ln></c:spPr></c:majorGridlines>";
  return AxisXml(
             {"catAx", kCategoryAxis, kValueAxis, "maxMin", "b", "", chart.category_title, ""}) +
         AxisXml({"valAx", kValueAxis, kCategoryAxis, "minMax", "r", lines, chart.value_title,
                  chart.number_format});
}

std::string Plot(const SheetChart& chart) {
  const std::string axes = Value("axId", kCategoryAxis) + Value("axId", kValueAxis);
  switch (chart.kind) {
    case ChartKind::kShares:
      return "<c:doughnutChart>" + Value("varyColors", "1") + AllSeries(chart) +
             Value("firstSliceAng", "0") + Value("holeSize", "55") + "</c:doughnutChart>";
    case ChartKind::kLines:
      return "<c:lineChart>" + Value("grouping", "standard") + Value("varyColors", "0") +
             AllSeries(chart) + Value("marker", "1") + axes + "</c:lineChart>" + Axes(chart);
    case ChartKind::kBars:
    case ChartKind::kStackedBars:
      break;
  }
  const bool stacked = chart.kind == ChartKind::kStackedBars;
  return "<c:barChart>" + Value("barDir", "col") +
         Value("grouping", stacked ? "stacked" : "clustered") + Value("varyColors", "0") +
         AllSeries(chart) + Value("gapWidth", "60") + (stacked ? Value("overlap", "100") : "") +
         axes + "</c:barChart>" + Axes(chart);
}

std::string ChartXml(const SheetChart& chart) {
  return std::string(kHead) +
         "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"" +
         kSpaces + ">" + Value("roundedCorners", "0") + "<c:chart>" + Title(chart.title) +
         Value("autoTitleDeleted", chart.title.empty() ? "1" : "0") + "<c:plotArea><c:layout/>" +
         Plot(chart) + "</c:plotArea><c:legend>" + Value("legendPos", "b") + Value("overlay", "0") +
         "</c:legend>" + Value("plotVisOnly", "1") + Value("dispBlanksAs", "gap") +
         "</c:chart></c:chartSpace>";
}

std::string Corner(const char* name, std::size_t column, std::size_t row) {
  const std::string element(name);
  return "<xdr:" + element + "><xdr:col>" + std::to_string(column) +
         "</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>" + std::to_string(row) +
         "</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:" + element + ">";
}

// Beside the numbers, a column away.
std::string DrawingXml(const SheetChart& chart) {
  constexpr std::size_t kColumns = 12;
  constexpr std::size_t kRows = 25;
  const std::size_t first = chart.series.size() + 2;
  return std::string(kHead) +
         "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/"
         "spreadsheetDrawing\"" +
         kSpaces + "><xdr:twoCellAnchor>" + Corner("from", first, 1) +
         Corner("to", first + kColumns, 1 + kRows) +
         "<xdr:graphicFrame macro=\"\"><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" "
         "name=\"Chart 1\"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off "
         "x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/></xdr:xfrm><a:graphic><a:graphicData "
         "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"><c:chart "
         "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" r:id=\"rId1\"/>"
         "</a:graphicData></a:graphic></xdr:graphicFrame><xdr:clientData/></xdr:twoCellAnchor>"
         "</xdr:wsDr>";
}

}  // namespace

ChartParts PartsOf(const SheetChart& chart) {
  return {chart.sheet, DrawingXml(chart), ChartXml(chart)};
}

}  // namespace vorek::xlsx
