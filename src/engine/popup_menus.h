#ifndef VOREK_ENGINE_POPUP_MENUS_H_
#define VOREK_ENGINE_POPUP_MENUS_H_

#include <cstdint>
#include <string>

#include "widgets/form.h"

namespace vorek {

// The menu of a column's header. What can't be done yet is disabled and says so.
class HeaderMenu : public Menu {
 public:
  HeaderMenu(Control* parent, std::string name);

  // mnuSortBy is for the accounting reports alone.
  void OfferShapes(std::int32_t report_id);

  Menu mnuQuickSearch{this, "mnuQuickSearch"};
  Menu mnuSum{this, "mnuSum"};
  Menu mnuavg{this, "mnuavg"};
  Menu mnuSendToTextFile{this, "mnuSendToTextFile"};
  Menu mnuSendToOfficeExcel{this, "mnuSendToOfficeExcel"};
  Menu mnuShowAskForm{this, "mnuShowAskForm"};
  Menu mnuSendToOfficeExcellFast{this, "mnuSendToOfficeExcellFast"};
  Menu mnuSendToAccess{this, "mnuSendToAccess"};
  Menu sep2{this, "sep2"};
  Menu mnuFilter{this, "mnuFilter"};
  Menu mnuSortBy{this, "mnuSortBy"};
  Menu mnuGroupByNothing{&mnuSortBy, "mnuGroupByNothing"};
  Menu mnuGroupBy{&mnuSortBy, "mnuGroupBy"};
  Menu mnuHybrid{&mnuSortBy, "mnuHybrid"};
};

// The menu of the last row.
class LastRowMenu : public Menu {
 public:
  LastRowMenu(Control* parent, std::string name);

  Menu mnuDelete{this, "mnuDelete"};
};

}  // namespace vorek

#endif  // VOREK_ENGINE_POPUP_MENUS_H_
