#include "engine/popup_menus.h"

#include <utility>

#include "totals/group_reports.h"

namespace vorek {

HeaderMenu::HeaderMenu(Control* parent, std::string name) : Menu(parent, std::move(name)) {
  const std::pair<Menu*, const char*> captions[] = {
      {&mnuQuickSearch, "...جستجوي سريع"},
      {&mnuSum, "جمع"},
      {&mnuavg, "ميانگين"},
      {&mnuSendToTextFile, "چاپ فايل متني"},
      {&mnuSendToOfficeExcel, "چاپ"},
      {&mnuShowAskForm, "...مقداردهي مجدد پارامترهاي ورودي"},
      {&mnuSendToOfficeExcellFast, "انتقال سريع به اكسل"},
      {&mnuSendToAccess, "انتقال به فايل اکسس"},
      {&sep2, "-"},
      {&mnuFilter, "فيلتر"},
      {&mnuSortBy, "گزارش به شکل"},
      {&mnuGroupByNothing, "ساده"},
      {&mnuGroupBy, "سرجمع"},
      {&mnuHybrid, "ترکيبي"}};
  for (const auto& [entry, caption] : captions) entry->SetCaption(caption);
}

void HeaderMenu::OfferShapes(std::int32_t report_id) {
  const bool offered = FindGroupReport(report_id) != nullptr;
  mnuSortBy.SetEnabled(offered);
  mnuSortBy.SetToolTipText(offered ? "" : "اين گزارش شکل ديگري ندارد.");
}

LastRowMenu::LastRowMenu(Control* parent, std::string name) : Menu(parent, std::move(name)) {
  mnuDelete.SetCaption("حذف");
}

}  // namespace vorek
