#include <gtest/gtest.h>

#include "vorek/error.h"
#include "widgets/vorek_currency.h"
#include "widgets/vorek_time.h"

namespace vorek {
namespace {

TEST(VorekTimeTest, TakesHoursAndMinutes) {
  const struct {
    const char* typed;
    int time;      // -1: refused
    int duration;  // -1: refused
  } cases[] = {{"8:30", 510, 510},  {"0830", 510, 49800},      {"830", 510, 49800},
               {"90", -1, 5400},    {"100", 60, 6000},         {"8:5", 485, 485},
               {"8.30", 510, 510},  {"8/30", 510, 510},        {"8 30", 510, 510},
               {"8-30", 510, 510},  {"8.5", -1, -1},           {"8.", -1, -1},
               {"٠٨:٣٠", 510, 510}, {"12345", -1, 740700},     {"8", 480, 480},
               {"۰۸:۳۰", 510, 510}, {"\u200F8:30", 510, 510},  {"23:59", 1439, 1439},
               {"24:00", -1, 1440}, {"125:30", -1, 7530},      {"8:60", -1, -1},
               {"8:", -1, -1},      {":30", -1, -1},           {"-8:30", -1, -1},
               {"8:30:10", -1, -1}, {"99999:59", -1, 5999999}, {"100000:00", -1, -1},
               {"x", -1, -1}};
  for (const auto& c : cases) {
    VorekTime time(nullptr, "tim");
    time.Type(c.typed);
    EXPECT_EQ(time.Refuses(), c.time < 0) << c.typed;
    EXPECT_EQ(time.GetTimeValue(), std::max(c.time, 0)) << c.typed;
    EXPECT_EQ(time.IsNull(), c.time < 0) << c.typed;
    VorekDuration duration(nullptr, "dur");
    duration.Type(c.typed);
    EXPECT_EQ(duration.Refuses(), c.duration < 0) << c.typed;
    EXPECT_EQ(duration.GetDurationValue(), std::max(c.duration, 0)) << c.typed;
  }
  VorekTime time(nullptr, "tim");
  int changes = 0;
  time.on_change = [&] { ++changes; };
  time.Type("0:00");
  EXPECT_FALSE(time.IsNull());
  EXPECT_EQ(time.GetTimeFormatted(), "00:00");
  time.Type("");
  EXPECT_TRUE(time.IsNull());
  EXPECT_EQ(time.GetTimeFormatted(), "");
  EXPECT_EQ(changes, 2);
}

TEST(VorekCurrencyTest, TakesAmountsExactly) {
  const struct {
    const char* typed;
    const char* value;  // null: refused
    const char* text;
  } cases[] = {{"1234567", "1234567", "1/234/567"},
               {"1/234/567.50", "1234567.5", "1/234/567.5"},
               {"1,234", "1234", "1/234"},
               {"۱۲۳۴٫۵", "1234.5", "1/234.5"},
               {"-500", "-500", "(500)"},
               {"(500)", "-500", "(500)"},
               {".5", "0.5", "0.5"},
               {"922337203685477.5807", "922337203685477.5807", "922/337/203/685/477.5807"},
               {"922337203685477.5808", nullptr, ""},
               {"9223372036854776", nullptr, ""},
               {"0.00001", nullptr, ""},
               {"1e5", nullptr, ""},
               {"5-", nullptr, ""},
               {".", nullptr, ""},
               {"/", nullptr, ""},
               {"  ", "0", ""}};
  for (const auto& c : cases) {
    VorekCurrency currency(nullptr, "acr");
    currency.Type(c.typed);
    EXPECT_EQ(currency.Refuses(), c.value == nullptr) << c.typed;
    EXPECT_EQ(currency.Value(), c.value == nullptr ? "0" : c.value) << c.typed;
    EXPECT_EQ(currency.Text(), c.text) << c.typed;
    // What it shows reads back as what it holds.
    const std::string value = currency.Value();
    currency.SetText(currency.Text());
    EXPECT_EQ(currency.Value(), value) << c.typed;
  }
}

}  // namespace
}  // namespace vorek
