#include "print/print_template.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <set>
#include <string_view>

#include "print/base64.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::print {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(ErrorNumber::kBadTemplate, reason);
}

constexpr double kLongest = 2000;  // millimetres

template <typename Value>
struct Word {
  std::string_view word;
  Value value;
};

constexpr std::array<Word<BandKind>, 7> kBands = {{{"report-header", BandKind::kReportHeader},
                                                   {"page-header", BandKind::kPageHeader},
                                                   {"group-header", BandKind::kGroupHeader},
                                                   {"detail", BandKind::kDetail},
                                                   {"group-footer", BandKind::kGroupFooter},
                                                   {"page-footer", BandKind::kPageFooter},
                                                   {"report-footer", BandKind::kReportFooter}}};
constexpr std::array<Word<ItemKind>, 5> kItems = {{{"text", ItemKind::kText},
                                                   {"line", ItemKind::kLine},
                                                   {"box", ItemKind::kBox},
                                                   {"picture", ItemKind::kPicture},
                                                   {"sum", ItemKind::kSum}}};
constexpr std::array<Word<Align>, 3> kAligns = {
    {{"right", Align::kRight}, {"centre", Align::kCentre}, {"left", Align::kLeft}}};
constexpr std::array<Word<Form>, 3> kForms = {
    {{"plain", Form::kPlain}, {"money", Form::kMoney}, {"time", Form::kTime}}};
constexpr std::array<Word<SumOver>, 5> kOvers = {{{"group", SumOver::kGroup},
                                                  {"page", SumOver::kPage},
                                                  {"before", SumOver::kBefore},
                                                  {"through", SumOver::kThrough},
                                                  {"report", SumOver::kReport}}};

template <typename Table>
auto Lookup(const Table& table, std::string_view word)
    -> std::optional<decltype(table.begin()->value)> {
  const auto* const found = std::find_if(table.begin(), table.end(),
                                         [&](const auto& entry) { return entry.word == word; });
  if (found == table.end()) return std::nullopt;
  return found->value;
}

template <typename Table, typename Value>
std::string WordOf(const Table& table, Value value) {
  const auto* const found = std::find_if(table.begin(), table.end(),
                                         [&](const auto& entry) { return entry.value == value; });
  return std::string(found->word);
}

// The attributes of one element: each is taken once, and one that nobody takes is refused.
class Attributes {
 public:
  explicit Attributes(const XmlElement& element) : element_(element) {}

  std::string Text(const char* name, std::string missing = "") {
    for (const auto& [key, value] : element_.attributes) {
      if (key != name) continue;
      taken_.insert(key);
      return value;
    }
    return missing;
  }
  double Number(const char* name, std::optional<double> missing, double least, double most) {
    const std::string text = Text(name);
    if (text.empty()) {
      if (missing) return *missing;
      Refuse("الگوي چاپ: " + element_.name + " بدون " + name);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !(value >= least) ||
        !(value <= most)) {
      Refuse("الگوي چاپ: مقدار " + std::string(name) + " در " + element_.name +
             " پذيرفتني نيست: " + text);
    }
    return value;
  }
  bool Flag(const char* name) {
    const std::string text = Text(name, "false");
    if (text != "true" && text != "false") RefuseWord(name, text);
    return text == "true";
  }
  template <typename Table>
  auto OneOf(const char* name, const Table& table, decltype(table.begin()->value) missing) {
    const std::string text = Text(name);
    if (text.empty()) return missing;
    const auto value = Lookup(table, text);
    if (!value) RefuseWord(name, text);
    return *value;
  }
  std::int32_t Color(const char* name, std::int32_t missing) {
    const std::string text = Text(name);
    if (text.empty()) return missing;
    std::int32_t value = 0;
    const char* const last = text.data() + text.size();
    const bool fits = text.size() == 7 && text[0] == '#' &&
                      std::from_chars(text.data() + 1, last, value, 16).ptr == last;
    if (!fits) RefuseWord(name, text);
    return value;
  }
  void End() const {
    for (const auto& [key, value] : element_.attributes) {
      if (taken_.count(key) == 0) {
        Refuse("الگوي چاپ: " + element_.name + " ويژگي " + key + " ندارد.");
      }
    }
  }

 private:
  [[noreturn]] void RefuseWord(const char* name, const std::string& text) const {
    Refuse("الگوي چاپ: مقدار " + std::string(name) + " در " + element_.name +
           " پذيرفتني نيست: " + text);
  }

  const XmlElement& element_;
  std::set<std::string> taken_;
};

void ReadPlace(Attributes& attributes, Item& item) {
  const bool flat = item.kind == ItemKind::kLine;
  item.right = attributes.Number("right", 0.0, 0, kLongest);
  item.top = attributes.Number("top", 0.0, 0, kLongest);
  item.width = attributes.Number("width", std::nullopt, flat ? 0 : 0.1, kLongest);
  item.height = attributes.Number("height", flat ? std::optional<double>(0.0) : std::nullopt,
                                  flat ? 0 : 0.1, kLongest);
}

