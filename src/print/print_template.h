#ifndef VOREK_PRINT_PRINT_TEMPLATE_H_
#define VOREK_PRINT_PRINT_TEMPLATE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "platform/xml_element.h"

// A print template as its author writes it: bands of items. Lengths are millimetres; an item lies
// by its right edge, from the right edge of the printable area, and by its top, from the band's
// top. docs/print.md tells the format, share/print-template.xsd holds it.
namespace vorek::print {

enum class BandKind {
  kReportHeader,
  kPageHeader,
  kGroupHeader,
  kDetail,
  kGroupFooter,
  kPageFooter,
  kReportFooter
};

enum class ItemKind { kText, kLine, kBox, kPicture, kSum };
enum class Align { kRight, kCentre, kLeft };
// How a value is written: as it comes, with digit groups and brackets for negative values, or
// minutes as hours and minutes.
enum class Form { kPlain, kMoney, kTime };
// What a sum adds up.
enum class SumOver {
  kGroup,    // the rows of the band's group
  kPage,     // the rows of the page
  kBefore,   // those of all pages before it
  kThrough,  // those up to the end of the page
  kReport    // all rows
};

struct Item {
  ItemKind kind = ItemKind::kText;
  double right = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  std::string text;   // of a text: with {fields}; of a picture: its bytes
  std::string field;  // of a sum
  std::string
      when;  // a formula over {fields}; the item is left out where it gives 0. "" for always
  SumOver over = SumOver::kReport;
  Form form = Form::kPlain;
  Align align = Align::kRight;
  double size = 0;  // points
  bool bold = false;
  double thickness = 0.2;
  std::int32_t color = 0;  // 0xRRGGBB
  std::int32_t fill = -1;  // of a box; -1 for none
};

struct Band {
  BandKind kind = BandKind::kDetail;
  double height = 0;
  std::vector<Item> items;
  // Of a group's bands.
  std::string group;      // the column whose value makes the group
  std::int32_t keep = 1;  // rows that stay with a group's header
  bool keep_all = false;  // the whole group, where a page has the room
  bool repeat = false;    // again at the top of each page that the group goes on to
};

struct PrintTemplate {
  double width = 210;
  double height = 297;
  double margin_top = 10;
  double margin_right = 10;
  double margin_bottom = 10;
  double margin_left = 10;
  std::string font;  // a family; "" for the screen's own
  std::string title;
  std::vector<Band> bands;  // groups from the outermost to the innermost

  double PrintableWidth() const { return width - margin_left - margin_right; }
  double PrintableHeight() const { return height - margin_top - margin_bottom; }
  // Null for a kind that the template doesn't have.
  const Band* Find(BandKind kind) const;
  const Band* Find(BandKind kind, const std::string& group) const;
  // The columns that make groups, from the outermost on.
  std::vector<std::string> Groups() const;
};

// Reads a template out of its document. Throws Error(kBadTemplate), in Persian, for what isn't one,
// and for every element, attribute or measure that it can't have.
PrintTemplate ReadTemplate(const XmlElement& document);

// Writes a template as its document, so that an author can go on with it.
std::string WriteTemplate(const PrintTemplate& print_template);

constexpr std::size_t kMostItems = 5000;
constexpr std::size_t kMostGroups = 8;

}  // namespace vorek::print

#endif  // VOREK_PRINT_PRINT_TEMPLATE_H_
