#include "engine/special_reports.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "catalog/report_row.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

std::string PlainNumber(const std::string& text) {
  return text::PlainNumber(text::NumericPrefix(text));
}

[[noreturn]] void RefuseCall(const std::string& query) {
  throw Error(ErrorNumber::kInvalidCall,
              "آرگومانهاي فراخواني کامل نيست: " + text::Left(query, 200));
}

// --- Sales of regions: the rows come from a view ------------------------------------------------

struct SaleReport {
  const char* procedure;
  const char* view;
};
constexpr SaleReport kSaleReports[] = {
    {"spSaleRegionPromoterReport", "vwSaleRegionPromoterReport"},
    {"spSaleExternalLocationReport", "vwSaleExternalLocationReport"},
};
constexpr const char* kWithoutRows = "spSalePromoterInRegionReport";

// Four arguments, the last one to the end of the text.
std::vector<std::string> SaleArguments(const std::string& call, const std::string& query) {
  std::vector<std::string> pieces;
  std::size_t begin = 0;
  while (pieces.size() < 3) {
    const std::size_t comma = call.find(',', begin);
    if (comma == std::string::npos) RefuseCall(query);
    pieces.push_back(text::Trim(call.substr(begin, comma - begin)));
    begin = comma + 1;
  }
  pieces.push_back(text::Trim(call.substr(begin)));
  return pieces;
}

SpecialQuery RewriteSale(const std::string& query, const SaleReport& report) {
  const std::string call =
      text::ReplaceIgnoreCase(query, "Exec " + std::string(report.procedure) + " ", "");
  std::vector<std::string> arguments = SaleArguments(call, query);
  if (arguments[0] == "''") arguments[0] = "'1300/01/01'";
  if (arguments[1] == "''") arguments[1] = "'1500/01/01'";
  SpecialQuery special;
  special.statements = {
      "Delete tblSaleRegionPromoterReport",
      "Insert Into tblSaleRegionPromoterReport (FarsiFromDate,FarsiToDate,RegionID,ToRegionID) "
      "Values(" +
          arguments[0] + "," + arguments[1] + "," + PlainNumber(arguments[2]) + "," +
          PlainNumber(arguments[3]) + ")",
      "Delete tblSaleRegionPromoterReport2",
      std::string("insert into tblSaleRegionPromoterReport2 (ID,ParentID,ExternalLocation,Region,"
                  "Path,Promoter,CustomerCode,CustomerName,InvoiceValue,DiscountValue,ReturnValue) "
                  "(Select ID,ParentID,GeoLocation,Region,Path,Promoter,CustomerCode,CustomerName,"
                  "InvoiceValue,DiscountValue,ReturnValue from ") +
          report.view + ")"};
  if (text::ContainsIgnoreCase(query, kWithoutRows)) return special;
  special.statements.emplace_back(
      "Select ID, ParentID, ExternalLocation as 'منطقه جغرافيايي',Region as 'منطقه بازاريابي',"
      "Path as 'مسير جغرافيايي',Promoter as 'بازارياب',CustomerCode as 'کد مشتري',CustomerName as "
      "'نام مشتري',InvoiceValue as 'مبلغ ناخالص',DiscountValue as 'تخفيف مبلغي',ReturnValue as "
      "'مبلغ بازگشتي' from tblSaleRegionPromoterReport2");
  return special;
}

// --- Balances of accounts: lists of keys go into a table, and flags in their place --------------

constexpr const char* kTwoLists[] = {"spAccountBalanceMoeinOnMultiDetail1",
                                     "spAccountBalanceMoeinOnMultiDetail2"};
constexpr const char* kThreeLists[] = {"spAccountBalanceMultiTafsil_4Cols",
                                       "spAccountBalanceMultiTafsil_8Cols"};
constexpr std::string_view kAll = "(ALL)";

enum KeyType : int { kAccounts = 1, kFirstDetail = 2, kSecondDetail = 3 };

