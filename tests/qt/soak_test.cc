#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "desk_fixture.h"
#include "export/text_export.h"

// Reports that are opened, sorted, written and closed again and again leave nothing behind.
// VOREK_SOAK tells how often (tools/soak-desk); fifty times else.
namespace vorek::qt {
namespace {

struct Held {
  long kibibytes;
  long files;
};

Held HeldNow() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  statm >> pages >> pages;  // the second number: those in memory
  namespace fs = std::filesystem;
  const auto files =
      std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  return {pages * ::sysconf(_SC_PAGESIZE) / 1024, static_cast<long>(files)};
}

class SoakTest : public DeskTest {
 protected:
  void OpenSortWriteAndClose(int report) {
    desk->OpenReport(report);
    QTest::qWait(1);
    ReportContext context = Control().Context();
    ASSERT_GT(context.ActiveGrid().Rows(), 2);
    desk->CurrentTab()->Widget().Report().SortflxMain(2);
    const auto out = SystemFiles().Create(folder.filePath("rows.csv").toStdString());
    WriteTextFile(context, {.kind = TextFileOptions::Kind::kComma}, *out);
    out->Commit();
    QTest::keyClick(desk.get(), Qt::Key_W, Qt::ControlModifier);
    QTest::qWait(1);
    ASSERT_EQ(desk->CurrentTab(), nullptr);
  }
};

TEST_F(SoakTest, LeavesNothingBehind) {
  const char* const asked = std::getenv("VOREK_SOAK");
  const int times = asked == nullptr ? 50 : std::atoi(asked);
  ::alarm(static_cast<unsigned>(60 + 5 * times));  // in place of that of a single test
  constexpr int kReports[] = {201, 247, 301};
  Held warm{};
  for (int time = 0; time < times; ++time) {
    const int report = kReports[time % 3];
    ASSERT_NO_FATAL_FAILURE(OpenSortWriteAndClose(report)) << report;
    if (time == times / 3) warm = HeldNow();
  }
  const Held now = HeldNow();
  std::printf("%d times: %ld KiB and %ld files, after the warm-up %ld KiB and %ld files\n", times,
              now.kibibytes, now.files, warm.kibibytes, warm.files);
  EXPECT_EQ(now.files, warm.files);
  EXPECT_LT(now.kibibytes, warm.kibibytes * 105 / 100) << "of " << warm.kibibytes;
}

}  // namespace
}  // namespace vorek::qt