void ReadLook(Attributes& attributes, Item& item, double size) {
  item.when = attributes.Text("when");
  item.size = attributes.Number("size", size, 1, 200);
  item.bold = attributes.Flag("bold");
  item.align = attributes.OneOf("align", kAligns, Align::kRight);
  item.form = attributes.OneOf("form", kForms, Form::kPlain);
  item.thickness = attributes.Number("thickness", 0.2, 0, 20);
  item.color = attributes.Color("color", 0);
  item.fill = attributes.Color("fill", -1);
}

Item ReadItem(const XmlElement& element, double size) {
  const auto kind = Lookup(kItems, element.name);
  if (!kind) Refuse("الگوي چاپ: جزء ناشناخته " + element.name);
  if (!element.children.empty()) {
    Refuse("الگوي چاپ: در " + element.name + " جزئي نبايد باشد: " + element.children[0].name);
  }
  Item item;
  item.kind = *kind;
  Attributes attributes(element);
  ReadPlace(attributes, item);
  ReadLook(attributes, item, size);
  if (item.kind == ItemKind::kSum) {
    item.field = attributes.Text("field");
    item.over = attributes.OneOf("over", kOvers, SumOver::kReport);
    if (item.field.empty()) Refuse("الگوي چاپ: sum بدون field");
  } else if (item.kind == ItemKind::kPicture) {
    const auto bytes = DecodeBase64(element.text);
    if (!bytes || bytes->empty()) Refuse("الگوي چاپ: تصوير بايد در خود الگو باشد.");
    item.text = *bytes;
  } else if (item.kind == ItemKind::kText) {
    item.text = element.text;
  }
  attributes.End();
  return item;
}

Band ReadBand(const XmlElement& element, double size) {
  const auto kind = Lookup(kBands, element.name);
  if (!kind) Refuse("الگوي چاپ: بخش ناشناخته " + element.name);
  Band band;
  band.kind = *kind;
  Attributes attributes(element);
  band.height = attributes.Number("height", std::nullopt, 1, kLongest);
  const bool grouped = band.kind == BandKind::kGroupHeader || band.kind == BandKind::kGroupFooter;
  if (grouped) {
    band.group = attributes.Text("group");
    if (band.group.empty()) Refuse("الگوي چاپ: " + element.name + " بدون group");
  }
  if (band.kind == BandKind::kGroupHeader) {
    const std::string keep = attributes.Text("keep");
    band.keep_all = keep == "all";
    band.keep =
        band.keep_all ? 1 : static_cast<std::int32_t>(attributes.Number("keep", 1.0, 0, 100));
    band.repeat = attributes.Flag("repeat");
  }
  attributes.End();
  for (const XmlElement& item : element.children) band.items.push_back(ReadItem(item, size));
  return band;
}

bool IsGroupBand(const Band& band) {
  return band.kind == BandKind::kGroupHeader || band.kind == BandKind::kGroupFooter;
}

void CheckTwice(const PrintTemplate& made, const Band& band) {
  const bool twice = IsGroupBand(band) ? made.Find(band.kind, band.group) != nullptr
                                       : made.Find(band.kind) != nullptr;
  if (twice) Refuse("الگوي چاپ: بخش " + WordOf(kBands, band.kind) + " دو بار آمده است.");
}

// Every band has to find its place on a page beside the bands that stand on each.
void CheckRoom(const PrintTemplate& made) {
  if (made.PrintableWidth() < 10 || made.PrintableHeight() < 10) {
    Refuse("الگوي چاپ: حاشيه ها براي صفحه جايي نمي گذارند.");
  }
  double standing = 0;
  for (const Band& band : made.bands) {
    const bool stands =
        band.kind == BandKind::kPageHeader || band.kind == BandKind::kPageFooter || band.repeat;
    if (stands) standing += band.height;
  }
  for (const Band& band : made.bands) {
    const bool stands =
        band.kind == BandKind::kPageHeader || band.kind == BandKind::kPageFooter || band.repeat;
    if (standing + (stands ? 0 : band.height) <= made.PrintableHeight()) continue;
    Refuse("الگوي چاپ: بخش " + WordOf(kBands, band.kind) + " در صفحه جا نمي شود.");
  }
}

void CheckSums(const PrintTemplate& made) {
  std::size_t items = 0;
  for (const Band& band : made.bands) {
    items += band.items.size();
    for (const Item& item : band.items) {
      if (item.kind == ItemKind::kSum && item.over == SumOver::kGroup && !IsGroupBand(band)) {
        Refuse("الگوي چاپ: جمع گروه تنها در سر و ته گروه مي آيد: " + item.field);
      }
    }
  }
  if (items > kMostItems) Refuse("الگوي چاپ بيش از " + std::to_string(kMostItems) + " جزء دارد.");
  if (made.Groups().size() > kMostGroups) {
    Refuse("الگوي چاپ بيش از " + std::to_string(kMostGroups) + " گروه دارد.");
  }
}

