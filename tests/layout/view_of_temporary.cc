// Not part of any program: must not compile with clang where DANGLING is defined.
#include <string_view>

#include "base/characters.h"
#include "base/short_text.h"

using customsconv::ShortText;

ShortText Code();

std::size_t SizeOfCode() {
#ifdef DANGLING
  const std::string_view code = customsconv::Trim(Code());
#else
  const ShortText whole = Code();
  const std::string_view code = customsconv::Trim(whole);
#endif
  return code.size();
}