// Values that came as quoted texts lose their quotes.
std::string BareLists(const std::string& query) {
  return text::Replace(text::Replace(query, "'(", "("), ")'", ")");
}

// Where the bracket of that number, from 1, opens.
std::size_t Bracket(const std::string& text, int number) {
  std::size_t at = text.find('(');
  for (int i = 1; i < number && at != std::string::npos; ++i) at = text.find('(', at + 1);
  if (at == std::string::npos || at < 2) RefuseCall(text);
  return at;
}

// The class that stands in front of a list, and where the comma before it is.
struct ClassOfList {
  std::size_t comma;
  std::string id;
};

ClassOfList FindClass(const std::string& text, std::size_t list) {
  const std::size_t comma = text.rfind(',', list - 2);
  if (comma == std::string::npos) RefuseCall(text);
  return {comma, PlainNumber(text.substr(comma + 1, list - comma - 1))};
}

std::string InsertKeys(const std::string& table, KeyType type, const std::string& list) {
  return "Insert into tblAccountTempID (ID,IDType) select " + table + ".ID," +
         std::to_string(type) + " from " + table + " Where " + table + ".ID in " + list;
}

// A call of which the lists are taken off its end, one after the other.
class AccountCall {
 public:
  AccountCall(const std::string& query, const ViewOfClass& view_of_class)
      : text_(BareLists(query)), view_of_class_(view_of_class) {
    special_.statements.emplace_back("Delete tblAccountTempID");
  }

  void TakeAccounts(int bracket) {
    const std::size_t list = Bracket(text_, bracket);
    special_.statements.push_back(InsertKeys("tblAccount", kAccounts, text_.substr(list)));
    text_.resize(list - 1);  // with the comma before it
  }

  // The class and list of the second details. Gives the class, and in `all` whether every key
  // counts.
  std::string TakeSecondDetails(bool& all) {
    const std::size_t list = Bracket(text_, 2);
    const ClassOfList of = FindClass(text_, list);
    all = text_.substr(list) == kAll;
    if (!all) InsertDetails(of.id, kSecondDetail, list);
    text_.resize(of.comma);
    return of.id;
  }

  // The first details; what stands before them stays. False if every key counts.
  bool TakeFirstDetails(bool may_be_all) {
    const std::size_t list = Bracket(text_, 1);
    const bool all = may_be_all && text_.substr(list) == kAll;
    if (!all) InsertDetails(FindClass(text_, list).id, kFirstDetail, list);
    text_.resize(list);
    return !all;
  }

  SpecialQuery With(const std::string& flags) {
    special_.statements.push_back(text_ + flags);
    return std::move(special_);
  }

 private:
  // A class without a row has no keys.
  void InsertDetails(const std::string& class_id, KeyType type, std::size_t list) {
    const std::string view = view_of_class_(class_id);
    if (!view.empty()) special_.statements.push_back(InsertKeys(view, type, text_.substr(list)));
  }

  std::string text_;
  const ViewOfClass& view_of_class_;
  SpecialQuery special_;
};

SpecialQuery RewriteTwoLists(const std::string& query, const ViewOfClass& view_of_class) {
  AccountCall call(query, view_of_class);
  call.TakeAccounts(2);
  return call.With(call.TakeFirstDetails(true) ? "'1','1'" : "'ALL','1'");
}

SpecialQuery RewriteThreeLists(const std::string& query, const ViewOfClass& view_of_class) {
  AccountCall call(query, view_of_class);
  call.TakeAccounts(3);
  bool all = false;
  const std::string class_id = call.TakeSecondDetails(all);
  call.TakeFirstDetails(false);
  return call.With("'1'," + class_id + (all ? ",'ALL','1'" : ",'1','1'"));
}

template <std::size_t kNames>
bool Names(const std::string& query, const char* const (&names)[kNames]) {
  return std::any_of(std::begin(names), std::end(names),
                     [&](const char* name) { return text::ContainsIgnoreCase(query, name); });
}

// --- Running
// --------------------------------------------------------------------------------------

