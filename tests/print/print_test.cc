#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "platform/memory_database.h"
#include "print/base64.h"
#include "print/print_document.h"
#include "print/template_check.h"
#include "print/template_job.h"
#include "vorek/field_type.h"
#include "vorek/xml.h"

namespace vorek::print {
namespace {

PrintTemplate Template(const std::string& bands, const std::string& attributes = "") {
  return ReadTemplate(PugiXmlReader()("<print-template version=\"1\" " + attributes + ">" + bands +
                                      "</print-template>"));
}

std::string Refusal(const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.Description();
  }
  return "";
}

constexpr const char* kDetail =
    "<detail height=\"6\"><text width=\"30\" height=\"5\">{Column1}</text></detail>";

// Rows of (Sequence, Column1, Column2, Column3).
FieldValues Rows(const std::vector<MemoryRow>& rows) {
  return {MakeResult({{"Sequence", kInteger},
                      {"Column1", kVarWChar},
                      {"Column2", kVarWChar},
                      {"Column3", kVarWChar}},
                     rows),
          {}};
}

std::string Texts(const PrintDocument& document, std::size_t page) {
  std::string all;
  for (const DrawnItem& drawn : document.Page(page)) all += drawn.text + "|";
  return all;
}

TEST(PrintTemplateTest, RefusesWhatCannotBePrinted) {
  const struct {
    const char* bands;
    const char* attributes;
    const char* reason;  // a part of it
  } cases[] = {
      {"", "", "detail"},
      {"<detail height=\"6\"/><detail height=\"6\"/>", "", "دو بار"},
      {"<detail height=\"0\"/>", "", "height"},
      {"<detail height=\"nan\"/>", "", "height"},
      {"<detail/>", "", "بدون height"},
      {"<detail height=\"300\"/>", "", "جا نمي شود"},
      {"<detail height=\"6\"/><page-header height=\"274\"/>", "", "جا نمي شود"},
      {"<detail height=\"6\"/>", "margin=\"150\"", "حاشيه"},
      {"<detail height=\"6\"/>", "width=\"100000\"", "width"},
      {"<detail height=\"6\" colour=\"x\"/>", "", "colour"},
      {"<body height=\"6\"/>", "", "body"},
      {"<detail height=\"6\"><oval width=\"1\" height=\"1\"/></detail>", "", "oval"},
      {"<detail height=\"6\"><text height=\"1\">x</text></detail>", "", "width"},
      {"<detail height=\"6\"><text width=\"0\" height=\"1\">x</text></detail>", "", "width"},
      {"<detail height=\"6\"><text width=\"1\" height=\"9999999\">x</text></detail>", "", "height"},
      {"<detail height=\"6\"><text width=\"1\" height=\"1\" align=\"up\">x</text></detail>", "",
       "align"},
      {"<detail height=\"6\"><text width=\"1\" height=\"1\" color=\"red\">x</text></detail>", "",
       "color"},
      {"<detail height=\"6\"><picture width=\"1\" height=\"1\">/etc/passwd.png</picture></detail>",
       "", "تصوير"},
      {"<detail height=\"6\"><sum width=\"1\" height=\"1\"/></detail>", "", "field"},
      {"<detail height=\"6\"><sum width=\"1\" height=\"1\" field=\"a\" over=\"group\"/></detail>",
       "", "گروه"},
      {"<detail height=\"6\"/><group-header height=\"6\"/>", "", "group"},
  };
  for (const auto& c : cases) {
    const std::string reason = Refusal([&] { Template(c.bands, c.attributes); });
    EXPECT_NE(reason.find(c.reason), std::string::npos) << c.bands << ": " << reason;
  }
  std::string groups = kDetail;
  for (int i = 0; i < 10000; ++i) {
    groups += "<group-header height=\"1\" group=\"g" + std::to_string(i) + "\"/>";
  }
  EXPECT_NE(Refusal([&] { Template(groups); }).find("گروه"), std::string::npos);
}

TEST(PrintTemplateTest, TakesNoEntitiesAndNoOtherFile) {
  const struct {
    std::string bytes;
    const char* reason;
  } cases[] = {
      {"<!DOCTYPE x [<!ENTITY a \"b\">]><print-template version=\"1\"/>", "DOCTYPE"},
      {std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8), "XML"},
      {"", "XML"},
      {"<html/>", "print-template"},
      {"<print-template version=\"2\"/>", "نسخه"},
      {std::string(100000, '<'), "XML"},
      {[] {
         std::string deep = "<print-template version=\"1\">";
         for (int i = 0; i < 10000; ++i) deep += "<a>";
         for (int i = 0; i < 10000; ++i) deep += "</a>";
         return deep + "</print-template>";
       }(),
       "تو در تو"},
  };
  for (const auto& c : cases) {
    const std::string reason = Refusal([&] { ReadTemplate(PugiXmlReader()(c.bytes)); });
    EXPECT_NE(reason.find(c.reason), std::string::npos) << reason;
  }
}

