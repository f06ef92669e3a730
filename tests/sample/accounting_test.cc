// The books of the sample are the same whichever report tells them: ledgers, turnovers and trial
// balances are held against one another and against plain sums over the vouchers.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "engine/report_control.h"
#include "sample_database.h"
#include "text/cell_text.h"
#include "vorek/database.h"
#include "vorek/report.h"
#include "vorek/system.h"

namespace vorek {
namespace {

using Amounts = std::map<std::string, std::int64_t>;  // ten-thousandths, by what they belong to

std::int64_t Amount(const std::string& text) { return ToFixedPoint(UnformatNumber(text)); }

class Books {
 public:
  Books() {
    WorldOptions options;
    options.providers = {SqliteProvider()};
    options.windows = WindowsOnStream(told_);
    AddSystemServices(options);
    world_ = std::make_unique<World>(options);
    report_ = std::make_unique<VorekReport1>(*world_);
    report_->SetOleConnectionString(Sample().ConnectionString());
    report_->SetUserID(1);
    report_->SetPositionID(1);
  }

  // A ledger's form as it opens for a period, then with another first day where one is given.
  void Show(int report, int period, const std::string& from = "") {
    report_->SetPeriodID(period);
    EXPECT_TRUE(report_->View(report)) << told_.str();
    VorekParameters& form = Control().VorekParameters1;
    if (!from.empty()) form.widgets.dat[1].Type(from);
    if (!from.empty() || report == 2846) form.cmdOk.Click();
    EXPECT_EQ(told_.str(), "");
  }
  void ShowWith(int report, const std::string& parameters) {
    EXPECT_TRUE(report_->View(report, parameters)) << told_.str();
  }

  // The sums of a column of amounts by the texts of another one; "" for the whole.
  Amounts Sums(const std::string& amount, const std::string& by) {
    const Grid& grid = Control().flxMain;
    Amounts sums;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      const std::string mark = grid.TextMatrix(row, 0);
      if (mark.empty() || mark == "مجموع") continue;  // a subtotal, a sum
      const std::string key = by.empty() ? "" : grid.TextMatrix(row, Column(by));
      sums[key] += Amount(grid.TextMatrix(row, Column(amount)));
    }
    return WithoutNothing(sums);
  }

  // The subtotals of a column, by their own key.
  Amounts Subtotals(const std::string& amount, std::int32_t key) {
    const Grid& grid = Control().flxMain;
    Amounts sums;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      if (!grid.TextMatrix(row, 0).empty()) continue;
      sums[grid.TextMatrix(row, key)] += Amount(grid.TextMatrix(row, Column(amount)));
    }
    return WithoutNothing(sums);
  }

  // The same by a plain statement over the vouchers, whose columns are key and amount.
  static Amounts Plain(const std::string& what, const std::string& where,
                       const std::string& by = "a.Code") {
    const auto connection = SqliteProvider()->Connect(Sample().ConnectionString());
    const ResultSetPtr rows = connection->Execute(
        "select " + by + ", sum(" + what +
            ") from tblAccountDocumentDetail d inner join tblAccountDocument t on t.ID = "
            "d.DocumentID inner join tblAccount a on a.ID = d.AccountID inner join tblAccount k on "
            "k.ID = a.ParentID where " +
            where + " group by " + by,
        {});
    Amounts sums;
    for (std::size_t row = 0; row < rows->rows; ++row) {
      sums[rows->columns[0].Display(row)] = Amount(rows->columns[1].Display(row));
    }
    return WithoutNothing(sums);
  }

  ReportControl& Control() { return report_->Impl(); }

 private:
  static Amounts WithoutNothing(Amounts sums) {
    std::erase_if(sums, [](const auto& sum) { return sum.second == 0; });
    return sums;
  }
  std::int32_t Column(const std::string& header) {
    const Grid& grid = Control().flxMain;
    for (std::int32_t column = 1; column < grid.Cols(); ++column) {
      if (grid.TextMatrix(0, column) == header) return column;
    }
    ADD_FAILURE() << "no column " << header << " in report " << Control().state.ReportID;
    return 1;
  }

  std::ostringstream told_;
  std::unique_ptr<World> world_;
  std::unique_ptr<VorekReport1> report_;
};

// The vouchers that a form of the year 1404 takes as it opens, by dates and numbers alone.
const char* const kYear =
    "t.DocumentDate >= '20250321' and t.DocumentDate <= '20260320' and t.Code >= (select min(Code) "
    "from tblAccountDocument where DocumentDate >= '20250321' and IsPreDoc = 0) and t.Code <= "
    "(select max(Code) from tblAccountDocument where IsPreDoc = 0)";

TEST(Accounting, TellsTheTurnoverOfEachAccountInEachReport) {
  const struct {
    int report;
    const char* debit;
    const char* credit;
  } reports[] = {
      {2834, "بدهكار", "بستانكار"},           {2846, "جمع بدهكار", "جمع بستانكار"},
      {2848, "بدهكار", "بستانكار"},           {2850, "طي دوره بدهكار", "طي دوره بستانكار"},
      {2851, "جمع بدهكار", "جمع بستانكار"},   {2852, "گردش بدهكار", "گردش بستانكار"},
      {2853, "جمع بدهكار", "جمع بستانكار"},   {2856, "گردش بدهكار", "گردش بستانكار"},
      {2857, "گردش بدهكار", "گردش بستانكار"}, {2858, "گردش بدهكار", "گردش بستانكار"},
      {2859, "جمع بدهكار", "جمع بستانكار"},
  };
  const Amounts debit = Books::Plain("d.Debit", kYear);
  const Amounts credit = Books::Plain("d.Credit", kYear);
  ASSERT_GT(debit.size(), 10U);
  Books books;
  for (const auto& with : reports) {
    SCOPED_TRACE(with.report);
    books.Show(with.report, 48);
    EXPECT_EQ(books.Sums(with.debit, "كد حساب"), debit);
    EXPECT_EQ(books.Sums(with.credit, "كد حساب"), credit);
  }
  books.Show(2849, 48);
  EXPECT_EQ(books.Sums("گردش بدهكار", "كد كل"), Books::Plain("d.Debit", kYear, "k.Code"));
  EXPECT_EQ(books.Sums("گردش بستانكار", "كد كل"), Books::Plain("d.Credit", kYear, "k.Code"));
}

