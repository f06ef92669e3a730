#include "messages/persian_reason.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "text/utf8.h"

namespace vorek {
namespace {

// "%" stands for any text in what is known, "%1" for the first of them in what is shown.
struct KnownReason {
  std::string_view known;
  std::string_view shown;
};
constexpr KnownReason kReasons[] = {
    // connections
    {"Cannot open the database '%': %.", "پايگاه داده %1 باز نشد: %2."},
    {"Cannot open the database '%': %", "پايگاه داده %1 باز نشد: %2"},
    {"the file doesn't exist", "فايل وجود ندارد"},
    {"file is not a database", "فايل پايگاه داده نيست"},
    {"database disk image is malformed", "فايل آسيب ديده است"},
    {"unable to open database file", "فايل خوانده نمي شود"},
    {"attempt to write a readonly database", "فايل فقط خواندني است"},
    {"it can't be written", "فايل قابل نوشتن نيست"},
    {"a program ended while it wrote, and only who may write the file can put it right",
     "برنامه اي در ميان نوشتن قطع شده است و فقط كاربري كه اجازه نوشتن دارد آن را درست مي كند"},
    {"database is locked", "پايگاه داده در اختيار برنامه ديگري است"},
    {"out of memory", "حافظه كافي نيست"},
    {"Out of memory", "حافظه كافي نيست."},
    {"No connection string has been set.", "رشته اتصال داده نشده است."},
    {"Provider '%' cannot be found.", "فراهم كننده %1 پيدا نشد."},
    {"The connection string has to begin with \"Provider=name;\".",
     "رشته اتصال بايد با \u2066Provider=name;\u2069 شروع شود."},
    {"A quote in the connection string isn't closed.",
     "نشانه نقل قول در رشته اتصال بسته نشده است."},
    {"The connection string names no file: Data Source=<file> is missing.",
     "رشته اتصال فايلي را نام نمي برد: \u2066Data Source\u2069 داده نشده است."},
    {"Mode=% isn't one of ReadWrite, ReadOnly and Create.",
     "مقدار %1 براي \u2066Mode\u2069 پذيرفته نيست."},
    {"Connect Timeout=% isn't a number of seconds.",
     "مقدار %1 براي \u2066Connect Timeout\u2069 پذيرفته نيست."},
    {"No ODBC driver for SQL Server is installed.",
     "راه انداز \u2066ODBC\u2069 براي \u2066SQL Server\u2069 نصب نشده است."},
    {"The server doesn't answer any more.", "سرور ديگر پاسخ نمي دهد."},
    {"The connection was lost.", "اتصال قطع شد."},
    {"The server can't be reached.", "سرور در دسترس نيست."},
    {"The connection is busy with another statement.", "دستور ديگري در حال اجرا است."},
    {"Another statement is still running.", "دستور ديگري هنوز در حال اجرا است."},
    // the end of a statement
    {"Timeout expired", "مهلت اجرا تمام شد."},
    {"Timeout expired.", "مهلت اجرا تمام شد."},
    {"Timeout expired: %.", "مهلت اجرا تمام شد: %1."},
    {"Query timeout expired", "مهلت اجرا تمام شد."},
    {"Operation was cancelled", "اجرا لغو شد."},
    {"Operation was cancelled.", "اجرا لغو شد."},
    {"interrupted", "اجرا لغو شد."},
    {"The result has more than % rows.", "نتيجه بيش از %1 سطر دارد. گزارش را محدودتر كنيد."},
    {"The result takes more than % megabytes of memory.",
     "نتيجه بيش از %1 مگابايت حافظه مي گيرد. گزارش را محدودتر كنيد."},
    // statements
    {"Invalid object name '%'", "جدول يا نماي %1 وجود ندارد"},
    {"Invalid object name: %", "جدول يا نماي %1 وجود ندارد."},
    {"Invalid column name '%'", "ستون %1 وجود ندارد"},
    {"Ambiguous column name '%'", "ستون %1 در چند جدول هست"},
    {"The multi-part identifier \"%\" could not be bound", "نام %1 شناخته نشد"},
    {"Incorrect syntax near '%'", "دستور در كنار %1 نادرست است"},
    {"Incorrect syntax", "دستور نادرست است"},
    {"Could not find stored procedure '%'", "رويه %1 وجود ندارد"},
    {"Cannot find the user-defined function '%'", "تابع %1 وجود ندارد"},
    {"Cannot find the function '%'.", "تابع %1 وجود ندارد."},
    {"'%' is not a recognized built-in function name", "تابع %1 شناخته نشد"},
    {"'%' is not supported", "%1 پشتيباني نمي شود"},
    {"Type % is not supported", "نوع %1 پشتيباني نمي شود"},
    {"FOR XML and JSON are not supported, but for FOR XML PATH('')",
     "از \u2066FOR XML\u2069 و \u2066JSON\u2069 تنها \u2066FOR XML PATH('')\u2069 پشتيباني مي شود"},
    {"The label '%' of GOTO isn't declared in a block around it",
     "برچسب %1 براي \u2066GOTO\u2069 تعريف نشده است"},
    {"The label '%' is declared more than once", "برچسب %1 چند بار تعريف شده است"},
    {"% is not supported", "%1 پشتيباني نمي شود"},
    {"The view '%' refers to itself.", "نماي %1 به خود برمي گردد."},
    {"Maximum % nesting level exceeded%", "فراخواني ها بيش از حد تو در تو است."},
    {"Subquery returned more than 1 value%", "پرس و جوي دروني بيش از يك مقدار داد."},
    {"Wrong number of arguments of the function '%'", "تعداد آرگومانهاي تابع %1 نادرست است"},
    {"Procedure or function '%' expects parameter '%', which was not supplied.",
     "رويه يا تابع %1 پارامتر %2 را لازم دارد."},
    {"Must declare the scalar variable \"%\"", "متغير %1 تعريف نشده است"},
    {"Column '%' is invalid here because it is not contained in either an aggregate "
     "function or the GROUP BY clause",
     "ستون %1 نه در گروه بندي است و نه در تابع جمعي"},
    {"The expression is nested too deeply", "عبارت بيش از حد تو در تو است"},
    {"Missing end comment mark '*/'", "توضيح بسته نشده است"},
    {"Unclosed quotation mark before the character string '%'", "متن %1 بسته نشده است"},
    // values
    {"Divide by zero error encountered.", "اشکال تقسيم بر صفر"},
    {"Arithmetic overflow error: the number is too big.", "عدد بيش از حد بزرگ است."},
    {"Arithmetic overflow error converting expression to data type %.",
     "عدد در نوع %1 جا نمي گيرد."},
    {"Conversion failed when converting the % value '%' to data type %.",
     "مقدار %2 به نوع %3 تبديل نشد."},
    {"Error converting data type % to %.", "تبديل نوع %1 به %2 ممكن نيست."},
    {"Cannot insert the value NULL into column '%'; column does not allow nulls.",
     "ستون %1 نمي تواند خالي باشد."},
    {"UNIQUE constraint failed: %", "مقدار تكراري پذيرفته نيست: %1."},
    {"NOT NULL constraint failed: %", "ستون %1 نمي تواند خالي باشد."},
    {"CHECK constraint failed: %", "مقدار با شرط %1 سازگار نيست."},
    {"FOREIGN KEY constraint failed", "سطر با جدول ديگري وابستگي دارد."},
    {"The statement conflicted with the % constraint \"%\"%", "مقدار با قيد %2 سازگار نيست."},
    {"too many %", "دستور بيش از حد بزرگ است: %1."},
    {"string or blob too big", "متن بيش از حد بلند است."},
    {"database or disk is full", "جاي خالي نمانده است."},
    {"disk I/O error", "فايل خوانده يا نوشته نشد."},
    {"String or binary data would be truncated.", "متن در ستون جا نمي گيرد."},
    {"Adding a value to a date column caused an overflow.", "تاريخ از محدوده خارج مي شود."},
    {"Invalid length parameter passed to the % function.", "طول داده شده به تابع %1 نادرست است."},
    {"An invalid floating point operation occurred.", "محاسبه نادرست است."},
    // records and properties
    {"Operation is not allowed when the object is closed.", "دستور نتيجه اي نداشت."},
    {"Invalid use of Null in field %", "فيلد %1 خالي است."},
    {"Type mismatch: field % holds \"%\", not a number", "فيلد %1 به جاي عدد %2 دارد."},
    {"There is no field % in: %", "فيلد %1 در نتيجه نيست."},
    {"The stored property % can't be \"%\".", "ويژگي %1 نمي تواند %2 باشد."},
    {"The stored property %: %", "ويژگي %1: %2"},
    {"Subscript out of range: column % is beyond the % columns that a report can have.",
     "ستون %1 از %2 ستون ممكن يك گزارش بيشتر است."},
    {"Overflow: %", "عدد %1 بيش از حد بزرگ است."},
    // files
    {"%: No such file or directory", "%1: فايل پيدا نشد."},
    {"%: Permission denied", "%1: اجازه دسترسي نيست."},
    {"%: No space left on device", "%1: جاي خالي نمانده است."},
    {"%: Resource temporarily unavailable", "%1: در اختيار برنامه ديگري است."},
    {"%: Is a directory", "%1: پوشه است."},
};

// The texts that stand at the "%"; nothing if the whole doesn't fit.
std::optional<std::vector<std::string_view>> Match(std::string_view known, std::string_view text) {
  std::vector<std::string_view> found;
  std::size_t mark = known.find('%');
  if (mark == std::string_view::npos) return known == text ? std::optional(found) : std::nullopt;
  if (!text.starts_with(known.substr(0, mark))) return std::nullopt;
  text.remove_prefix(mark);
  while (mark != std::string_view::npos) {
    const std::size_t next = known.find('%', mark + 1);
    const bool last = next == std::string_view::npos;
    const std::string_view between = known.substr(mark + 1, last ? next : next - mark - 1);
    const std::size_t end =
        last ? text.size() - std::min(between.size(), text.size()) : text.find(between);
    if (end == std::string_view::npos || !text.substr(end).starts_with(between)) {
      return std::nullopt;
    }
    found.push_back(text.substr(0, end));
    text.remove_prefix(end + between.size());
    mark = next;
  }
  return found;
}

bool HasPersian(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t letter = text::DecodeAt(text, at);
    if (letter >= 0x0600 && letter <= 0x06FF) return true;
  }
  return false;
}

// A path runs from the left, whatever it is called; a name by its own letters.
std::string Isolated(std::string_view text) {
  const bool by_letters = HasPersian(text) && text.find_first_of("/\\") == std::string_view::npos;
  return (by_letters ? "\u2068" : "\u2066") + std::string(text) + "\u2069";
}

std::optional<std::string> Known(std::string_view text) {
  for (const KnownReason& reason : kReasons) {
    const auto parts = Match(reason.known, text);
    if (!parts) continue;
    std::string shown(reason.shown);
    for (std::size_t i = 0; i < parts->size(); ++i) {
      const std::optional<std::string> inner = Known((*parts)[i]);
      shown =
          text::Replace(shown, "%" + std::to_string(i + 1), inner ? *inner : Isolated((*parts)[i]));
    }
    return shown;
  }
  return std::nullopt;
}

}  // namespace

std::string PersianReason(std::string_view description) {
  if (const auto whole = Known(description)) return *whole;
  // "reason (line 2, column 5)." and "reason (line 2)"
  const std::size_t place = description.rfind(" (line ");
  if (place == std::string_view::npos) return std::string(description);
  std::string_view reason = description.substr(0, place);
  std::optional<std::string> known = Known(reason);
  if (!known && description.find(", column ", place) != std::string_view::npos &&
      !HasPersian(reason)) {
    // Only the embedded database tells a column: what it refuses is for who wrote the statement.
    known = "دستور پذيرفته نشد: " + Isolated(reason);
  }
  if (!known) return std::string(description);
  std::string where = text::Replace(description.substr(place), " (line ", " (سطر ");
  if (known->ends_with('.')) known->pop_back();
  where = text::Replace(where, ", column ", "، ستون ");
  return *known + where + (where.ends_with('.') ? "" : ".");
}

}  // namespace vorek
