#include "catalogue_panel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "adapters/qt/icons.h"
#include "adapters/qt/theme.h"

namespace vorek::desk {
namespace {

constexpr int kNumber = Qt::UserRole;
constexpr int kWords = Qt::UserRole + 1;
constexpr int kStarColumn = 2;
constexpr int kStar = 16;  // pixels

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
  setObjectName("cataloguePanel");
  setAttribute(Qt::WA_StyledBackground);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 12, 12, 4);
  layout->setSpacing(8);
  search_->setObjectName("search");
  search_->setClearButtonEnabled(true);
  search_->setPlaceholderText("شماره يا عنوان");
  search_->setAccessibleName("جستجوي گزارش");
  search_->setToolTip("جستجوي گزارش (Ctrl+L)");
  search_->installEventFilter(this);
  nothing_->setObjectName("nothingFound");
  nothing_->setWordWrap(true);
  nothing_->hide();
  for (QWidget* const part : {static_cast<QWidget*>(search_), static_cast<QWidget*>(nothing_),
                              static_cast<QWidget*>(tree_)}) {
    layout->addWidget(part);
  }
  ConnectTree();
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& words) { Filter(words); });
  connect(search_, &QLineEdit::returnPressed, this, [this] { OpenCurrent(); });
}

void CataloguePanel::ConnectTree() {
  tree_->setObjectName("catalogue");
  tree_->setAccessibleName("فهرست گزارشها");
  tree_->setColumnCount(kStarColumn + 1);
  tree_->setHeaderHidden(true);
  tree_->header()->setStretchLastSection(false);
  tree_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  tree_->header()->setSectionResizeMode(1, QHeaderView::Stretch);
  tree_->header()->setSectionResizeMode(kStarColumn, QHeaderView::Fixed);
  tree_->header()->setMinimumSectionSize(kStar + 8);
  tree_->header()->resizeSection(kStarColumn, kStar + 8);
  tree_->setIconSize({kStar, kStar});
  tree_->setRootIsDecorated(false);
  tree_->setUniformRowHeights(true);
  tree_->setIndentation(8);
  tree_->installEventFilter(this);
  connect(tree_, &QTreeWidget::itemActivated, this, [this] { OpenCurrent(); });
  connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int column) {
    if (column == kStarColumn) TurnStar(item);
  });
}

void CataloguePanel::Show(std::vector<CatalogEntry> catalogue, std::vector<CatalogGroup> groups) {
  catalogue_ = std::move(catalogue);
  groups_ = std::move(groups);
  Fill();
}

void CataloguePanel::ShowFavourites(QList<int> favourites) {
  const QTreeWidgetItem* const current = tree_->currentItem();
  const int chosen = current == nullptr ? -1 : current->data(0, kNumber).toInt();
  favourites_ = std::move(favourites);
  Fill();
  ShowOpen(chosen);
}

QTreeWidgetItem* CataloguePanel::AddGroup(const QString& title) {
  auto* const group = new QTreeWidgetItem(tree_);
  group->setText(0, title);
  group->setFlags(Qt::ItemIsEnabled);
  group->setForeground(0, vorek::qt::ThemeOf(palette()).muted);
  group->setFirstColumnSpanned(true);
  return group;
}

void CataloguePanel::AddReport(QTreeWidgetItem& group, const CatalogEntry& entry) {
  const vorek::qt::Theme& theme = vorek::qt::ThemeOf(palette());
  const QString title = QString::fromStdString(entry.title);
  const bool starred = favourites_.contains(entry.id);
  auto* const item = new QTreeWidgetItem(&group);
  item->setText(0, QString::number(entry.id));
  item->setForeground(0, theme.muted);
  item->setText(1, title);
  item->setToolTip(1, title);
  item->setIcon(kStarColumn, vorek::qt::IconOf(starred ? "star-on" : "star",
                                               starred ? theme.star : theme.line, theme.line));
  item->setToolTip(kStarColumn, starred ? "برداشتن از برگزيده ها (*)" : "افزودن به برگزيده ها (*)");
  item->setData(0, kNumber, entry.id);
  item->setData(0, kWords, SearchForm(QString::number(entry.id) + ' ' + title));
}

// A name that the database has, or the hundred.
QString CataloguePanel::GroupOf(std::int32_t report) const {
  constexpr int kHundred = 100;
  for (const CatalogGroup& group : groups_) {
    if (report >= group.first && report <= group.last) return QString::fromStdString(group.title);
  }
  const std::int32_t first = report / kHundred * kHundred;
  return QString("%1 تا %2").arg(first).arg(first + kHundred - 1);
}

void CataloguePanel::Fill() {
  tree_->clear();
  FillFavourites();
  QTreeWidgetItem* group = nullptr;
  QString last;
  for (const CatalogEntry& entry : catalogue_) {
    const QString title = GroupOf(entry.id);
    if (group == nullptr || title != last) group = AddGroup(last = title);
    AddReport(*group, entry);
  }
  tree_->expandAll();
  Filter(search_->text());
}

void CataloguePanel::FillFavourites() {
  QTreeWidgetItem* group = nullptr;
  for (const CatalogEntry& entry : catalogue_) {
    if (!favourites_.contains(entry.id)) continue;
    if (group == nullptr) group = AddGroup("برگزيده");
    AddReport(*group, entry);
  }
}

void CataloguePanel::ShowOpen(std::int32_t report) {
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
    const QTreeWidgetItem* const group = tree_->topLevelItem(i);
    for (int k = 0; k < group->childCount(); ++k) {
      if (group->child(k)->data(0, kNumber).toInt() != report) continue;
      tree_->setCurrentItem(group->child(k));
      return;
    }
  }
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

// Not in the midst of the item's own event: the list is filled anew.
void CataloguePanel::TurnStar(const QTreeWidgetItem* item) {
  if (item == nullptr || item->parent() == nullptr || !on_star) return;
  const int report = item->data(0, kNumber).toInt();
  QMetaObject::invokeMethod(
      this, [this, report] { on_star(report); }, Qt::QueuedConnection);
}

// The arrows of the search box move in the list, and a star in the list turns a star.
bool CataloguePanel::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (object == tree_ && key == Qt::Key_Asterisk) {
    TurnStar(tree_->currentItem());
    return true;
  }
  if (object != search_ || (key != Qt::Key_Down && key != Qt::Key_Up)) return false;
  tree_->setFocus();
  return true;
}

void CataloguePanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Fill();
}

}  // namespace vorek::desk
