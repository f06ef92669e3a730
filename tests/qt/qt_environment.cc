#include "qt_environment.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

namespace vorek::qt {
namespace {

// Every test has a screen that nobody sees.
class QtEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    alarm(kLongest);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    app_ = std::make_unique<QApplication>(argc_, argv_);
    QApplication::setLayoutDirection(Qt::RightToLeft);
  }
  void TearDown() override { app_.reset(); }

 private:
  static constexpr unsigned kLongest = 60;  // seconds: a window that nobody closes ends the test

  int argc_ = 1;
  char name_[5] = "test";
  char* argv_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> app_;
};

const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace
}  // namespace vorek::qt
