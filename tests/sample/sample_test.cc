// Every report of the sample over the embedded database: one that stops working, or works though it
// is there to fail, is found here, and so is a change of the rows.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "sample_database.h"
#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/report.h"
#include "vorek/sqlite.h"
#include "vorek/system.h"

namespace vorek {
namespace {

constexpr int kFails = -2;
constexpr int kWaits = -1;  // for its parameters

struct ReportCase {
  int report;
  int records;
  const char* parameters = "";
  std::int16_t user = 1;
  std::int16_t position = 1;
};

const ReportCase kReports[] = {
    {101, 202},
    {102, 116},
    {103, 14},
    {104, 44},
    {105, 18},
    {106, kWaits},
    {106, 6, "@1=1&@2='%نور%'&@3=1"},
    {201, 960},
    {202, 2844},
    {203, 10, "@1=5"},
    {204, 1, "@1=5"},
    {205, 960},
    {205, 630, "", 3, 4},
    {205, 330, "", 4, 5},
    {205, 0, "", 5, 6},
    {206, 2844},
    {206, 1884, "", 3, 4},
    {206, 960, "", 4, 5},
    {207, 1008},
    {208, 57},
    {209, 164},
    {210, 20},
    {211, 202},
    {212, 105},
    {213, 1},
    {214, 17, "@1='1404/01/01'&@2='1404/12/29'"},
    {215, 20},
    {216, 10},
    {217, 10},
    {218, kWaits},
    {218, 1230, "@3=(11,12)&@5=1000000"},
    {219, 116, "@1='1404/01/01'"},
    {220, 33},
    {221, 211},
    {222, kWaits},
    {223, kWaits},
    {224, 211},
    {225, kWaits},
    {226, kFails},  // nobody answers its dialog
    {227, 113},
    {228, 30},
    {229, kWaits},
    {229, 26, "@1=5"},
    {230, 18},
    {231, 100000},
    {240, 1, "@1=1"},
    {241, 4, "@1=1"},
    {242, 33, "@1=3"},
    {243, 18},
    {244, 24},
    {245, 10},
    {246, 5},
    {247, 960},
    {301, 624},
    {302, 9, "@1=5"},
    {303, 33, "@1=1&@2=1"},
    {304, 213, "", 4, 5},
    {305, 220},
    {306, 135, "@1=1"},
    {401, 57},
    {402, 24},
    {402, 24, "", 2, 2},
    {402, kFails, "", 3, 4},  // not the bookkeepers' role
    {403, 741},
    {404, 4, "@1=2"},
    {405, 299},
    {406, kWaits},
    {407, 449},
    {408, 32, "@1=1"},
    {411, kWaits},
    {412, kWaits},
    {413, kWaits},
    {501, 1632},
    {502, 16},
    {503, 51},
    {901, 0},
    {902, kFails},
    {903, kFails},
    {904, kFails},
    {906, 1},
    {907, 1},
    {908, 116},
    {911, 9},
    {912, 9},
    {913, 14},
    {914, 14},
    {915, 5},
    {915, kFails, "", 2, 2},  // administrators alone
    {916, 116},
    {917, 116},
    {918, 5},
    {919, kFails},
    {921, kFails},
    {2834, 16, "@1=48&@2='2025-03-21'&@8=0&@9=1&@10=0"},
    {2840, kWaits},
    {2840, 15, "@1='20240320'"},
    {2842, 4, "@1='20240320'"},
    {2843, 214, "@1='20240320'"},
    {2844, 299, "@1='1102'"},
    {2846, 24, "@1=47&@2='20240320'&@3='20250320'&@8=1&@9=0&@10=0"},
    {2847, 24, "@1='20240320'"},
    {2848, 1895, "@1=47&@8=1&@9=0&@10=0"},
    {2849, 125, "@1=47&@8=1&@9=0&@10=0"},
    {2850, 24, "@1=47&@2='20240320'&@3='20250320'&@8=0&@9=0&@10=1"},
    {2851, 24, "@1=47&@2='20240320'&@3='20250320'&@8=0&@9=0&@10=1"},
    {2852, 24, "@1=47&@8=1&@9=0&@10=0"},
    {2853, 24, "@1=47&@2='20240320'&@3='20250320'&@8=0&@9=0&@10=1"},
    {2856, 1235, "@1=47&@8=1&@9=0&@10=0"},
    {2857, 24, "@1=47&@8=1&@9=0&@10=0"},
    {2858, 200, "@1=47&@8=1&@9=0&@10=0"},
    {2859, 200, "@1=47&@2='20240320'&@3='20250320'&@8=1&@9=0&@10=0"},
    {2860, 12, "@1=47"},
    {2921, 362, "@1=47"},
};

// A report over the sample, and what its windows tell.
struct ShownReport {
  ShownReport() { report.SetOleConnectionString(Sample().ConnectionString()); }