// A transaction while it lives, rolled back unless it is committed. A database that knows none goes
// on without.
class Transaction {
 public:
  explicit Transaction(DataConnection& connection) : connection_(connection) {
    open_ = IgnoreErrors([&] { Say("BEGIN TRANSACTION"); });
  }
  ~Transaction() {
    if (open_) IgnoreAllErrors([&] { Say("ROLLBACK TRANSACTION"); });
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    if (std::exchange(open_, false)) Say("COMMIT TRANSACTION");
  }

 private:
  void Say(const char* statement) { connection_.Execute(statement, DtEn::kTimeout); }

  DataConnection& connection_;
  bool open_ = false;
};

std::string ReadViewOfClass(Recordset& slot, const std::string& class_id) {
  OpenSlot(slot, "Select ViewMajor From tblAccountClass Where ID =" + class_id);
  const std::string view = slot.AtEnd() ? "" : TextOf(slot, "ViewMajor");
  slot.Close();
  return view;
}

// --- Widths
// ---------------------------------------------------------------------------------------

constexpr std::int32_t kLedger = 2844;
constexpr std::int32_t kCallers[] = {2834, 2840, 2842, 2843};
constexpr std::int16_t kHidden = 0;
constexpr std::int16_t kAsItIs = -1;

// By which a column grows, for each of the callers.
struct Growth {
  std::int32_t column;
  std::int16_t by[4];
};
constexpr Growth kGrowths[] = {
    {4, {kHidden, kHidden, kHidden, kHidden}},
    {5, {900, kHidden, kHidden, kHidden}},
    {6, {kAsItIs, kAsItIs, kHidden, kHidden}},
    {7, {kAsItIs, kAsItIs, kHidden, kHidden}},
    {8, {400, 500, 800, 800}},
    {9, {800, 1000, 1700, 1700}},
    {10, {1000, 1000, 1000, 1000}},
    {11, {300, 400, 500, 500}},
    {12, {300, 400, 500, 500}},
    {16, {400, 400, 500, 500}},
    {17, {400, 400, 500, 500}},
};

}  // namespace

bool RewriteSpecialQuery(const std::string& query, const ViewOfClass& view_of_class,
                         SpecialQuery& special) {
  for (const SaleReport& report : kSaleReports) {
    if (!text::ContainsIgnoreCase(query, report.procedure)) continue;
    special = RewriteSale(query, report);
    return true;
  }
  const bool two = Names(query, kTwoLists);
  if (!two && !Names(query, kThreeLists)) return false;
  special = two ? RewriteTwoLists(query, view_of_class) : RewriteThreeLists(query, view_of_class);
  return true;
}

std::optional<SpecialQuery> SpecialQueryOf(Process& process, const std::string& query) {
  SpecialQuery special;
  const auto view_of_class = [&](const std::string& class_id) {
    return ReadViewOfClass(process.dten().rssqlQuery, class_id);
  };
  if (!RewriteSpecialQuery(query, view_of_class, special)) return std::nullopt;
  return special;
}

bool PrepareSpecialReport(ReportContext& report, const std::string& query) {
  const std::optional<SpecialQuery> special = SpecialQueryOf(report.process, query);
  if (!special) return false;
  DtEn& dten = report.process.dten();
  Transaction transaction(dten.cnn);
  for (const std::string& statement : special->statements) OpenSlot(dten.rssqlQuery, statement);
  transaction.Commit();
  return true;
}

void WidenSpecialReport(ReportContext& report) {
  if (report.state.ReportID != kLedger) return;
  const auto* const caller =
      std::find(std::begin(kCallers), std::end(kCallers), report.state.CallerID);
  if (caller == std::end(kCallers)) return;
  Grid& grid = report.flxMain;
  for (const Growth& growth : kGrowths) {
    const std::int16_t by = growth.by[caller - std::begin(kCallers)];
    if (by == kAsItIs || growth.column >= grid.Cols()) continue;
    grid.SetColWidth(growth.column, by == kHidden ? 0 : grid.ColWidth(growth.column) + by);
  }
}

}  // namespace vorek
