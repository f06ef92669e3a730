#include "print/template_check.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "print/bound_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::print {
namespace {

constexpr double kTolerance = 0.05;  // millimetres

std::string Millimetres(double value) { return text::PlainNumber(std::round(value * 10) / 10); }

std::string NameOf(const Item& item) {
  constexpr std::size_t kShown = 30;  // characters
  const std::string place = Millimetres(item.right) + ", " + Millimetres(item.top);
  const std::string said = item.kind == ItemKind::kSum ? "sum of " + item.field
                           : item.kind == ItemKind::kText
                               ? "\"" + text::Left(item.text, kShown) + "\""
                               : "item";
  return said + " at " + place;
}

bool Writes(const Item& item) {
  return item.kind == ItemKind::kText || item.kind == ItemKind::kSum;
}

// Items under conditions may take turns at one place.
bool Overlap(const Item& a, const Item& b) {
  const bool both = Writes(a) && Writes(b) && a.when.empty() && b.when.empty();
  return both && a.right + a.width > b.right + kTolerance &&
         b.right + b.width > a.right + kTolerance && a.top + a.height > b.top + kTolerance &&
         b.top + b.height > a.top + kTolerance;
}

class Check {
 public:
  Check(const PrintTemplate& checked, const ResultSetPtr& rows,
        const std::vector<std::string>& parameters)
      : checked_(checked), values_{rows, {}}, parameters_(parameters) {}

  std::vector<TemplateFault> Run() {
    for (const std::string& group : checked_.Groups()) CheckColumn(group);
    for (const Band& band : checked_.bands) {
      for (const Item& item : band.items) {
        CheckFields(item);
        CheckPlace(band, item);
      }
      CheckOverlaps(band);
    }
    return std::move(faults_);
  }

 private:
  void Tell(bool stops, std::string what, std::string why) {
    const auto same = [&](const TemplateFault& fault) { return fault.what == what; };
    if (std::none_of(faults_.begin(), faults_.end(), same)) {
      faults_.push_back({stops, std::move(what), std::move(why)});
    }
  }
  // Does what a print does, and tells what it would refuse.
  void Try(const std::function<void()>& work) {
    if (values_.rows == nullptr) return;
    try {
      work();
    } catch (const Error& error) {
      Tell(true, error.Description(), "nothing is printed");
    }
  }
  void CheckColumn(const std::string& name) {
    Try([&] { ColumnNamed(*values_.rows, name); });
  }
  void CheckFields(const Item& item);
  void CheckParameters(const std::string& text);
  void CheckPlace(const Band& band, const Item& item);
  void CheckOverlaps(const Band& band);

  const PrintTemplate& checked_;
  FieldValues values_;
  const std::vector<std::string>& parameters_;
  std::vector<TemplateFault> faults_;
};

void Check::CheckFields(const Item& item) {
  if (item.kind == ItemKind::kSum) CheckColumn(item.field);
  const std::string text = item.kind == ItemKind::kText ? item.text : "";
  Try([&] { BoundText(text, values_); });
  Try([&] { BoundText(item.when, values_); });
  CheckParameters(text);
  CheckParameters(item.when);
}

void Check::CheckParameters(const std::string& text) {
  for (std::size_t at = text.find("{@"); at != std::string::npos; at = text.find("{@", at + 1)) {
    if (at > 0 && text[at - 1] == '{') continue;
    const std::size_t close = std::min(text.find('}', at), text.size());
    const std::string name = text.substr(at + 2, std::max(close, at + 2) - at - 2);
    if (std::count(parameters_.begin(), parameters_.end(), name) != 0) continue;
    Tell(false, "the report has no parameter named \"" + name + "\"", "nothing stands there");
  }
}

void Check::CheckPlace(const Band& band, const Item& item) {
  const double left = item.right + item.width - checked_.PrintableWidth();
  if (left > checked_.margin_left + kTolerance) {
    Tell(
        false,
        NameOf(item) + " ends " + Millimetres(left - checked_.margin_left) + " mm beyond the paper",
        "it is cut off");
  } else if (left > kTolerance) {
    Tell(false, NameOf(item) + " ends " + Millimetres(left) + " mm in the left margin",
         "a printer may cut it off");
  }
  const double below = item.top + item.height - band.height;
  if (below > kTolerance) {
    Tell(false, NameOf(item) + " ends " + Millimetres(below) + " mm below its band",
         "it stands over what follows");
  }
}

void Check::CheckOverlaps(const Band& band) {
  for (auto a = band.items.begin(); a != band.items.end(); ++a) {
    for (auto b = a + 1; b != band.items.end(); ++b) {
      if (!Overlap(*a, *b)) continue;
      Tell(false, NameOf(*a) + " lies over " + NameOf(*b), "their texts can't be read");
    }
  }
}

}  // namespace

std::vector<TemplateFault> CheckTemplate(const PrintTemplate& checked, const ResultSetPtr& rows,
                                         const std::vector<std::string>& parameters) {
  return Check(checked, rows, parameters).Run();
}

}  // namespace vorek::print
