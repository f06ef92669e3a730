#include "adapters/qt/list_panel.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "adapters/qt/control_view.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"

namespace vorek::qt {
namespace {

constexpr int kPause = 200;  // milliseconds
// What an item knows: its place among the rows that the control held, its key, and whose rows those
// were.
constexpr int kIndex = Qt::UserRole;
constexpr int kId = Qt::UserRole + 1;
constexpr int kParent = Qt::UserRole + 2;
constexpr int kExpanded = Qt::UserRole + 3;

QString TextOf(const ListRow& row) {
  const QString text = ToQt(row.text);
  return row.alternative.empty() ? text : ToQt(row.alternative) + "  " + text;
}

}  // namespace

ListPanel::ListPanel(ListControl& list, Feed feed, QWidget* parent)
    : QWidget(parent),
      list_(&list),
      many_(dynamic_cast<VorekMultiSelect*>(&list)),
      selector_(dynamic_cast<VorekSelector*>(&list)),
      feed_(std::move(feed)),
      search_(new QLineEdit(this)),
      rows_(new QTreeWidget(this)) {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(search_);
  layout->addWidget(rows_);
  search_->setObjectName("listSearch");
  search_->setPlaceholderText("جستجو");
  search_->setAccessibleName("جستجو در فهرست");
  search_->setClearButtonEnabled(true);
  search_->installEventFilter(this);
  rows_->setObjectName("listRows");
  rows_->setAccessibleName("رديفهاي فهرست");
  rows_->setHeaderHidden(true);
  rows_->setUniformRowHeights(true);
  rows_->setRootIsDecorated(false);
  rows_->installEventFilter(this);
  pause_.setSingleShot(true);
  pause_.setInterval(kPause);
  setFocusProxy(search_);
  if (many_ != nullptr) MakeButtons();
  connect(search_, &QLineEdit::textEdited, &pause_, [this] { pause_.start(); });
  connect(&pause_, &QTimer::timeout, this, [this] { Search(); });
  connect(rows_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
    if (many_ == nullptr) Activate(*item);
  });
  connect(rows_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    if (many_ != nullptr && !filling_) Choose(*item);
  });
  connect(rows_, &QTreeWidget::itemExpanded, this,
          [this](QTreeWidgetItem* item) { Expand(*item); });
}

void ListPanel::MakeButtons() {
  auto* const row = new QHBoxLayout;
  const auto add = [&](const QString& text, const char* name, bool all) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [this, all] {
      if (list_ != nullptr) feed_([&] { all ? many_->SelectAll() : many_->setNull(); });
      ShowChoice();
    });
    row->addWidget(button);
  };
  add("همه", "listAll", true);
  add("هيچكدام", "listNone", false);
  row->addStretch();
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void ListPanel::Fill() {
  if (list_ == nullptr) return;
  search_->clear();
  if (FillTree()) return;
  feed_([&] { list_->FillList(); });
  ShowRows();
}

void ListPanel::Offer(const QString& typed) {
  if (list_ == nullptr) return;
  search_->setText(typed);
  tree_ = false;
  rows_->setRootIsDecorated(false);
  ShowRows();
}

// A view without parents refuses.
bool ListPanel::FillTree() {
  tree_ = false;
  if (selector_ == nullptr) return false;
  try {
    filling_ = true;
    selector_->FillTree(0);
    tree_ = true;
  } catch (const Error&) {
    tree_ = false;
  }
  filling_ = false;
  if (!tree_) return false;
  rows_->setRootIsDecorated(true);
  rows_->clear();
  AddRows(nullptr, 0);
  MakeCurrent();
  return true;
}

// The row that is chosen, else the first one that Enter would take.
void ListPanel::MakeCurrent() {
  const auto* const choice = dynamic_cast<const ChoiceControl*>(list_);
  QTreeWidgetItem* current = TakesEnter() ? rows_->topLevelItem(0) : nullptr;
  for (int i = 0; choice != nullptr && !choice->IsNull() && i < rows_->topLevelItemCount(); ++i) {
    if (rows_->topLevelItem(i)->data(0, kId).toInt() == choice->ID()) {
      current = rows_->topLevelItem(i);
    }
  }
  rows_->setCurrentItem(current);
}

bool ListPanel::TakesEnter() const {
  return on_chosen != nullptr || !search_->text().trimmed().isEmpty();
}

