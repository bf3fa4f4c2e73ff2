#include "base/cp1251_literal.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

TEST(Cp1251Literal, HoldsTheBytesThatTheConversionGives) {
  constexpr std::string_view kText =
      "Яя Ёё № «» § ° – — · ¤ ЄєЇїЎў \xC2\xA0 “”‘’„‚…•†‡‰€™ ©®±¶µ¬¦ ЂѓЉЊЌЋЏљњќћџЈјҐґЅѕІі abc~"_cp1251;
  EXPECT_EQ(kText, Win("Яя Ёё № «» § ° – — · ¤ ЄєЇїЎў \xC2\xA0 “”‘’„‚…•†‡‰€™ ©®±¶µ¬¦ "
                       "ЂѓЉЊЌЋЏљњќћџЈјҐґЅѕІі abc~"));
  static_assert("АЯая"_cp1251 == "\xC0\xDF\xE0\xFF");
  static_assert(""_cp1251.empty());
}

}  // namespace
}  // namespace customsconv
