#include "catalogue_panel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace vorek::desk {
namespace {

constexpr int kGroup = 100;  // numbers in a group
constexpr int kNumber = Qt::UserRole;
constexpr int kWords = Qt::UserRole + 1;

// The group of a report's number, made at the end if the last one is another.
QTreeWidgetItem* GroupOf(QTreeWidget& tree, std::int32_t report) {
  const std::int32_t first = report / kGroup * kGroup;
  const int last = tree.topLevelItemCount() - 1;
  if (last >= 0 && tree.topLevelItem(last)->data(0, kNumber).toInt() == first) {
    return tree.topLevelItem(last);
  }
  auto* const group = new QTreeWidgetItem(&tree);
  group->setText(0, QString("%1 تا %2").arg(first).arg(first + kGroup - 1));
  group->setData(0, kNumber, first);
  group->setFlags(Qt::ItemIsEnabled);
  group->setFirstColumnSpanned(true);
  return group;
}

}  // namespace

QString SearchForm(QString text) {
  text.replace(QChar(0x06CC), QChar(0x064A)).replace(QChar(0x06A9), QChar(0x0643));
  for (QChar& character : text) {
    if (character.digitValue() >= 0) character = QChar('0' + character.digitValue());
  }
  return text.toCaseFolded();
}

CataloguePanel::CataloguePanel(QWidget* parent)
    : QWidget(parent),
      search_(new QLineEdit(this)),
      tree_(new QTreeWidget(this)),
      nothing_(new QLabel(this)) {
  auto* const layout = new QVBoxLayout(this);
  auto* const label = new QLabel("جستجوي گزارش", this);
  label->setBuddy(search_);
  search_->setObjectName("search");
  search_->setClearButtonEnabled(true);
  search_->setPlaceholderText("شماره يا عنوان");
  search_->installEventFilter(this);
  tree_->setObjectName("catalogue");
  tree_->setAccessibleName("فهرست گزارشها");
  tree_->setColumnCount(2);
  tree_->setHeaderLabels({"شماره", "عنوان"});
  tree_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  tree_->setUniformRowHeights(true);
  tree_->setIndentation(tree_->fontMetrics().averageCharWidth() * 2);
  layout->addWidget(label);
  nothing_->setObjectName("nothingFound");
  nothing_->setWordWrap(true);
  nothing_->hide();
  layout->addWidget(search_);
  layout->addWidget(nothing_);
  layout->addWidget(tree_);
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& words) { Filter(words); });
  connect(search_, &QLineEdit::returnPressed, this, [this] { OpenCurrent(); });
  connect(tree_, &QTreeWidget::itemActivated, this, [this] { OpenCurrent(); });
}

void CataloguePanel::Show(const std::vector<CatalogEntry>& catalogue) {
  tree_->clear();
  for (const CatalogEntry& entry : catalogue) {
    auto* const item = new QTreeWidgetItem(GroupOf(*tree_, entry.id));
    const QString title = QString::fromStdString(entry.title);
    item->setText(0, QString::number(entry.id));
    item->setText(1, title);
    item->setToolTip(1, title);
    item->setData(0, kNumber, entry.id);
    item->setData(0, kWords, SearchForm(QString::number(entry.id) + ' ' + title));
  }
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) tree_->topLevelItem(i)->setExpanded(true);
}

// All words have to be there, in any order.
void CataloguePanel::Filter(const QString& words) {
  const QStringList wanted = SearchForm(words).split(' ', Qt::SkipEmptyParts);
  QTreeWidgetItem* first = nullptr;
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const group = tree_->topLevelItem(i);
    bool any = false;
    for (int k = 0; k < group->childCount(); ++k) {
      QTreeWidgetItem* const item = group->child(k);
      const QString text = item->data(0, kWords).toString();
      const bool fits = std::all_of(wanted.begin(), wanted.end(),
                                    [&](const QString& word) { return text.contains(word); });
      item->setHidden(!fits);
      any = any || fits;
      if (fits && first == nullptr) first = item;
    }
    group->setHidden(!any);
  }
  tree_->setCurrentItem(first);
  nothing_->setText(QString("گزارشي با «%1» پيدا نشد.").arg(words.trimmed()));
  nothing_->setVisible(first == nullptr && !wanted.isEmpty());
}

void CataloguePanel::FocusSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void CataloguePanel::OpenCurrent() {
  const QTreeWidgetItem* const item = tree_->currentItem();
  if (item == nullptr || item->parent() == nullptr || item->isHidden() || !on_open) return;
  on_open(item->data(0, kNumber).toInt());
}

// The arrows of the search box move in the list.
bool CataloguePanel::eventFilter(QObject* object, QEvent* event) {
  if (object != search_ || event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Down && key != Qt::Key_Up) return false;
  tree_->setFocus();
  return true;
}

}  // namespace vorek::desk