void ListPanel::Expand(QTreeWidgetItem& item) {
  if (list_ == nullptr || item.data(0, kExpanded).toBool()) return;
  item.setData(0, kExpanded, true);
  const std::int32_t id = item.data(0, kId).toInt();
  feed_([&] {
    filling_ = true;
    selector_->FillTree(id);
  });
  filling_ = false;
  AddRows(&item, id);
  if (item.childCount() == 0) item.setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
}

void ListPanel::AddRows(QTreeWidgetItem* below, std::int32_t parent_id) {
  filling_ = true;
  for (std::int32_t index = 0; index < list_->ListCount(); ++index) {
    const ListRow& row = list_->At(index);
    auto* const item = below != nullptr ? new QTreeWidgetItem(below) : new QTreeWidgetItem(rows_);
    item->setText(0, TextOf(row));
    item->setData(0, kIndex, index);
    item->setData(0, kId, row.id);
    item->setData(0, kParent, parent_id);
    if (tree_) item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    if (many_ != nullptr) {
      item->setCheckState(0, many_->IsSelected(row.id) ? Qt::Checked : Qt::Unchecked);
    }
  }
  filling_ = false;
}

void ListPanel::Search() {
  pause_.stop();
  if (list_ == nullptr) return;
  if (search_->text().trimmed().isEmpty()) {
    Fill();
    return;
  }
  tree_ = false;
  rows_->setRootIsDecorated(false);
  const std::string typed = search_->text().toStdString();
  feed_([&] { list_->Search(typed); });
  ShowRows();
}

void ListPanel::ShowRows() {
  if (list_ == nullptr || filling_ || tree_) return;
  rows_->clear();
  AddRows(nullptr, 0);
  MakeCurrent();
  if (!list_->MoreRows()) return;
  auto* const more = new QTreeWidgetItem(rows_);
  more->setText(0, "...براي بقيه جستجو كنيد");
  more->setFlags(Qt::NoItemFlags);
  more->setData(0, kIndex, -1);
}

void ListPanel::ShowChoice() {
  if (list_ == nullptr || many_ == nullptr) return;
  filling_ = true;
  for (int i = 0; i < rows_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const item = rows_->topLevelItem(i);
    if (item->data(0, kIndex).toInt() < 0) continue;
    const bool chosen = many_->AllSelected() || many_->IsSelected(item->data(0, kId).toInt());
    item->setCheckState(0, chosen ? Qt::Checked : Qt::Unchecked);
  }
  filling_ = false;
}

void ListPanel::Activate(QTreeWidgetItem& item) {
  if (list_ == nullptr || item.data(0, kIndex).toInt() < 0) return;
  Choose(item);
  if (on_chosen) on_chosen();
}

// The control may hold other rows by now: those of another branch of the tree.
void ListPanel::Choose(const QTreeWidgetItem& item) {
  const std::int32_t index = item.data(0, kIndex).toInt();
  const std::int32_t parent = item.data(0, kParent).toInt();
  if (list_ == nullptr || index < 0) return;
  feed_([&] {
    filling_ = true;
    if (tree_) selector_->FillTree(parent);
    list_->Choose(index);
  });
  filling_ = false;
  ShowChoice();
}

void ListPanel::focusInEvent(QFocusEvent*) { search_->setFocus(); }

void ListPanel::TakeCurrent() {
  QTreeWidgetItem* const item = rows_->currentItem();
  if (item == nullptr || item->data(0, kIndex).toInt() < 0) return;
  if (many_ == nullptr) {
    Activate(*item);
  } else {
    item->setCheckState(0, item->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
  }
}

bool ListPanel::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  return TakeKey(object, *static_cast<QKeyEvent*>(event));
}

// The search box leads into the rows: up and down move among them, Enter takes the current one.
bool ListPanel::TakeKey(QObject* object, QKeyEvent& key) {
  const int code = key.key();
  const bool enter = code == Qt::Key_Return || code == Qt::Key_Enter;
  const bool moves = code == Qt::Key_Down || code == Qt::Key_Up || code == Qt::Key_PageDown ||
                     code == Qt::Key_PageUp;
  const bool function = code == Qt::Key_Escape || (code >= Qt::Key_F1 && code <= Qt::Key_F12);
  const bool typed = object == search_ && (moves || enter);
  if (typed && pause_.isActive()) Search();
  if (enter && (object == rows_ || TakesEnter())) {
    TakeCurrent();
    return true;
  }
  if (object == search_ && moves) {
    QApplication::sendEvent(rows_, &key);
    return true;
  }
  if ((enter || function) && on_key) {
    on_key(key);
    return true;
  }
  return false;
}

}  // namespace vorek::qt