  static WorldOptions OptionsOn(std::ostream& out) {
    WorldOptions options;
    options.providers = {SqliteProvider()};
    options.windows = WindowsOnStream(out);
    AddSystemServices(options);
    return options;
  }

  std::ostringstream shown;
  World world{OptionsOn(shown)};
  VorekReport1 report{world};
};

TEST(SampleTest, RunsEveryReport) {
  for (const ReportCase& run : kReports) {
    SCOPED_TRACE(run.report);
    ShownReport of_sample;
    const std::ostringstream& shown = of_sample.shown;
    VorekReport1& report = of_sample.report;
    report.SetUserID(run.user);
    report.SetPositionID(run.position);
    EXPECT_EQ(report.View(run.report, run.parameters), run.records != kFails) << shown.str();
    if (run.records >= 0) {
      EXPECT_EQ(report.QueryRecordCount(), run.records) << shown.str();
    }
    if (run.records == kFails) {
      EXPECT_NE(shown.str() + report.StopReason(), "") << "nobody is told why";
    } else {
      EXPECT_EQ(report.StopReason(), "");
    }
  }
}

TEST(SampleTest, TellsAHostWhatNoMessageTells) {
  ShownReport of_sample;
  VorekReport1& report = of_sample.report;
  const struct {
    int report;
    std::int16_t user;
    const char* reason;
  } cases[] = {{99999, 1, "گزارش شماره 99999 وجود ندارد."},
               {402, 3, ""},  // a message tells that this user may not see it
               {904, 1, "گزارش شماره 904 متن پرس و جو ندارد."},
               {201, 1, ""},
               {99999, 1, "گزارش شماره 99999 وجود ندارد."},
               {214, 1, ""}};
  for (const auto& c : cases) {
    report.SetUserID(c.user);
    report.View(c.report);
    EXPECT_EQ(report.StopReason(), c.reason) << c.report;
  }
  report.SetUseThisQuery("select Code from tblSaleInvoice where CustomerID = @1 and 1 = 1");
  EXPECT_FALSE(report.View(203, "@1=5"));
  EXPECT_EQ(report.StopReason(),
            "گزارش شماره 203 نمايش داده نشد: پارامتري در متن پرس و جو مقدار ندارد.");
}

TEST(SampleTest, NamesEveryReportInTheTable) {
  const auto connection = SqliteProvider()->Connect(Sample().ConnectionString());
  const ResultSetPtr reports = connection->Execute("select ID from tblVorekReport", {});
  for (std::size_t row = 0; row < reports->rows; ++row) {
    const std::int64_t id = reports->columns[0].Scaled(row);
    EXPECT_TRUE(std::any_of(std::begin(kReports), std::end(kReports), [id](const ReportCase& run) {
      return run.report == id;
    })) << id;
  }
}

TEST(SampleTest, KeepsItsBooksBalanced) {
  const auto connection = SqliteProvider()->Connect(Sample().ConnectionString());
  const auto rows = [&](const char* text) { return connection->Execute(text, {})->rows; };
  EXPECT_EQ(rows("select DocumentID from tblAccountDocumentDetail group by DocumentID "
                 "having sum(Debit) <> sum(Credit)"),
            0u);
  EXPECT_EQ(rows("select ID from tblSaleInvoice where NetValue <> GrossValue - DiscountValue + "
                 "TaxValue"),
            0u);
  EXPECT_EQ(rows("select i.ID from tblSaleInvoice i inner join tblSaleInvoiceDetail d on "
                 "d.InvoiceID = i.ID group by i.ID, i.GrossValue, i.DiscountValue "
                 "having sum(d.LineValue) <> i.GrossValue - i.DiscountValue"),
            0u);
}

}  // namespace
}  // namespace vorek
