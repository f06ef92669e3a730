#include <gtest/gtest.h>

#include <string>

#include "platform/memory_files.h"
#include "vorek/evaluation.h"

namespace vorek {
namespace {

const std::string kFirst =
    "Por favor, no intente modificar a mano este archivo. "
    "Please, don't try to modify by hand this file.\r\n";

class FunctionFileTest : public testing::Test {
 protected:
  EvaluationOptions Options() {
    EvaluationOptions options;
    options.function_file = "f";
    options.files = &files_;
    return options;
  }
  std::string& File() { return files_.contents["f"]; }
  // The functions that an evaluator reads of the file.
  std::string Read() {
    const EvaluationClass evaluation(Options());
    std::string out;
    const auto last = static_cast<std::int16_t>(evaluation.CuentaFuncion());
    for (std::int16_t i = 1; i <= last; ++i) {
      out += evaluation.NombreFuncion(i) + "=" + evaluation.DefFuncion(i) + " ";
    }
    return out;
  }

  MemoryFiles files_;
};

TEST_F(FunctionFileTest, EachChangeIsWritten) {
  {
    EvaluationClass evaluation(Options());
    EXPECT_EQ(files_.writes, 0);
    evaluation.NuevaFuncion("doble", "x*2");
    EXPECT_EQ(File(), kFirst + "\"@DOBLE\",\"X*2\"\r\n");
    evaluation.NuevaFuncion("sq", "X^2");
    evaluation.ModiFuncion("@doble", "X+X");
    EXPECT_EQ(File(), kFirst + "\"@DOBLE\",\"X+X\"\r\n\"@SQ\",\"X^2\"\r\n");
    const int writes = files_.writes;
    evaluation.RemFuncion("@NADA");
    EXPECT_EQ(files_.writes, writes);
    evaluation.RemFuncion("@doble");
    EXPECT_EQ(File(), kFirst + "\"@SQ\",\"X^2\"\r\n");
    File() = "gone";
  }
  EXPECT_EQ(File(), kFirst + "\"@SQ\",\"X^2\"\r\n");
}

TEST_F(FunctionFileTest, TwoProgramsKeepEachOthersChanges) {
  File() = kFirst + "\"@A\",\"X\"\r\n\"@B\",\"X\"\r\n\"@C\",\"X\"\r\n";
  {
    EvaluationClass one(Options());
    EvaluationClass other(Options());
    one.NuevaFuncion("one", "x+1");
    other.NuevaFuncion("other", "x+2");
    one.RemFuncion("@a");
    other.ModiFuncion("@b", "x*9");
    EXPECT_EQ(Read(), "@B=X*9 @C=X @ONE=X+1 @OTHER=X+2 ");
    EXPECT_EQ(one.CuentaFuncion(), 3);  // of its own
  }
  // Neither end brings back what the other one had changed.
  EXPECT_EQ(Read(), "@B=X*9 @C=X @ONE=X+1 @OTHER=X+2 ");
  EvaluationClass late(Options());
  EvaluationClass(Options()).RemFuncion("@C");
  late.RemFuncion("@C");  // which isn't there any more
  EXPECT_EQ(Read(), "@B=X*9 @ONE=X+1 @OTHER=X+2 ");
}

TEST_F(FunctionFileTest, WithoutFilesNothingIsReadNorWritten) {
  EvaluationOptions options = Options();
  options.files = nullptr;
  EvaluationClass evaluation(options);
  evaluation.NuevaFuncion("b", "X");
  EXPECT_EQ(evaluation.CuentaFuncion(), 1);
  EXPECT_EQ(files_.writes, 0);
}

TEST_F(FunctionFileTest, ReadsWhatIsWhole) {
  const struct {
    std::string file;
    const char* functions;
  } cases[] = {
      {"", ""},
      {kFirst, ""},
      {"any\n\"@a\",\"x+1\"\n\"@B\",\"X\"", "@A=X+1 @B=X "},
      {kFirst + "\"@A\",\"Y+1\"\r\n\"@B\",\"X\"\r\n", "@A= @B=X "},
      {kFirst + "\"@A\",\"X\"\r\n\"@a\",\"X+1\"\r\n", "@A=X "},
      {kFirst + "@A,X\r\n\"@B\"\r\n\"\r\n\"\"\r\n\r\n\"@C\",\"X\r\n\"@D\",\"X\"\r\n", "@D=X "},
      {kFirst + "@ABCDE,X\r\n\"@A\";\"X\"\r\n\"@BCD\r\n\"@D\",\"X\"\r\n", "@D=X "},
      {kFirst + "\"@\xFF\",\"X+\xC3\"\r\n\"@گ\",\"X\"\r\n", "@\xFF=X+\xC3 @گ=X "},
  };
  for (const auto& c : cases) {
    File() = c.file;
    EXPECT_EQ(Read(), c.functions) << c.file;
  }
}

TEST_F(FunctionFileTest, ANameWithALineEndStaysOneLine) {
  EvaluationClass(Options()).NuevaFuncion("a\r\nb", "X+\n1");
  EXPECT_EQ(Read(), "@A  B=X+ 1 ");
}

TEST_F(FunctionFileTest, AFileThatCannotBeReadIsNotWritten) {
  File() = kFirst + "\"@A\",\"X\"\r\n";
  files_.fail_reads = true;
  { EvaluationClass(Options()).NuevaFuncion("b", "X"); }
  files_.fail_reads = false;
  EXPECT_EQ(Read(), "@A=X ");
}

TEST_F(FunctionFileTest, AFileThatCannotBeWrittenIsNoFault) {
  files_.fail_writes = true;
  EvaluationClass evaluation(Options());
  evaluation.NuevaFuncion("b", "X");
  EXPECT_EQ(evaluation.CErr(), 0);
  EXPECT_EQ(evaluation.CuentaFuncion(), 1);
}

}  // namespace
}  // namespace vorek
