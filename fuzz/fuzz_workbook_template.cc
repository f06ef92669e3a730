// Parts of a workbook, each behind a line "== NAME", in the place of those of a small one (a part
// without a body is left out); or bytes of an archive as they are, behind "PK". What is opened is
// filled, saved, and opened again: it holds the texts that were put in, and all its parts of XML
// are well formed if those that came in were.
#include <map>
#include <pugixml.hpp>

#include "adapters/xlsx/archive.h"
#include "adapters/xlsx/zip_writer.h"
#include "require.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"
#include "vorek/xlsx.h"

namespace {

using namespace vorek;
using Parts = std::map<std::string, std::string>;

class MemoryOutput : public OutputFile {
 public:
  explicit MemoryOutput(std::string& bytes) : bytes_(bytes) {}
  void Write(std::string_view bytes) override { bytes_ += bytes; }
  void Overwrite(std::uint64_t offset, std::string_view bytes) override {
    bytes_.replace(offset, bytes.size(), bytes);
  }
  void Commit() override {}

 private:
  std::string& bytes_;
};

#define MAIN "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
#define RELATIONS "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
#define PACKAGE "http://schemas.openxmlformats.org/package/2006/"
#define KIND "application/vnd.openxmlformats-officedocument.spreadsheetml."

Parts SmallWorkbook() {
  return {
      {"[Content_Types].xml",
       "<Types xmlns=\"" PACKAGE "content-types\">"
       "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package."
       "relationships+xml\"/><Override PartName=\"/xl/workbook.xml\" ContentType=\"" KIND
       "sheet.main+xml\"/><Override PartName=\"/xl/worksheets/sheet1.xml\" ContentType=\"" KIND
       "worksheet+xml\"/><Override PartName=\"/xl/styles.xml\" ContentType=\"" KIND
       "styles+xml\"/></Types>"},
      {"_rels/.rels",
       "<Relationships xmlns=\"" PACKAGE "relationships\"><Relationship Id=\"rId1\" "
       "Type=\"" RELATIONS "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>"},
      {"xl/workbook.xml", "<workbook xmlns=\"" MAIN "\" xmlns:r=\"" RELATIONS "\"><sheets><sheet "
                          "name=\"S\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels",
       "<Relationships xmlns=\"" PACKAGE
       "relationships\"><Relationship Id=\"rId1\" Type=\"" RELATIONS
       "/worksheet\" Target=\"worksheets/sheet1.xml\"/><Relationship Id=\"rId2\" Type=\"" RELATIONS
       "/styles\" Target=\"styles.xml\"/></Relationships>"},
      {"xl/styles.xml", "<styleSheet xmlns=\"" MAIN "\"><fonts count=\"1\"><font/></fonts><fills "
                        "count=\"1\"><fill/></fills><borders count=\"1\"><border/></borders>"
                        "<cellStyleXfs count=\"1\"><xf/></cellStyleXfs><cellXfs count=\"2\"><xf/>"
                        "<xf numFmtId=\"49\"/></cellXfs></styleSheet>"},
      {"xl/worksheets/sheet1.xml",
       "<worksheet xmlns=\"" MAIN
       "\"><dimension ref=\"A1:C3\"/><sheetData><row r=\"1\"><c r=\"A1\" "
       "t=\"inlineStr\"><is><t>^1</t></is></c></row><row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is>"
       "<t>#1</t></is></c><c r=\"B2\" s=\"1\"><v>5</v></c><c r=\"C2\"><f>SUM(B2:B2)</f></c></row>"
       "<row r=\"3\"><c r=\"C3\"><f>C2+1</f></c></row></sheetData><mergeCells "
       "count=\"1\"><mergeCell "
       "ref=\"A3:B3\"/></mergeCells></worksheet>"},
  };
}

std::string Pack(const Parts& parts) {
  std::string bytes;
  MemoryOutput out(bytes);
  xlsx::ZipWriter zip(out);
  for (const auto& [name, body] : parts) zip.AddEntry(name, body);
  zip.Finish();
  return bytes;
}

std::string Archive(std::string_view text) {
  if (text.starts_with("PK")) return std::string(text);
  Parts parts = SmallWorkbook();
  while (!text.empty()) {
    const std::string name(TakeUpTo(text, '\n'));
    const std::size_t next = text.find("\n== ");
    const std::string body(text.substr(0, next));
    text.remove_prefix(next == std::string_view::npos ? text.size() : next + 1);
    if (!name.starts_with("== ")) continue;
    body.empty() ? void(parts.erase(name.substr(3))) : void(parts[name.substr(3)] = body);
  }
  return Pack(parts);
}

bool IsXml(const std::string& part) { return part.ends_with(".xml") || part.ends_with(".rels"); }

bool WellFormed(const xlsx::Archive& archive) {
  for (const std::string& part : archive.Names()) {
    if (!IsXml(part)) continue;
    pugi::xml_document tree;
    const std::string bytes = archive.Read(part);
    if (!tree.load_buffer(bytes.data(), bytes.size())) return false;
  }
  return true;
}

constexpr std::int32_t kFar = 40;  // a column that small workbooks leave free

std::string Fill(TemplateSheet& sheet) {
  const std::int32_t last = std::min(sheet.LastColumn(2), kFar);
  for (std::int32_t column = 1; column <= last; ++column) {
    sheet.Text(2, column);
    sheet.SetFormula(2, column, sheet.Formula(2, column));
  }
  sheet.InsertCopies(2, 3, 2);
  sheet.SetText(3, kFar, "متن <&> \"12\"");
  sheet.SetText(4, kFar, "-12.5");
  sheet.SetTextFormat(5, 1);
  sheet.DeleteRow(1);
  sheet.Protect({});
  std::string bytes;
  MemoryOutput out(bytes);
  sheet.Save(out);
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::shared_ptr<Spreadsheet> program = XlsxSpreadsheet();
  std::string saved;
  bool well_formed = false;
  try {
    const std::string archive = Archive(TextOf(data, size));
    saved = Fill(*program->OpenTemplate(archive, "a.xlsx", [] {}));
    well_formed = WellFormed(xlsx::Archive(archive, "a.xlsx"));
  } catch (const Error&) {
    return 0;
  }
  try {
    if (well_formed) Require(WellFormed(xlsx::Archive(saved, "b.xlsx")), "broken XML is saved");
    const auto again = program->OpenTemplate(saved, "b.xlsx", [] {});
    Require(again->Text(2, kFar) == "متن <&> \"12\"", "a text is saved as " + again->Text(2, kFar));
    Require(again->Text(3, kFar) == "-12.5", "a number is saved as " + again->Text(3, kFar));
  } catch (const Error& error) {
    Require(false, "what was saved doesn't open: " + error.Description());
  }
  return 0;
}
