// The system's error numbers in the words of messages.

#include "platform/posix/system_error.h"

#include <cerrno>
#include <system_error>

#include "base/cp1251_literal.h"

namespace customsconv::posix {

std::string CauseOf(int error) {
  constexpr struct {
    int error;
    std::string_view cause;
  } kCauses[] = {
      {ENOENT, "нет такого файла или папки"_cp1251},
      {ENOTDIR, "часть пути - не папка"_cp1251},
      {EISDIR, "это папка"_cp1251},
      {EACCES, "нет прав доступа"_cp1251},
      {EPERM, "нет прав доступа"_cp1251},
      {EROFS, "диск доступен только для чтения"_cp1251},
      {ENAMETOOLONG, "слишком длинное имя"_cp1251},
      {ENOSPC, "на диске нет места"_cp1251},
      {EDQUOT, "на диске нет места"_cp1251},
      {EFBIG, "файл слишком велик"_cp1251},
      {ENOMEM, "не хватает памяти"_cp1251},
      {EBUSY, "файл занят"_cp1251},
      {EIO, "ошибка ввода-вывода"_cp1251},
  };
  for (const auto& known : kCauses) {
    if (known.error == error) return std::string(known.cause);
  }
  return std::generic_category().message(error);
}

FileError SystemFileError(FileError::Kind kind, std::string_view path, int error) {
  if (kind == FileError::Kind::kOpen && error == ENOENT) {
    return FileError(FileError::Kind::kMissing, path, "");  // the message itself says it
  }
  if (kind == FileError::Kind::kOpen && error == ENOTDIR) kind = FileError::Kind::kMissing;
  return FileError(kind, path, CauseOf(error));
}

}  // namespace customsconv::posix
