#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "adapters/qt/print_preview.h"
#include "desk_fixture.h"
#include "engine/grid_heading.h"
#include "export/crystal_print.h"
#include "print/template_job.h"
#include "vorek/files.h"
#include "vorek/system.h"
#include "vorek/xml.h"

namespace vorek::qt {
namespace {

class PrintTest : public DeskTest {
 protected:
  // The preview of report 247 through its template.
  PrintPreview* Preview() {
    desk->OpenReport(247);
    QTest::qWait(20);
    ReportContext context = Control().Context();
    PrintCrystal(context, "share/print/invoices.xml");
    QTest::qWait(50);
    return ShownPreview();
  }
};

TEST_F(PrintTest, ShowsPagesThatCanBeLookedThrough) {
  PrintPreview* const preview = Preview();
  ASSERT_NE(preview, nullptr);
  SavePicture(*preview, "print-preview");
  auto* const number = preview->findChild<QSpinBox*>();
  EXPECT_GT(number->maximum(), 20);
  number->setValue(3);
  EXPECT_EQ(preview->Pages().PageInView(), 2U);
  // A search goes on from the page in view, and takes letters that look the same for the same.
  auto* const search = preview->findChild<QLineEdit*>("search");
  ASSERT_NE(search, nullptr);
  search->setText("صفحه ۵ از");
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(preview->Pages().PageInView(), 4U);
  const double zoom = preview->Pages().Zoom();
  QTest::mouseClick(preview->findChild<QPushButton*>("larger"), Qt::LeftButton);
  EXPECT_GT(preview->Pages().Zoom(), zoom);
  EXPECT_EQ(preview->Pages().PageInView(), 4U);
  QTest::keyClick(&preview->Pages(), Qt::Key_Escape);
  QTest::qWait(20);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(PrintTest, WritesTextsThatAreReadBack) {
  ASSERT_NE(Preview(), nullptr);  // the rows are staged
  const QString path = folder.filePath("invoices.pdf");
  print::TemplateJob job({{SqliteProvider()}, MachineFiles(), PugiXmlReader(), PdfFile(path)});
  job.ReportFilePath("share/print/invoices.xml");
  job.DatabaseConnection("Provider=VorekSQLite;Data Source=" + SampleFile());
  std::int32_t index = 0;
  job.AddFormula(index, "$-1='نام کاربر'");
  job.DataQuery("Select * from tblVorekCrystalReport Where UserID = 1 and ReportID=247");
  job.StartJob(1);
  QProcess reader;
  reader.start("pdftotext", {"-f", "1", "-l", "1", "-layout", path, "-"});
  ASSERT_TRUE(reader.waitForFinished());
  const QString text =
      QString::fromUtf8(reader.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
  for (const char* const part : {"نام کاربر", "شماره فاكتور", "14030", "جمع صفحه"}) {
    EXPECT_TRUE(text.contains(QString::fromUtf8(part))) << part << "\n" << text.toStdString();
  }
  // A file that can't be written leaves nothing, and says why.
  print::TemplateJob nowhere({{SqliteProvider()},
                              MachineFiles(),
                              PugiXmlReader(),
                              PdfFile(folder.filePath("no/folder.pdf"))});
  nowhere.ReportFilePath("share/print/ledger.xml");
  nowhere.DatabaseConnection("Provider=VorekSQLite;Data Source=" + SampleFile());
  nowhere.DataQuery("Select * from tblVorekCrystalReport Where UserID = -5");
  EXPECT_THROW(nowhere.StartJob(1), Error);
}

// What Ctrl+P opens for the report on show.
class GridPrintTest : public DeskTest {
 protected:
  PrintPreview* Preview(int report) {
    desk->OpenReport(report);
    QTest::qWait(50);
    QTest::keyClick(desk.get(), Qt::Key_P, Qt::ControlModifier);
    QTest::qWait(50);
    return ShownPreview();
  }
  static print::PrintedColumns ColumnsOf(const ReportContext& report) {
    const Grid& grid = report.ActiveGrid();
    return print::PrintedColumns(ColumnView(grid), grid);
  }
  static std::int32_t AmountColumn(const Grid& grid) {
    std::int32_t col = 0;
    while (grid.TextMatrix(0, col) != "مبلغ") ++col;
    return col;
  }
  // Without blanks, whose places a reader guesses, and marks of direction.
  static QString TextOf(const QString& path) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", path, "-"});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput())
        .normalized(QString::NormalizationForm_KC)
        .remove(QRegularExpression("[\\s\u202A-\u202E]"));
  }
};

TEST_F(GridPrintTest, OpensThePagesOfTheGridForAnyPaper) {
  PrintPreview* const preview = Preview(301);
  ASSERT_NE(preview, nullptr);
  SavePicture(*preview, "grid-preview");
  auto* const number = preview->findChild<QSpinBox*>("page");
  auto* const landscape = preview->findChild<QCheckBox*>("landscape");
  ASSERT_NE(number, nullptr);
  ASSERT_NE(landscape, nullptr);
  EXPECT_TRUE(landscape->isChecked());  // its columns need it
  const int across = number->maximum();
  number->setValue(4);
  EXPECT_EQ(preview->Pages().PageInView(), 3U);
  QTest::mouseClick(landscape, Qt::LeftButton, {}, QPoint(landscape->width() - 8, 8));
  EXPECT_FALSE(landscape->isChecked());
  EXPECT_LT(number->maximum(), across);
  EXPECT_EQ(preview->Pages().PageInView(), 0U);
  const int upright = number->maximum();
  preview->findChild<QCheckBox*>("fitWidth")->setChecked(false);
  EXPECT_GT(number->maximum(), upright);  // two sheets side by side
  preview->findChild<QSpinBox*>("margin")->setValue(30);
  SavePicture(*preview, "grid-preview-wide");
  QTest::keyClick(&preview->Pages(), Qt::Key_Escape);
  QTest::qWait(20);
  EXPECT_EQ(ShownPreview(), nullptr);
}

TEST_F(GridPrintTest, ClosesWhenTheRowsChange) {
  ASSERT_NE(Preview(301), nullptr);
  Control().Context().ActiveGrid().RemoveItem(3);
  EXPECT_EQ(ShownPreview(), nullptr);
  desk->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(desk.get()));
  ASSERT_NE(Preview(301), nullptr);
  desk.reset();
  EXPECT_EQ(ShownPreview(), nullptr);
}

TEST_F(GridPrintTest, WritesTheGridToAFile) {
  desk->OpenReport(301);
  QTest::qWait(50);
  ReportContext context = Control().Context();
  const QString path = folder.filePath("grid.pdf");
  const print::GridPrint pages(context, ColumnsOf(context), HeadingOf(context), {});
  WritePdf(pages, path);
  const QString text = TextOf(path);
  for (const std::string& part :
       {std::string("فهرست دريافتها"), std::string("نام مشتري"), std::string("نقل از صفحه قبل"),
        std::string("نقل به صفحه بعد"), std::string("جمع صفحه"), std::string("مجموع"),
        "صفحه 2 از " + std::to_string(pages.PageCount())}) {
    EXPECT_TRUE(text.contains(QString::fromStdString(part).remove(' '))) << part;
  }
  const Grid& grid = context.ActiveGrid();
  const std::string sum = grid.TextMatrix(grid.Rows() - 1, AmountColumn(grid));
  EXPECT_EQ(sum, "256/047/968/466");
  EXPECT_TRUE(text.contains(QString::fromStdString(sum)));
}

// A figure that has no room is never cut.
TEST_F(GridPrintTest, CutsNoFigure) {
  desk->OpenReport(301);
  QTest::qWait(50);
  ReportContext context = Control().Context();
  context.ActiveGrid().SetColWidth(AmountColumn(context.ActiveGrid()), 400);
  const QString path = folder.filePath("narrow.pdf");
  WritePdf(print::GridPrint(context, ColumnsOf(context), HeadingOf(context), {.fit_width = false}),
           path);
  const QString text = TextOf(path);
  EXPECT_TRUE(text.contains("##"));
  EXPECT_FALSE(text.contains("631/119/808"));
}

TEST_F(PrintTest, RefusesAFileOfAnotherProgram) {
  const std::string path = folder.filePath("other.rpt").toStdString();
  MachineFiles()->Write(path, std::string("\xD0\xCF\x11\xE0 other", 10));
  print::TemplateJob job({{SqliteProvider()}, MachineFiles(), PugiXmlReader(), PrintPreviews()});
  job.ReportFilePath(path);
  try {
    job.StartJob(1);
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kBadTemplate));
    EXPECT_TRUE(error.Description().starts_with("فايل other.rpt الگوي چاپ اين برنامه نيست."))
        << error.Description();
  }
}

}  // namespace
}  // namespace vorek::qt
