#include "adapters/qt/paper_bar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <utility>

namespace vorek::qt {
namespace {

// Millimetres, upright.
constexpr struct {
  const char* name;
  double width;
  double height;
} kPapers[] = {{"A4", 210, 297}, {"A3", 297, 420}, {"A5", 148, 210}};

}  // namespace

PaperBar::PaperBar(const print::PageSetup& setup, QWidget* parent)
    : QWidget(parent),
      setup_(setup),
      before_(setup),
      size_(new QComboBox(this)),
      landscape_(new QCheckBox("كاغذ افقي", this)),
      fit_(new QCheckBox("جا دادن ستونها در پهناي كاغذ", this)),
      margin_(new QSpinBox(this)) {
  for (const auto& paper : kPapers) size_->addItem(paper.name);
  size_->setObjectName("paper");
  size_->setAccessibleName("كاغذ");
  landscape_->setObjectName("landscape");
  fit_->setObjectName("fitWidth");
  margin_->setObjectName("margin");
  margin_->setAccessibleName("حاشيه");
  margin_->setPrefix("حاشيه ");
  margin_->setSuffix(" ميليمتر");
  margin_->setRange(0, 40);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(12);
  for (QWidget* const field : std::initializer_list<QWidget*>{size_, landscape_, fit_, margin_}) {
    row->addWidget(field);
  }
  row->addStretch(1);
  Show(setup);
  connect(size_, &QComboBox::currentIndexChanged, this, [this] { Changed(); });
  connect(landscape_, &QCheckBox::toggled, this, [this] { Changed(); });
  connect(fit_, &QCheckBox::toggled, this, [this] { Changed(); });
  connect(margin_, &QSpinBox::valueChanged, this, [this] { Changed(); });
}

void PaperBar::TakeBack() {
  setup_ = before_;
  Show(setup_);
}

void PaperBar::Show(const print::PageSetup& setup) {
  showing_ = true;
  for (int i = 0; i < size_->count(); ++i) {
    if (kPapers[i].width == setup.width) size_->setCurrentIndex(i);
  }
  landscape_->setChecked(setup.landscape);
  fit_->setChecked(setup.fit_width);
  margin_->setValue(qRound(setup.margin));
  showing_ = false;
}

void PaperBar::Changed() {
  if (showing_) return;
  before_ = setup_;
  setup_.width = kPapers[size_->currentIndex()].width;
  setup_.height = kPapers[size_->currentIndex()].height;
  setup_.landscape = landscape_->isChecked();
  setup_.fit_width = fit_->isChecked();
  setup_.margin = margin_->value();
  if (on_changed) on_changed(setup_);
}

}  // namespace vorek::qt
