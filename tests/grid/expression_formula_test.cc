#include "grid/expression_formula.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vorek {
namespace {

constexpr std::int32_t kColumns = 24;

double Read(ColumnReference reference) {
  return reference.above ? -reference.column - 0.5 : reference.column * 10;
}

// The formula below the first row by its template; "-" if it has none.
std::string ByTemplate(const std::string& formula,
                       const std::function<double(ColumnReference)>& read,
                       std::int32_t columns = kColumns) {
  const std::optional<ReferenceTemplate> found = FindReferences(formula, columns);
  if (!found) return "-";
  std::vector<double> values;
  for (const ColumnReference& reference : found->references) values.push_back(read(reference));
  return found->formula.Fill(values);
}

TEST(ExpressionFormula, PutsNumbersForReferences) {
  const struct {
    const char* formula;
    const char* first;
    const char* general;
  } cases[] = {
      {"C3+P5", "30", "30+-5.5"},
      {"C2-P3", "20", "20--3.5"},
      {"P3", "", "-3.5"},
      {"C2+(P3)", "20+)", "20+(-3.5)"},
      {"P3)*2", ")*2", "-3.5)*2"},
      {"P)3*2", "*2", "P)3*2"},
      {"C12*C1-C2", "120*10-20", "120*10-20"},
      {"C24+C240", "204+2040", "204+2040"},  // no column 24: column 2 and a digit
      {"C05", "05", "05"},
      {"c5+p5", "c5+p5", "c5+p5"},
      {"@EXP(C1)*@COS(C2)", "@EXP(10)*@COS(20)", "@EXP(10)*@COS(20)"},
      {"-P1+C1/P1*P1-C1", "+10-10", "--1.5+10/-1.5*-1.5-10"},
      {"گ C1", "گ 10", "گ 10"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReplaceReferences(c.formula, kColumns, true, Read), c.first) << c.formula;
    EXPECT_EQ(ReplaceReferences(c.formula, kColumns, false, Read), c.general) << c.formula;
    EXPECT_EQ(ByTemplate(c.formula, Read), c.general) << c.formula;
  }
}

TEST(ExpressionFormula, AColumnIsOneSlot) {
  const std::optional<ReferenceTemplate> found = FindReferences("C5+C6*C5+P5", kColumns);
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->references, (std::vector<ColumnReference>{{5, false}, {6, false}, {5, true}}));
}

TEST(ExpressionFormula, ATemplateGivesWhatReplacingGives) {
  std::mt19937 random(3);
  const std::string characters = "CCCPPP00112234567899+-*/().@XE ";
  int templates = 0;
  for (int i = 0; i < 40000; ++i) {
    std::string formula;
    for (auto length = random() % 12; length > 0; --length) {
      formula += characters[random() % characters.size()];
    }
    const auto columns = static_cast<std::int32_t>(1 + random() % 30);
    std::vector<double> numbers(60);
    for (double& number : numbers) number = static_cast<double>(random() % 100) - 5;
    const auto read = [&](ColumnReference reference) {
      return numbers[static_cast<std::size_t>(reference.column) + (reference.above ? 30U : 0U)];
    };
    const std::string text = ByTemplate(formula, read, columns);
    if (text == "-") continue;
    ++templates;
    ASSERT_EQ(text, ReplaceReferences(formula, columns, false, read)) << formula << " " << columns;
  }
  EXPECT_GT(templates, 20000);
}

}  // namespace
}  // namespace vorek