// --- Writing
// ------------------------------------------------------------------------------------

std::string Escaped(const std::string& text) {
  std::string out = text::Replace(text, "&", "&amp;");
  out = text::Replace(out, "<", "&lt;");
  out = text::Replace(out, ">", "&gt;");
  return text::Replace(out, "\"", "&quot;");
}

std::string Attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + Escaped(value) + "\"";
}

std::string Attribute(const char* name, double value) {
  return Attribute(name, text::PlainNumber(std::round(value * 100) / 100));
}

std::string WriteItem(const Item& item) {
  const std::string name = WordOf(kItems, item.kind);
  std::string line = "    <" + name + Attribute("right", item.right) + Attribute("top", item.top) +
                     Attribute("width", item.width) + Attribute("height", item.height);
  if (item.kind == ItemKind::kSum) {
    line += Attribute("field", item.field) + Attribute("over", WordOf(kOvers, item.over));
  }
  if (!item.when.empty()) line += Attribute("when", item.when);
  if (item.form != Form::kPlain) line += Attribute("form", WordOf(kForms, item.form));
  if (item.align != Align::kRight) line += Attribute("align", WordOf(kAligns, item.align));
  if (item.size > 0) line += Attribute("size", item.size);
  if (item.bold) line += Attribute("bold", "true");
  return item.kind == ItemKind::kText ? line + ">" + Escaped(item.text) + "</text>\n"
                                      : line + "/>\n";
}

std::string WriteBand(const Band& band) {
  const std::string name = WordOf(kBands, band.kind);
  std::string out = "  <" + name + Attribute("height", band.height);
  if (!band.group.empty()) out += Attribute("group", band.group);
  if (band.kind == BandKind::kGroupHeader) {
    out += Attribute("keep", band.keep_all ? "all" : std::to_string(band.keep));
    if (band.repeat) out += Attribute("repeat", "true");
  }
  out += ">\n";
  for (const Item& item : band.items) out += WriteItem(item);
  return out + "  </" + name + ">\n";
}

}  // namespace

const Band* PrintTemplate::Find(BandKind kind) const {
  const auto found =
      std::find_if(bands.begin(), bands.end(), [&](const Band& band) { return band.kind == kind; });
  return found == bands.end() ? nullptr : &*found;
}

const Band* PrintTemplate::Find(BandKind kind, const std::string& group) const {
  const auto found = std::find_if(bands.begin(), bands.end(), [&](const Band& band) {
    return band.kind == kind && band.group == group;
  });
  return found == bands.end() ? nullptr : &*found;
}

std::vector<std::string> PrintTemplate::Groups() const {
  std::vector<std::string> groups;
  for (const Band& band : bands) {
    if (!IsGroupBand(band)) continue;
    if (std::find(groups.begin(), groups.end(), band.group) == groups.end()) {
      groups.push_back(band.group);
    }
  }
  return groups;
}

PrintTemplate ReadTemplate(const XmlElement& document) {
  if (document.name != "print-template") Refuse("ريشه الگوي چاپ print-template نيست.");
  PrintTemplate made;
  Attributes attributes(document);
  if (attributes.Text("version") != "1") Refuse("نسخه الگوي چاپ 1 نيست.");
  made.width = attributes.Number("width", 210.0, 20, kLongest);
  made.height = attributes.Number("height", 297.0, 20, kLongest);
  const double margin = attributes.Number("margin", 10.0, 0, 500);
  made.margin_top = attributes.Number("margin-top", margin, 0, 500);
  made.margin_right = attributes.Number("margin-right", margin, 0, 500);
  made.margin_bottom = attributes.Number("margin-bottom", margin, 0, 500);
  made.margin_left = attributes.Number("margin-left", margin, 0, 500);
  made.font = attributes.Text("font");
  made.title = attributes.Text("title");
  const double size = attributes.Number("size", 9.0, 1, 200);
  attributes.End();
  for (const XmlElement& element : document.children) {
    Band band = ReadBand(element, size);
    CheckTwice(made, band);
    made.bands.push_back(std::move(band));
  }
  if (made.Find(BandKind::kDetail) == nullptr) Refuse("الگوي چاپ بخش detail ندارد.");
  CheckSums(made);
  CheckRoom(made);
  return made;
}

std::string WriteTemplate(const PrintTemplate& print_template) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<print-template" +
                    Attribute("version", "1") + Attribute("width", print_template.width) +
                    Attribute("height", print_template.height) +
                    Attribute("margin-top", print_template.margin_top) +
                    Attribute("margin-right", print_template.margin_right) +
                    Attribute("margin-bottom", print_template.margin_bottom) +
                    Attribute("margin-left", print_template.margin_left);
  if (!print_template.font.empty()) out += Attribute("font", print_template.font);
  if (!print_template.title.empty()) out += Attribute("title", print_template.title);
  out += ">\n";
  for (const Band& band : print_template.bands) out += WriteBand(band);
  return out + "</print-template>\n";
}

}  // namespace vorek::print
