// Russian messages are the system's own. English ones are those that host programs know from the
// run-time library they were written for.

#include "base/error.h"

#include "base/cp1251_literal.h"
#include "base/unicode.h"

namespace customsconv {
namespace {

std::string FileMessage(FileError::Kind kind, std::string_view path, std::string_view cause) {
  std::string_view action;
  switch (kind) {
    case FileError::Kind::kMissing:
      action = "Не найден файл "_cp1251;
      break;
    case FileError::Kind::kOpen:
      action = "Не могу открыть файл "_cp1251;
      break;
    case FileError::Kind::kCreate:
      action = "Не могу создать файл "_cp1251;
      break;
    case FileError::Kind::kRead:
      action = "Не могу прочитать файл "_cp1251;
      break;
    case FileError::Kind::kWrite:
      action = "Не могу записать файл "_cp1251;
      break;
  }
  std::string message(action);
  message.append(path);
  if (!cause.empty()) message.append(": ").append(cause);
  return message;
}

}  // namespace

Error::Error(std::string text_1251) : Error(std::move(text_1251), {}) {}

Error::Error(std::string text_1251, std::string told_1251)
    : text_(std::move(text_1251)), told_(std::move(told_1251)), utf8_(Utf8FromWin(text_)) {}

ListIndexError::ListIndexError(long long index)
    : Error("List index out of bounds (" + std::to_string(index) + ")") {}

ConversionError::ConversionError(std::string_view text)
    : Error("'" + std::string(text) + "' is not a valid integer value") {}

FileError::FileError(Kind kind, std::string_view path, std::string_view cause_1251)
    : Error(FileMessage(kind, path, cause_1251)), kind_(kind), path_(path) {}

}  // namespace customsconv
