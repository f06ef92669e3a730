#ifndef VOREK_EVAL_FORMULA_TEMPLATE_H_
#define VOREK_EVAL_FORMULA_TEMPLATE_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// A formula with places that numbers are put into as plain text, so that (, place 0, +, place 1, )
// with 3 and -2 is the formula (3+-2). A number may have several places.
class FormulaTemplate {
 public:
  void AddText(std::string_view text);
  // slot is the index of the number that goes here.
  void AddPlace(std::size_t slot);

  // The formula for these numbers; values holds one for each slot.
  std::string Fill(std::span<const double> values) const;

  // One part of it: a text, or else a place.
  struct Part {
    std::string text;
    std::size_t slot = 0;  // counts if the text is empty
  };
  const std::vector<Part>& Parts() const { return parts_; }
  // One more than the highest slot.
  std::size_t Slots() const { return slots_; }

 private:
  std::vector<Part> parts_;
  std::size_t slots_ = 0;
};

}  // namespace vorek

#endif  // VOREK_EVAL_FORMULA_TEMPLATE_H_
