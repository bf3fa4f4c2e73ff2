#include "base/error.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

TEST(Error, CarriesTheMessageIn1251AndShowsItInUtf8) {
  const std::string path = Win("C:\\Декларации\\Ёж.DBF");
  using Kind = FileError::Kind;
  const std::pair<Error, const char*> cases[] = {
      {Error(Win("Нет данных №5")), "Нет данных №5"},
      {ListIndexError(-1), "List index out of bounds (-1)"},
      {ConversionError(Win("12ш")), "'12ш' is not a valid integer value"},
      {SilentAbort(), ""},
      {FileError(Kind::kMissing, path, ""), "Не найден файл C:\\Декларации\\Ёж.DBF"},
      {FileError(Kind::kOpen, path, "is a folder"),
       "Не могу открыть файл C:\\Декларации\\Ёж.DBF: is a folder"},
      {FileError(Kind::kCreate, "X", "full"), "Не могу создать файл X: full"},
      {FileError(Kind::kRead, "X", "full"), "Не могу прочитать файл X: full"},
      {FileError(Kind::kWrite, "X", "full"), "Не могу записать файл X: full"}};
  for (const auto& [error, expected] : cases) {
    EXPECT_STREQ(error.what(), expected);
    EXPECT_EQ(error.text(), Win(expected));
  }
}

}  // namespace
}  // namespace customsconv
