#include "widgets/tab_strip.h"

#include "vorek/error.h"
#include "widgets/property.h"

namespace vorek {

void TabStrip::SetTab(std::int32_t tab) {
  if (tab < 0 || static_cast<std::size_t>(tab) >= captions_.size()) {
    throw Error(ErrorNumber::kSubscript, "Subscript out of range: tab " + std::to_string(tab));
  }
  const bool changed = Assign(tab_, tab, "Tab");
  const std::vector<Control*>& pages = Children();
  for (std::size_t page = 0; page < pages.size(); ++page) {
    pages[page]->SetVisible(page == static_cast<std::size_t>(tab));
  }
  if (changed && on_tab) on_tab();
}

const PropertyTable& TabStrip::OwnProperties() const {
  static const PropertyTable own = {property::ReadWrite("Tab", &TabStrip::Tab, &TabStrip::SetTab)};
  static const PropertyTable table = property::Join(own, Control::OwnProperties());
  return table;
}

}  // namespace vorek