TEST(PrintTemplateTest, ReadsWhatItWrites) {
  const PrintTemplate made = Template(
      "<page-header height=\"9\"><text right=\"1.5\" top=\"2\" width=\"30\" height=\"5\" "
      "size=\"11\" bold=\"true\" align=\"centre\" form=\"money\" when=\"{Column1}\">a &lt; "
      "{Column1}</text></page-header><group-header height=\"6\" group=\"Column1\" keep=\"3\" "
      "repeat=\"true\"/><detail height=\"6\"><sum width=\"9\" height=\"5\" field=\"Column2\" "
      "over=\"through\"/></detail>",
      "width=\"100\" margin=\"5\" font=\"A&amp;B\" title=\"عنوان\"");
  const std::string written = WriteTemplate(made);
  EXPECT_EQ(WriteTemplate(ReadTemplate(PugiXmlReader()(written))), written);
  EXPECT_EQ(made.bands[0].items[0].text, "a < {Column1}");
  EXPECT_EQ(made.PrintableWidth(), 90);
}

TEST(BoundTextTest, PutsValuesInPlaceOfFields) {
  FieldValues values = Rows({{"1", "1234567", "ب", "-5"}});
  values.named = {{"@نام", "علي"}, {"$-1", "مدير"}, {"UserID", "7"}};
  const Place place{0, true, 2, 9};
  const struct {
    const char* text;
    const char* value;
  } cases[] = {
      {"{column1}/{Column2}", "1234567/ب"},
      {"{page} از {pages}", "2 از 9"},
      {"{@نام}-{@other}-{$-1}-{$-5}-{UserID}", "علي--مدير--7"},
      {"{{x}}", "{x}"},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(BoundText(c.text, values).At(values, place), c.value);
  EXPECT_EQ(BoundText("{Column3}+1", values).FormulaAt(values, place), "-5+1");
  EXPECT_NE(Refusal([&] { BoundText("{Column9}", values); }).find("Column9"), std::string::npos);
  EXPECT_NE(Refusal([&] { BoundText("{Column1", values); }), "");
  EXPECT_EQ(ParseFormula("نام='a=b'"), std::make_pair(std::string("@نام"), std::string("a=b")));
  EXPECT_EQ(ParseFormula("UserID=5"), std::make_pair(std::string("UserID"), std::string("5")));
  EXPECT_EQ(ParseFormula("$-1=''"), std::make_pair(std::string("$-1"), std::string()));
}

TEST(PrintDocumentTest, PutsRowsOnPagesInTheirSequence) {
  const PrintTemplate layout = Template(
      "<report-header height=\"10\"><text width=\"9\" height=\"5\">سر</text></report-header>"
      "<page-header height=\"5\"><text width=\"9\" height=\"4\">{page}</text></page-header>"
      "<detail height=\"10\"><text width=\"9\" height=\"5\">{Column1}</text></detail>"
      "<page-footer height=\"5\"><text width=\"9\" height=\"4\">{page}/{pages}</text></page-footer>"
      "<report-footer height=\"10\"><text width=\"9\" height=\"5\">ته</text></report-footer>",
      "height=\"50\" margin=\"0\"");
  const PrintDocument document(
      layout,
      Rows({{"3", "c", "", ""}, {"1", "a", "", ""}, {"10", "d", "", ""}, {"2", "b", "", ""}}));
  // 40 millimetres a page for rows, 30 on the first one.
  ASSERT_EQ(document.PageCount(), 2U);
  EXPECT_EQ(Texts(document, 0), "سر|1|a|b|c|1/2|");
  EXPECT_EQ(Texts(document, 1), "2|d|ته|2/2|");
  EXPECT_EQ(document.Page(0)[0].left, 210 - 9);
  const PrintDocument empty(layout, Rows({}));
  EXPECT_EQ(Texts(empty, 0), "سر|1|ته|1/1|");
}

TEST(PrintDocumentTest, AddsUpPagesGroupsAndWhatWasBefore) {
  const auto sum = [](const char* over) {
    return std::string("<sum width=\"9\" height=\"4\" field=\"Column2\" form=\"money\" over=\"") +
           over + "\"/>";
  };
  const PrintTemplate layout =
      Template("<page-header height=\"5\">" + sum("before") + "</page-header>" +
                   "<group-header height=\"5\" group=\"Column1\" repeat=\"true\"><text width=\"9\" "
                   "height=\"4\">{Column1}</text></group-header>"
                   "<detail height=\"10\"><text width=\"9\" height=\"5\" form=\"money\" "
                   "when=\"{Column2}\">{Column2}</text></detail>"
                   "<group-footer height=\"5\" group=\"Column1\">" +
                   sum("group") + "</group-footer><page-footer height=\"5\">" + sum("page") +
                   sum("through") + "</page-footer><report-footer height=\"5\">" + sum("report") +
                   "</report-footer>",
               "height=\"40\" margin=\"0\"");
  const PrintDocument document(layout, Rows({{"1", "a", "1000.25", ""},
                                             {"2", "a", "-500", ""},
                                             {"3", "a", "0", ""},
                                             {"4", "b", "2000", ""}}));
  ASSERT_EQ(document.PageCount(), 3U);
  EXPECT_EQ(Texts(document, 0), "0|a|1/000.25|(500)|500.25|500.25|");
  // The group goes on: its header again; a row whose condition gives 0 shows nothing.
  EXPECT_EQ(Texts(document, 1), "500.25|a|500.25|0|500.25|");
  EXPECT_EQ(Texts(document, 2), "500.25|b|2/000|2/000|2/500.25|2/000|2/500.25|");
}

TEST(PrintDocumentTest, KeepsRowsWithTheirHeader) {
  const auto pages = [](const char* keep) {
    const PrintTemplate layout = Template(
        std::string("<group-header height=\"10\" group=\"Column1\" keep=\"") + keep +
            "\"><text width=\"9\" height=\"4\">{Column1}:</text></group-header>"
            "<detail height=\"10\"><text width=\"9\" height=\"5\">{Column2}</text></detail>",
        "height=\"60\" margin=\"0\"");
    const PrintDocument document(layout, Rows({{"1", "a", "1", ""},
                                               {"2", "a", "2", ""},
                                               {"3", "a", "3", ""},
                                               {"4", "b", "4", ""},
                                               {"5", "b", "5", ""}}));
    return Texts(document, 0) + "#" + (document.PageCount() > 1 ? Texts(document, 1) : "");
  };
  EXPECT_EQ(pages("0"), "a:|1|2|3|b:|4|#5|");
  EXPECT_EQ(pages("1"), "a:|1|2|3|b:|4|#5|");
  EXPECT_EQ(pages("2"), "a:|1|2|3|#b:|4|5|");
  EXPECT_EQ(pages("all"), "a:|1|2|3|#b:|4|5|");
}

TEST(PrintDocumentTest, KeepsAGroupThatJustFitsAPage) {
  for (const double row : {9.0, 9.1, 9.3, 9.7, 9.9}) {
    const std::string page = "height=\"" + std::to_string(11.7 + 5 * row) + "\" margin=\"0\"";
    const PrintDocument document(
        Template("<group-header height=\"11.7\" group=\"Column1\" keep=\"all\"/><detail height=\"" +
                     std::to_string(row) +
                     "\"><text width=\"9\" height=\"5\">{Column2}</text></detail>",
                 page),
        Rows({{"1", "a", "1", ""},
              {"2", "b", "2", ""},
              {"3", "b", "3", ""},
              {"4", "b", "4", ""},
              {"5", "b", "5", ""},
              {"6", "b", "6", ""}}));
    ASSERT_EQ(document.PageCount(), 2U) << row;
    EXPECT_EQ(Texts(document, 0) + "#" + Texts(document, 1), "1|#2|3|4|5|6|") << row;
  }
}

// Nested groups on random rows: each row stands once, in its order, inside of its own groups, and
// no band reaches below the page's footer.
TEST(PrintDocumentTest, LosesNoRowOnRandomPages) {
  std::mt19937 random(17);
  for (int round = 0; round < 300; ++round) {
    std::vector<MemoryRow> rows;
    std::int64_t total = 0;
    for (unsigned row = 0; row < random() % 60; ++row) {
      const int value = static_cast<int>(random() % 2000) - 1000;
      total += value;
      rows.push_back({std::to_string(row), std::to_string(row * 3UL / (1 + random() % 7) / 10),
                      std::to_string(row / 4 % 3), std::to_string(value)});
    }
    const std::string keep = random() % 3 == 0 ? "all" : std::to_string(random() % 4);
    const PrintTemplate layout = Template(
        "<page-header height=\"4\"/><group-header height=\"5\" group=\"Column1\" keep=\"" + keep +
            "\" repeat=\"true\"><text width=\"9\" height=\"4\">A{Column1}</text></group-header>"
            "<group-header height=\"3\" group=\"Column2\"><text width=\"9\" "
            "height=\"3\">B{Column2}</text></group-header>"
            "<detail height=\"6\"><text width=\"9\" height=\"5\">R{Column3}</text></detail>"
            "<group-footer height=\"4\" group=\"Column1\"><sum width=\"9\" height=\"4\" "
            "field=\"Column3\" over=\"group\"/></group-footer><page-footer height=\"5\">"
            "<sum width=\"9\" height=\"4\" field=\"Column3\" over=\"through\"/></page-footer>",
        "height=\"" + std::to_string(40 + random() % 60) + "\" margin=\"1\"");
    const PrintDocument document(layout, Rows(rows));
    std::string printed, expected;
    std::int64_t groups = 0;
    std::string last, heading;
    std::size_t next = 0;
    for (std::size_t page = 0; page < document.PageCount(); ++page) {
      for (const DrawnItem& drawn : document.Page(page)) {
        if (drawn.text.starts_with("A")) heading = drawn.text;
        const bool row = drawn.text.starts_with("R");
        if (row) printed += drawn.text;
        // What stands below a heading is of its group, the sum at its end too.
        if (row) {
          ASSERT_EQ(heading, "A" + *rows.at(next++)[1]);
        }
        if (drawn.item->over == SumOver::kGroup) {
          ASSERT_EQ(heading, "A" + *rows.at(next - 1)[1]);
        }
        if (drawn.item->kind == ItemKind::kSum) {
          if (drawn.item->over == SumOver::kGroup) groups += std::stoll(drawn.text);
          last = drawn.text;
        }
        EXPECT_LE(drawn.top + drawn.item->height, layout.height - layout.margin_bottom + 1e-6);
      }
    }
    for (const MemoryRow& row : rows) expected += "R" + *row[3];
    ASSERT_EQ(printed, expected);
    ASSERT_EQ(groups, total);
    ASSERT_EQ(last, std::to_string(total));
  }
}

// What is wrong with a template over Rows, an "!" in front of what stops a print.
std::string Faults(const std::string& bands) {
  std::string all;
  for (const TemplateFault& fault :
       CheckTemplate(Template(bands), Rows({}).rows, {"Period", "From"})) {
    all += (fault.stops ? "!" : "") + fault.what + "|";
  }
  return all;
}

std::string Detail(const std::string& items) {
  return "<detail height=\"6\">" + items + "</detail>";
}

TEST(TemplateCheckTest, TellsEachFault) {
  // The paper is 210 wide with margins of 10.
  const std::string at_zero = "<text width=\"30\" height=\"5\">a</text>";
  const struct {
    std::string bands;
    const char* faults;  // all of them; of texts in Persian a part
  } cases[] = {
      {kDetail, ""},
      {Detail("<text width=\"30\" height=\"5\">{column2} {page} {@Period} {$-1} {{x}}</text>"), ""},
      {Detail("<text width=\"30\" height=\"5\">{Column9}</text>"), "!الگوي چاپ: ستون Column9"},
      {Detail("<text width=\"30\" height=\"5\" when=\"{Column9}\">x</text>"),
       "!الگوي چاپ: ستون Column9"},
      {Detail("<text width=\"30\" height=\"5\">{Column1</text>"), "!الگوي چاپ: آكولاد"},
      {Detail("<sum width=\"30\" height=\"5\" field=\"Amount\"/>"), "!الگوي چاپ: ستون Amount"},
      {"<group-header height=\"6\" group=\"Customer\"/>" + std::string(kDetail),
       "!الگوي چاپ: ستون Customer"},
      {Detail("<text width=\"30\" height=\"5\">{{@x}} {@period}</text>"),
       "the report has no parameter named \"period\"|"},
      {Detail("<text right=\"160\" width=\"30\" height=\"5\">a</text>"), ""},
      {Detail("<text right=\"161\" width=\"30\" height=\"5\">a</text>"),
       "\"a\" at 161, 0 ends 1 mm in the left margin|"},
      {Detail("<text right=\"171\" width=\"30\" height=\"5\">a</text>"),
       "\"a\" at 171, 0 ends 1 mm beyond the paper|"},
      {Detail("<box top=\"2\" width=\"30\" height=\"5\"/>"),
       "item at 0, 2 ends 1 mm below its band|"},
      {Detail(at_zero + "<text right=\"30\" width=\"30\" height=\"5\">b</text>"), ""},
      {Detail(at_zero + "<text right=\"29\" width=\"30\" height=\"5\">b</text>"),
       "\"a\" at 0, 0 lies over \"b\" at 29, 0|"},
      {Detail(at_zero + "<box width=\"60\" height=\"5\"/>"), ""},
      {Detail(at_zero + "<text width=\"30\" height=\"5\" when=\"{Column1}\">b</text>"), ""},
  };
  for (const auto& c : cases) {
    const std::string faults = Faults(c.bands);
    const std::string wanted = c.faults;
    EXPECT_EQ(wanted.starts_with('!') ? faults.substr(0, wanted.size()) : faults, wanted)
        << c.bands;
  }
}

TEST(TemplateCheckTest, LooksAtNoColumnsThatCannotBeTold) {
  EXPECT_TRUE(
      CheckTemplate(Template(Detail("<text width=\"9\" height=\"5\">{x}</text>")), nullptr, {})
          .empty());
}

TEST(XmlReaderTest, GivesItsReasonsInPersian) {
  const struct {
    const char* bytes;
    const char* reason;  // a part of it
  } cases[] = {{"<a></b>", "يكي نيست"}, {"<a", "آغاز جزء"},
               {"<a b></a>", "ويژگي"},  {"<a><!-- </a>", "يادداشت"},
               {"<a></a", "پايان جزء"}, {"<a><![CDATA[", "CDATA"},
               {"<a>", "يكي نيست"},     {"", "ريشه"}};
  for (const auto& c : cases) {
    const std::string reason = Refusal([&] { PugiXmlReader()(c.bytes); });
    EXPECT_NE(reason.find(c.reason), std::string::npos) << c.bytes << ": " << reason;
  }
}

TEST(Base64Test, DecodesWhatIsWhole) {
  EXPECT_EQ(DecodeBase64("TWFu\n TWE=").value_or("none"), "ManMa");
  EXPECT_EQ(DecodeBase64("").value_or("none"), "");
  for (const char* const text : {"T", "TWF*", "TWE=TWE"}) EXPECT_FALSE(DecodeBase64(text)) << text;
}

}  // namespace
}  // namespace vorek::print
