#ifndef VOREK_TESTS_QT_DESK_FIXTURE_H_
#define VOREK_TESTS_QT_DESK_FIXTURE_H_

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <memory>
#include <string>

#include "adapters/qt/print_preview.h"
#include "desk_window.h"
#include "engine/report_control.h"
#include "qt_environment.h"
#include "report_tab.h"
#include "sample/sample_database.h"
#include "settings_file.h"
#include "vorek/qt.h"
#include "vorek/sqlite.h"

namespace vorek::qt {

// The sample, made once for all tests of a run.
inline const std::string& SampleFile() {
  static const SampleDatabase sample;
  static const std::string file = sample.File();
  return file;
}

// The preview on the screen; null if there is none. findChild knows no classes without a
// meta-object.
inline PrintPreview* ShownPreview() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const preview = dynamic_cast<PrintPreview*>(window);
    if (preview != nullptr && preview->isVisible()) return preview;
  }
  return nullptr;
}

class DeskTest : public testing::Test {
 protected:
  DeskTest() {
    desk = std::make_unique<desk::DeskWindow>(settings);
    desk->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(desk.get()));
    EXPECT_TRUE(desk->Connect(Owner()));
  }
  static desk::Login Owner() { return {QString::fromStdString(SampleFile()), 1, 1, -1, -1}; }
  // Closes the window and opens another one on the same settings, as the program's next start does.
  void Restart() {
    desk->close();
    desk = std::make_unique<desk::DeskWindow>(settings);
    desk->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(desk.get()));
    EXPECT_TRUE(desk->Connect(Owner()));
    desk->ReopenTabs();
  }
  ReportControl& Control() { return desk->CurrentTab()->Widget().Report().Impl(); }
  template <typename Widget>
  Widget* Child(const QString& name) {
    auto* const found = desk->CurrentTab()->findChild<Widget*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }

  QTemporaryDir folder;
  QSettings settings{desk::PrivateFile(folder.filePath("desk.ini")), QSettings::IniFormat};
  std::unique_ptr<desk::DeskWindow> desk;
};

}  // namespace vorek::qt

#endif  // VOREK_TESTS_QT_DESK_FIXTURE_H_