TEST(Accounting, AddsWhatWasBeforeToWhatIsWithin) {
  const std::string to_the_end =
      "t.DocumentDate >= '20250321' and t.DocumentDate <= '20260320' and t.Code is not null";
  const Amounts before = Books::Plain("d.Debit", to_the_end + " and t.DocumentDate < '20250622'");
  const Amounts all = Books::Plain("d.Debit", to_the_end);
  const Amounts net = Books::Plain("d.Debit - d.Credit", to_the_end);
  Books books;
  for (const int report : {2846, 2851, 2853, 2859}) {
    SCOPED_TRACE(report);
    books.Show(report, 48, "1404/04/01");
    EXPECT_EQ(books.Sums("اول دوره بدهكار", "كد حساب"), before);
    EXPECT_EQ(books.Sums("جمع بدهكار", "كد حساب"), all);
    Amounts both = books.Sums("اول دوره بدهكار", "كد حساب");
    for (const auto& [key, amount] : books.Sums("طي دوره بدهكار", "كد حساب")) both[key] += amount;
    EXPECT_EQ(both, all);
    Amounts balance = books.Sums("مانده بدهكار", "كد حساب");
    for (const auto& [key, amount] : books.Sums("مانده بستانكار", "كد حساب")) {
      balance[key] -= amount;
    }
    if (report != 2859) {
      EXPECT_EQ(balance, net);
    }
  }
}

// Subtotals of each report are the sums of the rows that the ledger of the same key has.
TEST(Accounting, GroupsWhatItTells) {
  const struct {
    int report;
    const char* key;
    std::int32_t key_column;
    const char* debit;
    const char* credit;
  } reports[] = {
      {2851, "نام كل", 1, "جمع بدهكار", "جمع بستانكار"},
      {2852, "نام كل", 4, "گردش بدهكار", "گردش بستانكار"},
      {2853, "نام كل", 4, "جمع بدهكار", "جمع بستانكار"},
      {2857, "نام كل", 1, "گردش بدهكار", "گردش بستانكار"},
      {2858, "حساب و طبقه", 7, "گردش بدهكار", "گردش بستانكار"},
      {2859, "حساب و طبقه", 7, "جمع بدهكار", "جمع بستانكار"},
  };
  Books books;
  for (const auto& with : reports) {
    SCOPED_TRACE(with.report);
    books.Show(with.report, 48);
    const Amounts debit = books.Sums(with.debit, with.key);
    const Amounts credit = books.Sums(with.credit, with.key);
    EXPECT_GT(debit.size(), 5U);
    EXPECT_EQ(books.Subtotals(with.debit, with.key_column), debit);
    EXPECT_EQ(books.Subtotals(with.credit, with.key_column), credit);
    for (const auto& [key, amount] : books.Subtotals("مانده بدهكار", with.key_column)) {
      const auto other = credit.find(key);
      EXPECT_EQ(amount, debit.at(key) - (other == credit.end() ? 0 : other->second)) << key;
    }
    // Either shape, asked for one after the other, tells the same.
    for (Menu* const shape :
         {&books.Control().FlexPopupMenu.mnuGroupBy, &books.Control().FlexPopupMenu.mnuHybrid,
          &books.Control().FlexPopupMenu.mnuGroupBy}) {
      books.Control().flxMain.SetCol(with.key_column);
      shape->Click();
      EXPECT_EQ(books.Subtotals(with.debit, with.key_column), debit) << shape->Name();
    }
    books.Control().FlexPopupMenu.mnuGroupByNothing.Click();
    EXPECT_EQ(books.Sums(with.debit, with.key), debit);
  }
}

TEST(Accounting, LeadsFromAnAccountToItsLines) {
  const std::string both_years = "t.DocumentDate >= '20240320' and t.DocumentDate <= '20260320'";
  Books books;
  const Amounts debit = Books::Plain("d.Debit", both_years);
  for (const auto& [account, amount] : debit) {
    books.ShowWith(2844, "@1='" + account + "'");
    EXPECT_EQ(books.Sums("بدهكار", "").at(""), amount) << account;
  }
  books.ShowWith(2840, "@1='20240320'");
  EXPECT_EQ(books.Sums("گردش بدهكار", "كد كل"), Books::Plain("d.Debit", both_years, "k.Code"));
  books.ShowWith(2847, "@1='20240320'");
  EXPECT_EQ(books.Sums("گردش بدهكار", "كد حساب"), debit);
  books.ShowWith(2843, "@1='20240320'");
  const Amounts objects = books.Sums("گردش بدهكار", "كد حساب");
  books.ShowWith(2842, "@1='20240320'");
  EXPECT_EQ(books.Sums("گردش بدهكار", "كد حساب"), objects);
  books.ShowWith(2860, "@1=48");
  const Amounts months = books.Sums("گردش بدهكار", "");
  books.ShowWith(2921, "@1=48");
  // A draft may have no number.
  EXPECT_GE(months.at(""), books.Sums("گردش بدهكار", "").at(""));
}

}  // namespace
}  // namespace vorek
