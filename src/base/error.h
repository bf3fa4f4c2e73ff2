#ifndef CUSTOMSCONV_BASE_ERROR_H_
#define CUSTOMSCONV_BASE_ERROR_H_

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "base/lifetime.h"

namespace customsconv {

// What is thrown here, one class for each cause that somebody treats apart from the others:
//
//   try {
//     text = files.Read(name);
//   } catch (const FileError& error) {
//     if (error.kind() != FileError::Kind::kMissing) throw;
//   }

// What ends an operation. The message is code page 1251 text (`text()`), as the
// host programs show it; `what()` gives the same message in UTF-8.
class Error : public std::exception {
 public:
  explicit Error(std::string text_1251);
  // `told_1251`: see told().
  Error(std::string text_1251, std::string told_1251);
  [[nodiscard]] const std::string& text() const noexcept CUSTOMSCONV_LIFETIME_BOUND {
    return text_;
  }
  [[nodiscard]] const char* what() const noexcept CUSTOMSCONV_LIFETIME_BOUND override {
    return utf8_.c_str();
  }
  // What a person at the command line is told: the message or, where the host programs' message
  // is a symptom only, the cause. Code page 1251.
  [[nodiscard]] const std::string& told() const noexcept CUSTOMSCONV_LIFETIME_BOUND {
    return told_.empty() ? text_ : told_;
  }

 private:
  std::string text_;
  std::string told_;
  std::string utf8_;
};

// An abort that carries no message: whoever catches it shows nothing, because
// the user has been told already or asked for it.
class SilentAbort : public Error {
 public:
  explicit SilentAbort(std::string told_1251 = {}) : Error("", std::move(told_1251)) {}
};

// An index beyond a list's end: "List index out of bounds (n)".
class ListIndexError : public Error {
 public:
  explicit ListIndexError(long long index);
};

// A text that must be an integer and is not: "'text' is not a valid integer value".
class ConversionError : public Error {
 public:
  explicit ConversionError(std::string_view text);
};

// A file that cannot be opened, created, read or written. The message names the
// file and the cause. `path` is the name as given, code page 1251.
class FileError : public Error {
 public:
  enum class Kind { kMissing, kOpen, kCreate, kRead, kWrite };
  FileError(Kind kind, std::string_view path, std::string_view cause_1251);
  [[nodiscard]] Kind kind() const noexcept { return kind_; }
  [[nodiscard]] const std::string& path() const noexcept CUSTOMSCONV_LIFETIME_BOUND {
    return path_;
  }

 private:
  Kind kind_;
  std::string path_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_ERROR_H_
