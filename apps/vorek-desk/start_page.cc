#include "start_page.h"

#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace vorek::desk {

StartPage::StartPage(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  setObjectName("startPage");
  setAttribute(Qt::WA_StyledBackground);
  column_->setContentsMargins(48, 48, 48, 48);
  column_->setSpacing(8);
  auto* const invitation = new QLabel("چيزي انتخاب نشده...", this);
  invitation->setObjectName("invitation");
  auto* const hint = new QLabel(
      "گزارشي را از فهرست باز كنيد، يا با Ctrl+L شماره يا بخشي از عنوان آن را بنويسيد.", this);
  hint->setObjectName("head");
  hint->setWordWrap(true);
  column_->addWidget(invitation);
  column_->addWidget(hint);
  column_->addStretch();
}

void StartPage::Show(const QList<Link>& recent, const QList<Link>& favourites) {
  delete links_;
  links_ = new QWidget(this);
  auto* const rows = new QVBoxLayout(links_);
  rows->setContentsMargins(0, 16, 0, 0);
  rows->setSpacing(0);
  AddLinks("آخرين گزارشها", recent);
  AddLinks("برگزيده", favourites);
  column_->insertWidget(2, links_);
  links_->show();
}

void StartPage::AddLinks(const QString& head, const QList<Link>& links) {
  if (links.isEmpty()) return;
  auto* const title = new QLabel(head, links_);
  title->setObjectName("head");
  title->setContentsMargins(8, 12, 8, 4);
  links_->layout()->addWidget(title);
  for (const Link& link : links) {
    auto* const button = new QToolButton(links_);
    button->setText(QString("%1  %2").arg(link.report).arg(link.title));
    button->setFocusPolicy(Qt::StrongFocus);
    // Not in the midst of the button's own event: opening a report fills the page anew.
    connect(
        button, &QToolButton::clicked, this, [this, report = link.report] { on_open(report); },
        Qt::QueuedConnection);
    links_->layout()->addWidget(button);
  }
}

}  // namespace vorek::desk
