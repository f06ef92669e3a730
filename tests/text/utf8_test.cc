#include "text/utf8.h"

#include <gtest/gtest.h>

namespace vorek::text {
namespace {

TEST(Utf8, CountsAndCutsCodePoints) {
  EXPECT_EQ(Length("رديف"), 4U);
  EXPECT_EQ(Left("تاريخ اجرا", 5), "تاريخ");
  EXPECT_EQ(Mid("abcdef", 3, 2), "cd");
  EXPECT_EQ(Mid("رديف", 9), "");
  EXPECT_EQ(Right("مبلغ زمان", 4), "زمان");
  EXPECT_EQ(Length("a\xFF\xC3z"), 4U);
  EXPECT_EQ(ValidUtf8("a\xC3z"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(ValidUtf8("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Utf8, IgnoresCaseOfLettersThatHaveOne) {
  EXPECT_EQ(ReplaceIgnoreCase("exec SP as '' x AS ''", " as ''", ""), "exec SP x");
  EXPECT_EQ(ReplaceIgnoreCase("aaa", "AA", "b"), "ba");
  EXPECT_EQ(ReplaceIgnoreCase("Straße ÄÖ", "äö", "x"), "Straße x");
  EXPECT_EQ(ReplaceIgnoreCase("<userid> مشخصه كاربر", "مشخصه كاربر", "7"), "<userid> 7");
  EXPECT_EQ(FindIgnoreCase("Select From", "FROM", 3), 7U);
  EXPECT_EQ(FindIgnoreCase("-ABZ", "abz"), 1U);
  EXPECT_EQ(FindIgnoreCase("-abz", "zB"), std::string_view::npos);
  EXPECT_EQ(FindIgnoreCase("-z", "Z"), 1U);
  EXPECT_EQ(FindIgnoreCase("abc", "x"), std::string_view::npos);
  EXPECT_TRUE(EqualsIgnoreCase("ParentID", "PARENTID"));
  EXPECT_FALSE(EqualsIgnoreCase("ParentID2", "PARENTID"));
  EXPECT_TRUE(EndsWithIgnoreCase("xctime", "CTime"));
  EXPECT_EQ(ToUpper("aя"), "AЯ");
}

TEST(Utf8, TurnsLettersAsUnicodeDoes) {
  EXPECT_EQ(ToLower("ÀŸƎΩЏѢԱႠᲐḀẾⅫⒶＡ𐐀"), "àÿǝωџѣաⴀაḁếⅻⓐａ𐐨");
  EXPECT_EQ(ToUpper("àÿǝωџѣաⴀაḁếⅻⓐａ𐐨"), "ÀŸƎΩЏѢԱႠᲐḀẾⅫⒶＡ𐐀");
  // One that has no partner, two, or one of several letters stays.
  const std::string lonely = "ßıİςǅĸ×÷گچپژیکي٣";
  EXPECT_EQ(ToLower(lonely), lonely);
  EXPECT_EQ(ToUpper(lonely), lonely);
  for (char32_t c = 0; c < 0x20000; ++c) {
    std::string capital;
    AppendUtf8(capital, c);
    const char32_t small = ToLower(c);
    if (small == c) continue;
    std::string text;
    AppendUtf8(text, small);
    ASSERT_EQ(ToUpper(text), capital) << static_cast<unsigned>(c);
    ASSERT_EQ(ToLower(small), small) << static_cast<unsigned>(c);
  }
}

TEST(Utf8, MeasuresTerminalColumns) {
  EXPECT_EQ(DisplayWidth("رديف"), 4U);
  EXPECT_EQ(DisplayWidth("مبلغ\xE2\x80\x8C"), 4U);
  EXPECT_EQ(DisplayWidth("漢字"), 4U);
}

}  // namespace
}  // namespace vorek::text
