#ifndef VOREK_WIDGETS_TAB_STRIP_H_
#define VOREK_WIDGETS_TAB_STRIP_H_

#include <cstdint>
#include <string>
#include <vector>

#include "widgets/control.h"

namespace vorek {

// Pages behind tabs: child n, a frame, is the page of tab n, and only that of the tab in front
// shows.
class TabStrip : public Control {
 public:
  using Control::Control;
  std::string_view Kind() const override { return "TabStrip"; }

  // From the presenter: the user chose a tab.
  void Choose(std::int32_t tab) { SetTab(tab); }

  const std::vector<std::string>& Captions() const { return captions_; }
  std::int32_t Tab() const { return tab_; }  // from 0
  void SetCaptions(std::vector<std::string> captions) {
    Assign(captions_, std::move(captions), "Captions");
  }
  // Throws Error(kSubscript) for a tab that isn't there.
  void SetTab(std::int32_t tab);

  // The tab in front is another one.
  std::function<void()> on_tab;

  static constexpr std::int32_t kTabHeight = 420;  // twips that the tabs take above the pages

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::vector<std::string> captions_;
  std::int32_t tab_ = 0;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_TAB_STRIP_H_
