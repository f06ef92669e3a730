#include "eval/evaluation_code.h"

#include <array>
#include <cstddef>

namespace vorek::evaluation_code {

std::string_view Description(std::int16_t code) {
  static constexpr std::string_view kStructure = "فرمول فوق داراي ساختار اشتباه ميباشد";
  static constexpr std::array<std::string_view, 13> kTexts = {
      "عملگر وجود ندارد.",
      "حروف وارد شده صحيح نيست.",
      "متغير وجود ندارد.",
      "محتواي متغير خالي است.",
      kStructure,
      "اشكال در عبارت رياضي",
      "اشكال در پارانتزها وجود دارد.",
      "يك متغير با نام فوق وجود دارد",
      kStructure,
      "اشكال در ورودي تابع",
      "تعريف تابع صحيح نيست",
      "تابع موجود نيست.",
      "اشكال در تابع",
  };
  const auto index = static_cast<std::size_t>(code);
  return index < kTexts.size() ? kTexts[index] : std::string_view();
}

}  // namespace vorek::evaluation_code
