#include <gtest/gtest.h>

#include "author/finding_text.h"
#include "author/report_check.h"
#include "sample/sample_database.h"
#include "state/process.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"

namespace vorek {
namespace {

// The sample's reports are right, but for those that show what a wrong definition does, and two
// that compare a typed code.
TEST(SampleCheck, GivesNoFalseAlarm) {
  Process process({.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()});
  process.data.Rebind(Sample().ConnectionString());
  std::string findings;
  for (const Finding& finding : CheckReports(process, {})) {
    findings += std::to_string(finding.report_id) + " " + std::string(CodeOf(finding.rule)) + "\n";
  }
  EXPECT_EQ(findings,
            "903 missing-table\n"
            "904 no-query\n"
            "911 layout-gap\n"
            "912 layout-beyond\n"
            "913 tree-value\n"
            "914 tree-fields\n"
            "916 nothing-spread\n"
            "917 no-fold-key\n"
            "918 formula-open\n"
            "919 secured-group\n"
            "2843 text-compared\n"
            "2844 text-compared\n"
            "2844 text-compared\n");
}

}  // namespace
}  // namespace vorek
