#include "vorek/evaluation.h"

#include <gtest/gtest.h>

#include <memory>

#include "engine/report_control.h"
#include "platform/memory_files.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/report.h"

namespace vorek {
namespace {

class WorldEvaluationTest : public testing::Test {
 protected:
  WorldEvaluationTest() {
    WorldOptions options;
    options.windows = windows;
    options.clock = std::make_shared<FixedClock>();
    options.files = files;
    options.function_file = "f";
    world = std::make_unique<World>(std::move(options));
  }

  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  std::shared_ptr<MemoryFiles> files = std::make_shared<MemoryFiles>();
  std::unique_ptr<World> world;
};

TEST_F(WorldEvaluationTest, WarnsThroughTheWorldsForms) {
  EvaluationClass evaluation(EvaluationOptionsOf(*world));
  evaluation.Expresion("10000000000*10000000000");
  evaluation.AnalizaExpr();
  ASSERT_EQ(windows->shown.size(), 1U);
  EXPECT_TRUE(windows->shown[0].starts_with("FormMessage|اشکال در محاسبات |از آنجايي كه"));
}

TEST_F(WorldEvaluationTest, AControlReadsTheFunctionsThatAHostKept) {
  EvaluationClass(EvaluationOptionsOf(*world)).NuevaFuncion("doble", "X*2");
  VorekReport1 report(*world);
  EXPECT_EQ(report.Impl().Evaluation.DefFuncion("@DOBLE"), "X*2");
}

}  // namespace
}  // namespace vorek
