#include "key_sheet.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace vorek::desk {
namespace {

struct Key {
  const char* key;  // none for a heading
  const char* work;
};

constexpr Key kKeys[] = {
    {"", "برنامه"},
    {"Ctrl+O", "اتصال به پايگاه داده"},
    {"Ctrl+L", "جستجو در فهرست گزارشها"},
    {"*", "برگزيدن گزارش در فهرست"},
    {"Ctrl+N", "همين گزارش در زبانه ديگر"},
    {"Ctrl+Shift+N", "همين گزارش در پنجره ديگر"},
    {"Ctrl+Tab", "زبانه بعدي"},
    {"Ctrl+W", "بستن گزارش"},
    {"Ctrl+J", "گزارشي كه آماده شد"},
    {"Alt+M", "منوي برنامه"},
    {"F1", "همين برگه"},
    {"Ctrl+Q", "خروج"},
    {"", "گزارش"},
    {"F5", "اجراي دوباره"},
    {"Alt+P", "پارامترها"},
    {"Ctrl+F", "جستجو در همه ستونها"},
    {"F3، Shift+N", "جستجوي سريع در ستون، ادامه آن"},
    {"Alt+F", "فيلتر ستون جاري"},
    {"Alt+S", "جمع ستون جاري"},
    {"Alt+C", "ستونها: پنهان، جابجا، ثابت"},
    {"Alt+N", "نمودار"},
    {"Alt+E", "خروجي: اكسل، متن، اكسس"},
    {"Ctrl+P", "چاپ"},
    {"Enter، Ctrl+Enter", "گزارش يا فرم پشت رديف، پيوند دوم"},
    {"Escape", "بازگشت، لغو اجرا"},
    {"", "جدول"},
    {"Shift+جهتها", "انتخاب چند خانه"},
    {"Ctrl+A", "انتخاب همه"},
    {"Ctrl+C", "كپي به همان شكل"},
    {"Ctrl+Shift+C", "كپي با سرستونها"},
    {"Ctrl+Alt+C", "كپي با عددهاي ساده"},
    {"Ctrl++، Ctrl+-، Ctrl+0", "بزرگتر، كوچكتر، اندازه نخست"},
    {"Home، End", "ستون نخست، ستون پاياني"},
    {"Ctrl+Home، Ctrl+End", "رديف نخست، رديف پاياني"},
    {"Ctrl+Up، Menu", "مرتب كردن، منوي سرستون جاري"},
    {"جهت راست و چپ", "باز و بسته كردن شاخه درخت"},
    {"", "نمودار"},
    {"Alt+B، Alt+K، Alt+L، Alt+H", "ستوني، انباشته، خطي، سهم از كل"},
    {"1 تا 9", "پنهان كردن و نمايش يك سري"},
    {"Alt+T، F5", "جابجايي رديف و ستون، از نو"},
    {"Ctrl+C، Ctrl+S، Alt+X", "كپي تصوير، ذخيره آن، گزارش و نمودار در اكسل"},
    {"", "پارامترها"},
    {"+، -، t", "روز بعد، روز قبل، امروز"},
    {"Alt+Down، F4", "باز كردن تقويم يا فهرست"},
    {"Enter", "تاييد"},
};

void AddRow(QTableWidget& table, const Key& key) {
  const int row = table.rowCount();
  table.insertRow(row);
  auto* const work = new QTableWidgetItem(key.work);
  table.setItem(row, 0, work);
  if (*key.key != '\0') {
    table.setItem(row, 1, new QTableWidgetItem(key.key));
    return;
  }
  QFont bold = table.font();
  bold.setBold(true);
  work->setFont(bold);
  table.setSpan(row, 0, 1, 2);
}

}  // namespace

KeySheet::KeySheet(QWidget* parent) : QDialog(parent) {
  setObjectName("keySheet");
  setWindowTitle("كليدها");
  setLayoutDirection(Qt::RightToLeft);
  auto* const table = new QTableWidget(0, 2, this);
  table->setObjectName("keys");
  table->setAccessibleName("كليدها");
  table->horizontalHeader()->hide();
  table->verticalHeader()->hide();
  table->setShowGrid(false);
  table->setTabKeyNavigation(false);  // Tab leaves it
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (const Key& key : kKeys) AddRow(*table, key);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText("بستن");
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(table);
  column->addWidget(buttons);
  resize(520, 640);
}

}  // namespace vorek::desk
