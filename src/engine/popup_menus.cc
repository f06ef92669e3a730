#include "engine/popup_menus.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorek {
namespace {

// The accounting reports, which can be shown in another shape.
constexpr std::int32_t kShapedReports[] = {2859, 2858, 2857, 2853, 2852, 2851, 2847, 2844};

void Postpone(Menu& entry) {
  entry.SetEnabled(false);
  entry.SetToolTipText("اين امکان هنوز آماده نشده است.");
}

}  // namespace

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
  for (Menu* entry : {&mnuSendToTextFile, &mnuSendToOfficeExcel, &mnuSendToOfficeExcellFast,
                      &mnuSendToAccess, &mnuGroupByNothing, &mnuGroupBy, &mnuHybrid}) {
    Postpone(*entry);
  }
}

void HeaderMenu::OfferShapes(std::int32_t report_id) {
  const bool offered = std::find(std::begin(kShapedReports), std::end(kShapedReports), report_id) !=
                       std::end(kShapedReports);
  mnuSortBy.SetEnabled(offered);
  mnuSortBy.SetToolTipText(offered ? "" : "اين گزارش شکل ديگري ندارد.");
}

LastRowMenu::LastRowMenu(Control* parent, std::string name) : Menu(parent, std::move(name)) {
  mnuDelete.SetCaption("حذف");
}

}  // namespace vorek
