// Catches a field that a screen calls by another one's label.
#include "widgets/field_name.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/form.h"

namespace vorek {
namespace {

struct Place {
  std::int32_t left;
  std::int32_t top;
  std::int32_t width = 1000;
  const char* caption = "a";
  const char* tag = "";
};

// A field of 2000 x 300 twips at 3000, 1000 with two labels of 300 beside it, "" for none of them.
std::string Named(const Place& first, const Place& second, const char* tag = "") {
  Frame frame(nullptr, "frame");
  frame.SetCaption(" frame ");
  TextBox field(&frame, "txt");
  field.Move(3000, 1000, 2000, 300);
  field.SetTag(tag);
  ControlArray<Label> labels(frame, "lbl");
  for (const Place& place : {first, second}) {
    Label& label = labels.Load();
    label.Move(place.left, place.top, place.width, 300);
    label.SetCaption(place.caption);
    label.SetTag(place.tag);
  }
  return FieldName(field);
}

TEST(FieldName, IsThatOfTheLabelWhichAPersonWouldRead) {
  constexpr Place kAt{5100, 1000, 1000, " right "};
  constexpr Place kLeft{1900, 1000, 1000, "left"};
  constexpr Place kAbove{3500, 600, 1000, "above"};
  const struct {
    Place first;
    Place second;
    const char* name;
  } cases[] = {{kAt, kLeft, "right"},
               {kLeft, kAt, "right"},
               {kLeft, kAbove, "left"},
               {kAbove, kAt, "right"},
               // That of the field to the left stands nearer, but at the wrong side.
               {{1940, 1000, 1000, "left"}, kAt, "right"},
               {{1990, 1000, 1000, "left"}, kAt, "left"},
               // A line below isn't the field's, nor is a label that says nothing.
               {{5100, 1400}, {3000, 1160}, "frame"},
               {{5100, 1000, 1000, "  "}, kAbove, "above"},
               {{5100, 1150}, kAbove, "a"},
               {{5100, 1151, 1000, "b"}, kAbove, "above"},
               {{3000, 200, 1000, "far"}, kAbove, "above"},
               {kAbove, {3000, 600, 1000, "as near"}, "above"}};
  for (const auto& c : cases) {
    EXPECT_EQ(Named(c.first, c.second), c.name) << c.first.caption << c.second.caption;
  }
}

TEST(FieldName, IsThatOfTheLabelWithItsTag) {
  const Place near{5100, 1000, 1000, "near", "1"};
  EXPECT_EQ(Named(near, {0, 9000, 1000, " tied ", "2"}, "2"), "tied");
  EXPECT_EQ(Named(near, {0, 9000, 1000, " ", "2"}, "2"), "near");
  EXPECT_EQ(Named({5100, 1000, 1000, "near", ""}, {0, 9000, 1000, "b", ""}), "near");
  TextBox alone(nullptr, "txt");
  alone.SetTag("1");
  EXPECT_EQ(FieldName(alone), "");
  EXPECT_EQ(TiedLabel(alone), nullptr);
  Frame frame(nullptr, "frame");
  Label label(&frame, "lbl");
  label.SetTag("1");
  EXPECT_EQ(TiedLabel(label), nullptr) << "a label isn't tied to itself";
}

}  // namespace
}  // namespace vorek
