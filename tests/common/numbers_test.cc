#include "common/numbers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

#include "support/text.h"

namespace customsconv {
namespace {

TEST(Numbers, FirstNumberOfAText) {
  const struct {
    std::string_view text;
    double number;
  } cases[] = {
      {"abc 12.50 kg", 12.5}, {"-7", -7}, {"x-7", 7}, {" -7", 7}, {"", 0}, {".5", 5}, {"5.", 5},
      {"1.2.3", 1.2},         {"--3", 3},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberFromText(c.text), c.number) << c.text;
  EXPECT_EQ(NumberFromText(std::string(254, ' ') + "12"), 1);  // short text ends in between
}

TEST(Numbers, IntegerLiterals) {
  const struct {
    std::string_view text;
    bool ok;
    std::int32_t value;  // or the position of the first bad character
  } cases[] = {
      {"12", true, 12},
      {"  -12 \t", true, -12},
      {"$ff", true, 255},
      {"0X10", true, 16},
      {"$FFFFFFFF", true, -1},
      {"2147483647", true, 2147483647},
      {"-2147483648", true, std::numeric_limits<std::int32_t>::min()},
      {"2147483648", false, 10},
      {"$100000000", false, 10},
      {"", false, 1},
      {"-", false, 2},
      {"12a", false, 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::int32_t value = 77;
    EXPECT_EQ(TextToInt(c.text, value), c.ok);
    EXPECT_EQ(value, c.value);
    EXPECT_EQ(IntOr(c.text, -9), c.ok ? c.value : -9);
  }
  EXPECT_EQ(ErrorOf([] { (void)StrictInt("1z"); }), "'1z' is not a valid integer value");
}

TEST(Numbers, RealLiterals) {
  const struct {
    std::string_view text;
    bool ok;
    double value;  // or the position of the first bad character
  } cases[] = {{"12.5", true, 12.5}, {" -.5 ", true, -0.5},  {"5.", true, 5},
               {"+1e3", true, 1000}, {"1.5E-1", true, 0.15}, {"1e-999999999999999999999", true, 0},
               {"0e99999", true, 0}, {"", false, 1},         {".", false, 2},
               {"1,5", false, 2},    {"1.2.3", false, 4},    {"1e", false, 3},
               {"1e+", false, 4},    {"1e400", false, 5},    {"inf", false, 1},
               {"nan", false, 1},    {"0x10", false, 2},     {"--1", false, 2}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    double value = 77;
    EXPECT_EQ(TextToFloat(c.text, value), c.ok);
    EXPECT_EQ(value, c.value);
  }
}

TEST(Numbers, HexadecimalText) {
  EXPECT_EQ(HexToInt("$1aF"), 0x1AFU);
  EXPECT_EQ(HexToInt("#ff"), 0xFFU);
  EXPECT_EQ(HexToInt("FFFFFFFF1"), 0xFFFFFFF1U);
  for (const char* text : {"", "$", "#$1", "1g", "-1", " 1"}) EXPECT_EQ(HexToInt(text), 0U) << text;
}

TEST(Numbers, FlagsInWords) {
  for (const char* text : {"1", " y ", "Yes", "true", "-1", " да ", "ДА"}) {
    EXPECT_TRUE(StrToBoolRu(Win(text))) << text;
  }
  for (const char* text : {"", "2", "0", "да.", "on", "нет", "+1"}) {
    EXPECT_FALSE(StrToBoolRu(Win(text))) << text;
  }
}

TEST(Numbers, RoundingWorksOnTheDecimalDigits) {
  const struct {
    std::string_view text;
    int decimals;
    std::string_view rounded;
  } cases[] = {{"2.675", 2, "2.68"},
               {"2.6749999999999999999999", 2, "2.67"},
               {"0.5", 0, "1"},
               {"1.5", -3, "2"},
               {"-0.001", 2, "0.00"},
               {"-0.005", 2, "-0.01"},
               {"99.995", 2, "100.00"},
               {" 007.1 ", 3, "7.100"},
               {"12345678901234567890.125", 2, "12345678901234567890.13"},
               {"12345e-4", 3, "1.235"},
               {"5e-3", 2, "0.01"},
               {"1e-999999999999999999999", 2, "0.00"},
               {"1e999999999999999999999", 2, "0.00"},  // no number that could be held
               {"0e999999999999999999999", 1, "0.0"},
               {"abc", 2, "0.00"}};
  for (const auto& c : cases) EXPECT_EQ(RoundDecimalText(c.text, c.decimals), c.rounded) << c.text;
}

TEST(Numbers, AtMostSixDecimals) {
  const struct {
    std::string_view text;
    std::string_view written;
  } cases[] = {{"12.5000", "12.5"}, {"100", "100"},           {"0.0000005", "0.000001"},
               {"-0.0000004", "0"}, {"1.9999995", "2"},       {"1e-5", "0.00001"},
               {"0", "0"},          {"1.1234564", "1.123456"}};
  for (const auto& c : cases) EXPECT_EQ(UpToSixDecimals(c.text), c.written) << c.text;
}

TEST(Numbers, ComputedNumbersReadBackTheSame) {
  const struct {
    double value;
    std::string_view text;
  } cases[] = {{0, "0"},
               {-0.0, "0"},
               {0.1, "0.1"},
               {100000, "100000"},
               {-2.5, "-2.5"},
               {1e20, "1e+20"},
               {0.1 + 0.2, "0.30000000000000004"},
               {999999999999999, "999999999999999"}};
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
  for (const double value : {1e-300, 123456.789, 2.0 / 3.0, 9007199254740993.0, -1.7e308}) {
    double read = 0;
    EXPECT_TRUE(TextToFloat(NumberText(value), read));
    EXPECT_EQ(read, value);
  }
  EXPECT_EQ(UpToSixDecimals(NumberText(std::numeric_limits<double>::infinity())), "0");
}

}  // namespace
}  // namespace customsconv
