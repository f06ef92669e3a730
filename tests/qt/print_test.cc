#include <gtest/gtest.h>

#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "adapters/qt/print_preview.h"
#include "desk_fixture.h"
#include "export/crystal_print.h"
#include "platform/files.h"
#include "print/template_job.h"
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
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      auto* const preview = dynamic_cast<PrintPreview*>(window);
      if (preview != nullptr && preview->isVisible()) return preview;
    }
    return nullptr;
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
