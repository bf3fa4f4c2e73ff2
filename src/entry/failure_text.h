#ifndef CUSTOMSCONV_ENTRY_FAILURE_TEXT_H_
#define CUSTOMSCONV_ENTRY_FAILURE_TEXT_H_

#include <exception>
#include <string>

#include "base/error.h"

namespace customsconv {

// The message of what ended a call: in code page 1251 when it is one of ours, as it comes when
// the language's library threw it (no memory).
[[nodiscard]] inline std::string FailureText(const std::exception& failure) {
  const auto* ours = dynamic_cast<const Error*>(&failure);
  return ours != nullptr ? ours->text() : failure.what();
}

// The same as those are told who run the command line.
[[nodiscard]] inline std::string ToldText(const std::exception& failure) {
  const auto* ours = dynamic_cast<const Error*>(&failure);
  return ours != nullptr ? ours->told() : failure.what();
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_FAILURE_TEXT_H_
