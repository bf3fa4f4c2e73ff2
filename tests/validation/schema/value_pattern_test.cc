#include "validation/schema/value_pattern.h"

#include <gtest/gtest.h>
#include <libxml/xmlregexp.h>

#include <memory>

#include "support/text.h"
#include "text/pattern.h"

namespace customsconv::schema {
namespace {

constexpr int kNoLimit = -1;

TEST(ValuePattern, SaysTheSameInPerlAndKnowsTheLongestValue) {
  const struct {
    const char* schema;
    const char* perl;
    int most;
  } cases[] = {
      {"\\d{2}", "[0-9]{2}", 2},
      {"[A-Z]{2}|[0]{2}|\\d{5,6}", "[A-Z]{2}|0{2}|[0-9]{5,6}", 6},
      {"(\\d{3}/[А-ЯЁ]{2}-\\d)?", "([0-9]{3}/[ЁА-Я]{2}\\-[0-9])?", 8},
      {"R(\\.[A-Z]{2}){0,2}\\.", "R(\\.[A-Z]{2}){0,2}\\.", 8},
      {"a+b*", "a+b*", kNoLimit},
      {"((a|b){2}c){3,}", "((a|b){2}c){3,}", kNoLimit},
      {"^$", "\\^\\$", 2},  // letters there
      {"[^a-z\\]]", "[^\\]a-z]", 1},
      {"\\D", "[^0-9]", 1},
      {"\"{1}\\{", "\\x22\\x7B", 2},  // a catalogue line could not hold them
      {"[+\\-]?[,.-]", "[\\+\\-]?[,-\\.]", 2},
      {"", "", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.schema);
    const auto pattern = ValuePattern::Parse(c.schema);
    ASSERT_TRUE(pattern);
    EXPECT_EQ(pattern->MostCharacters().value_or(kNoLimit), c.most);
    EXPECT_EQ(Utf8(pattern->PerlExpression()), c.perl);
  }
}

TEST(ValuePattern, RefusesWhatItDoesNotUnderstand) {
  for (const char* text : {"(", ")", "[", "[]", "a{", "a{2", "a{3,2}", "*", "[z-a]", "\\", "\\p{L}",
                           "\\w", "\\i", "[a-z-[b]]", "日本", "a{,2}"}) {
    EXPECT_FALSE(ValuePattern::Parse(text)) << text;
  }
}

// All texts of up to four letters of a small alphabet, against the expressions of the library that
// checks documents.
TEST(ValuePattern, MatchesWhatAnotherLibraryMatches) {
  constexpr std::string_view kAlphabet = "a1.-";
  for (const char* text : {"a|1", "(a|1){2}", "a?1*", "[^a]{1,2}", "[a-z.]+", "\\d\\.|\\D-", ".",
                           "(a1)?(\\.|-)*", "aa|(1|a-){1,2}", "(a?1){2,3}", "[\\-a]|\\S1"}) {
    SCOPED_TRACE(text);
    const auto pattern = ValuePattern::Parse(text);
    ASSERT_TRUE(pattern);
    const Pattern perl("^(" + pattern->PerlExpression() + ")$");
    const std::unique_ptr<xmlRegexp, decltype(&xmlRegFreeRegexp)> other(
        xmlRegexpCompile(BAD_CAST text), &xmlRegFreeRegexp);
    ASSERT_TRUE(other);
    for (int number = 0; number < 5 * 5 * 5 * 5; ++number) {
      std::string value;
      for (int rest = number; rest > 0; rest /= 5) {
        if (rest % 5 > 0) value += kAlphabet[static_cast<std::size_t>(rest % 5 - 1)];
      }
      EXPECT_EQ(perl.FoundIn(value), xmlRegexpExec(other.get(), BAD_CAST value.c_str()) == 1) << "'" << value << "'";
    }
  }
}

}  // namespace
}  // namespace customsconv::schema
