#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include "adapters/qt/view_registry.h"
#include "widgets/tab_strip.h"

namespace vorek::qt {
namespace {

// A bar of tabs over the pages; the control itself shows and hides these.
class TabStripView : public ControlView {
 public:
  TabStripView(Presenter& presenter, TabStrip& strip, QWidget& parent)
      : ControlView(presenter, strip, new QWidget(&parent)),
        strip_(strip),
        bar_(new QTabBar(&Widget())) {
    bar_->setLayoutDirection(Qt::RightToLeft);
    auto* const layout = new QVBoxLayout(&Widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar_);
    layout->addStretch(1);
    connect(bar_, &QTabBar::currentChanged, this,
            [this](int tab) { Feed([&] { strip_.Choose(tab); }); });
  }

  void Set(std::string_view property) override {
    const QSignalBlocker quiet(bar_);
    if (property == "Captions") {
      while (bar_->count() > 0) bar_->removeTab(0);
      for (const std::string& caption : strip_.Captions()) bar_->addTab(ToQt(caption));
      bar_->setCurrentIndex(strip_.Tab());
    } else if (property == "Tab") {
      bar_->setCurrentIndex(strip_.Tab());
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Captions");
    // The pages begin where the control says, whatever the style would give the tabs.
    bar_->setFixedHeight(Owner().Measure().Pixels(TabStrip::kTabHeight));
  }

 private:
  TabStrip& strip_;
  QTabBar* bar_;
};

}  // namespace

ControlView* MakeTabStripView(Presenter& presenter, Control& control, QWidget& parent) {
  return new TabStripView(presenter, static_cast<TabStrip&>(control), parent);
}

}  // namespace vorek::qt
