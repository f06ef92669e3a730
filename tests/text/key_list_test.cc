#include "text/key_list.h"

#include <gtest/gtest.h>

#include "text/key_value_file.h"

namespace vorek {
namespace {

TEST(KeyList, FindsWholeKeysOnly) {
  const struct {
    const char* list;
    const char* key;
    const char* value;
  } cases[] = {{"@11=5&@21=6", "@1", ""},   {"@1=5&@2=6", "@2", "6"},
               {"a=b=c&d=e", "a", "b=c"},   {"x=a&A=1", "a", "1"},
               {"x=a=9", "a", ""},          {"", "a", ""},
               {"a=&b=2", "a", ""},         {"@1='x&y'&@2=3", "@1", "'x"},
               {"x=1&ȺȺ=5&y=6", "ⱥⱥ", "5"}, {"ⱥ=5&x=1", "Ⱥ", "5"}};
  for (const auto& c : cases) EXPECT_EQ(getParameterValue(c.list, c.key), c.value) << c.list;
}

TEST(KeyList, SetsKeys) {
  std::string list;
  EXPECT_FALSE(setParameterValue(list, "@5", "1"));
  EXPECT_FALSE(setParameterValue(list, "@4", "2"));
  EXPECT_EQ(list, "@5=1&@4=2");
  EXPECT_TRUE(setParameterValue(list, "@5", "abc"));
  EXPECT_TRUE(setParameterValue(list, "@4", ""));
  EXPECT_EQ(list, "@5=abc&@4=");
}

TEST(KeyValueFile, BringsEveryTextBack) {
  const text::Sections sections = {{"", {{"a", "line\nline\r\\n"}, {"[k=]", "v=w"}}},
                                   {"Set]ting", {{"DialogPath", "C:\\پوشه"}, {"empty", ""}}}};
  EXPECT_EQ(text::ParseKeyValues(text::FormatKeyValues(sections)), sections);
  EXPECT_EQ(text::ParseKeyValues("junk\n[open\nk=v\r\n\\"), (text::Sections{{"", {{"k", "v"}}}}));
}

}  // namespace
}  // namespace vorek
