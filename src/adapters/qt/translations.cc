#include "adapters/qt/translations.h"

#include <QApplication>
#include <QHash>
#include <iterator>

namespace vorek::qt {
namespace {

struct Known {
  const char* source;
  const char* persian;
};
constexpr Known kTexts[] = {
    // fields
    {"&Undo", "برگرداندن"},
    {"&Redo", "انجام دوباره"},
    {"Cu&t", "برش"},
    {"&Copy", "رونوشت"},
    {"Copy &Link Location", "رونوشت نشاني پيوند"},
    {"&Paste", "چسباندن"},
    {"Delete", "حذف"},
    {"&Delete", "حذف"},
    {"Select All", "انتخاب همه"},
    {"&Select All", "انتخاب همه"},
    {"&Step up", "يكي بيشتر"},
    {"Step &down", "يكي كمتر"},
    {"Clear", "پاك كردن"},
    // scroll bars and tabs
    {"Scroll here", "رفتن به اينجا"},
    {"Left edge", "لبه چپ"},
    {"Right edge", "لبه راست"},
    {"Top", "بالا"},
    {"Bottom", "پايين"},
    {"Page left", "صفحه چپ"},
    {"Page right", "صفحه راست"},
    {"Page up", "صفحه بالا"},
    {"Page down", "صفحه پايين"},
    {"Scroll left", "به چپ"},
    {"Scroll right", "به راست"},
    {"Scroll up", "به بالا"},
    {"Scroll down", "به پايين"},
    {"Scroll Left", "به چپ"},
    {"Scroll Right", "به راست"},
    {"Close Tab", "بستن برگه"},
    // buttons
    {"OK", "تاييد"},
    {"&OK", "تاييد"},
    {"Cancel", "انصراف"},
    {"&Cancel", "انصراف"},
    {"Close", "بستن"},
    {"&Close", "بستن"},
    {"&Yes", "بلي"},
    {"Yes to &All", "بلي براي همه"},
    {"&No", "خير"},
    {"N&o to All", "خير براي همه"},
    {"Save", "ذخيره"},
    {"&Save", "ذخيره"},
    {"Save All", "ذخيره همه"},
    {"Open", "باز كردن"},
    {"&Open", "باز كردن"},
    {"&Choose", "انتخاب"},
    {"Abort", "قطع"},
    {"Retry", "دوباره"},
    {"Ignore", "ناديده گرفتن"},
    {"Discard", "دور انداختن"},
    {"Help", "راهنما"},
    {"&Help", "راهنما"},
    {"Apply", "اعمال"},
    {"Reset", "بازنشاني"},
    {"Restore Defaults", "بازگشت به پيش فرض"},
    {"Show Details...", "نمايش جزييات..."},
    {"Hide Details...", "پنهان كردن جزييات..."},
    // the file dialog
    {"Find Directory", "يافتن پوشه"},
    {"Save As", "ذخيره با نام"},
    {"Show ", "نمايش "},
    {"Look in:", "محل:"},
    {"Directory:", "پوشه:"},
    {"File &name:", "نام فايل:"},
    {"Files of type:", "نوع فايل:"},
    {"All files (*)", "همه فايلها (*)"},
    {"All Files (*)", "همه فايلها (*)"},
    {"Back", "قبلي"},
    {"Go back", "رفتن به قبلي"},
    {"Forward", "بعدي"},
    {"Go forward", "رفتن به بعدي"},
    {"Parent Directory", "پوشه بالاتر"},
    {"Go to the parent directory", "رفتن به پوشه بالاتر"},
    {"Create New Folder", "پوشه جديد"},
    {"Create a New Folder", "ساختن پوشه جديد"},
    {"&New Folder", "پوشه جديد"},
    {"New Folder", "پوشه جديد"},
    {"List View", "فهرست"},
    {"Change to list view mode", "نمايش به صورت فهرست"},
    {"Detail View", "جزييات"},
    {"Change to detail view mode", "نمايش با جزييات"},
    {"Sidebar", "محلها"},
    {"List of places and bookmarks", "فهرست محلها و نشانه ها"},
    {"Files", "فايلها"},
    {"Directories", "پوشه ها"},
    {"&Rename", "تغيير نام"},
    {"Show &hidden files", "نمايش فايلهاي پنهان"},
    {"Recent Places", "محلهاي اخير"},
    {"Remove", "برداشتن"},
    {"My Computer", "رايانه"},
    {"Computer", "رايانه"},
    {"Drive", "درايو"},
    {"Folder", "پوشه"},
    {"File", "فايل"},
    {"%1 File", "فايل %1"},
    {"File Folder", "پوشه"},
    {"Unknown", "ناشناس"},
    {"Name", "نام"},
    {"Size", "اندازه"},
    {"Type", "نوع"},
    {"Kind", "نوع"},
    {"Date Modified", "تاريخ تغيير"},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nپوشه پيدا نشد.\nلطفاً نام پوشه را بررسي كنيد."},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nفايل پيدا نشد.\nلطفاً نام فايل را بررسي كنيد."},
    {"%1 already exists.\nDo you want to replace it?", "%1 وجود دارد.\nآيا جايگزين شود؟"},
    {"'%1' is write protected.\nDo you want to delete it anyway?",
     "'%1' قابل نوشتن نيست.\nآيا با اين حال حذف شود؟"},
    {"Are you sure you want to delete '%1'?", "آيا '%1' حذف شود؟"},
    {"Could not delete directory.", "پوشه حذف نشد."},
    {"Invalid filename", "نام فايل نادرست است"},
    {"<b>The name \"%1\" cannot be used.</b><p>Try using another name, with fewer characters or no "
     "punctuation marks.",
     "<b>نام «%1» پذيرفته نيست.</b><p>نام ديگري با نويسه هاي كمتر و بدون نشانه بدهيد."},
};

const QHash<QByteArray, QString>& Table() {
  static const QHash<QByteArray, QString> table = [] {
    QHash<QByteArray, QString> made;
    for (const Known& known : kTexts) made.insert(known.source, known.persian);
    return made;
  }();
  return table;
}

}  // namespace

QString PersianTexts::translate(const char* context, const char* source, const char*, int) const {
  // Texts of a host have contexts of their own.
  return context != nullptr && *context == 'Q' ? Table().value(source) : QString();
}

void InstallPersianTexts() {
  static const QString kName = "vorekPersianTexts";
  if (qApp->findChild<PersianTexts*>(kName) != nullptr) return;
  auto* const texts = new PersianTexts(qApp);
  texts->setObjectName(kName);
  QCoreApplication::installTranslator(texts);
}

}  // namespace vorek::qt
