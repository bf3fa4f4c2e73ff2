#include "text/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/text.h"
#include "text/decimal_text.h"

namespace customsconv {
namespace {

using Texts = std::vector<std::pair<std::string_view, std::string_view>>;
using Numbers = std::vector<std::pair<std::string_view, double>>;

TEST(Numbers, FirstNumberOfAText) {
  const Numbers cases = {{"abc 12.50 kg", 12.5}, {"-7", -7}, {"x-7", 7}, {"", 0}, {"1.2.3", 1.2}};
  for (const auto& [text, number] : cases) EXPECT_EQ(NumberFromText(text), number) << text;
  EXPECT_EQ(NumberFromText(std::string(254, ' ') + "12"), 1);  // short text ends in between
}

TEST(Numbers, IntegerLiterals) {
  const Numbers good = {{"\r\n\t -12 \t", -12},     {"$ff", 255},      {"0X10", 16},
                        {"2147483647", 2147483647}, {"$FFFFFFFF", -1}, {"-$7F", -127}};
  const Numbers bad = {{"2147483648", 10}, {"$100000000", 10}, {"", 1},
                       {"-", 2},           {"12a", 3},         {"1.0", 2}};
  std::int32_t value = 0;
  for (const auto& [text, number] : good) EXPECT_EQ(StrictInt(text), number) << text;
  for (const auto& [text, position] : bad) {
    EXPECT_FALSE(TextToInt(text, value)) << text;
    EXPECT_EQ(value, position) << text;
  }
  EXPECT_EQ(ErrorOf([] { (void)StrictInt("1z"); }), "'1z' is not a valid integer value");
}

TEST(Numbers, RealLiterals) {
  const Numbers good = {{"\r\n\t -.5 \r\n", -0.5}, {"5.", 5},       {"+1e3", 1000},
                        {"1.5E-1", 0.15},          {"1e-99999", 0}, {"0e99999", 0}};
  const Numbers bad = {{"", 1},      {".", 2},   {"1,5", 2},  {"1.2.3", 4}, {"1e+", 4},
                       {"1e400", 5}, {"inf", 1}, {"0x10", 2}, {"--1", 2},   {"nan", 1}};
  double value = 0;
  for (const auto& [text, number] : good) {
    EXPECT_TRUE(TextToFloat(text, value) && value == number) << text;
  }
  for (const auto& [text, position] : bad) {
    EXPECT_TRUE(!TextToFloat(text, value) && value == position) << text;
  }
}

TEST(Numbers, HexadecimalTextAndFlags) {
  EXPECT_EQ(HexToInt("$1aF"), 0x1AFU);
  EXPECT_EQ(HexToInt("#FFFFFFFF1"), 0xFFFFFFF1U);
  for (const char* text : {"", "#$1", "1g", "-1", " 1"}) EXPECT_EQ(HexToInt(text), 0U) << text;
  for (const char* text : {"1", " y ", "Yes", "true", "-1", " да "}) {
    EXPECT_TRUE(StrToBoolRu(Win(text))) << text;
  }
  for (const char* text : {"", "2", "да.", "+1"}) EXPECT_FALSE(StrToBoolRu(Win(text))) << text;
}

TEST(Numbers, RoundingWorksOnTheDecimalDigits) {
  const Texts cents = {{"2.675", "2.68"},   {"99.995", "100.00"},   {"-0.001", "0.00"},
                       {"-0.005", "-0.01"}, {"\r\n 007\t", "7.00"}, {"12345e-4", "1.23"},
                       {"5e-3", "0.01"},    {"1.5e3", "1500.00"},   {"1e-99999", "0.00"},
                       {"abc", "0.00"},     {"1e99999", "0.00"},    {"0e99999", "0.00"}};
  const Texts up_to_six = {{"12.5000", "12.5"}, {"100", "100"},     {"5e-7", "0.000001"},
                           {"-0.0000004", "0"}, {"1.9999995", "2"}, {"1e-5", "0.00001"}};
  for (const auto& [text, rounded] : cents) EXPECT_EQ(RoundDecimalText(text, 2), rounded) << text;
  for (const auto& [text, written] : up_to_six) EXPECT_EQ(UpToSixDecimals(text), written) << text;
  EXPECT_EQ(RoundDecimalText("12345678901234567890.125", 2), "12345678901234567890.13");
  EXPECT_EQ(RoundDecimalText("-2.6749999999999999999999", 2), "-2.67");
  EXPECT_EQ(RoundDecimalText("9.5", 0), "10");
}

TEST(Numbers, ComputedNumbersReadBackTheSame) {
  EXPECT_EQ(NumberText(0.1L + 0.2L), "3.00000000000000000e-01");
  for (const double value : {1e-300, 123456.789, 2.0 / 3.0, 9007199254740993.0, -1.7e308}) {
    double read = 0;
    EXPECT_TRUE(TextToFloat(NumberText(value), read));
    EXPECT_EQ(read, value);
  }
  EXPECT_EQ(UpToSixDecimals(NumberText(std::numeric_limits<double>::infinity())), "0");
}

}  // namespace
}  // namespace customsconv
