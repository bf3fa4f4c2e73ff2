// Masks of file names, matched by going back to the last "*" when the rest does not fit.

#include "platform/name_mask.h"

#include <cstddef>

#include "base/letter_case.h"

namespace customsconv {

bool MatchesMask(std::string_view name, std::string_view mask) {
  if (mask == "*.*") return true;
  std::size_t n = 0;
  std::size_t m = 0;
  std::size_t star = std::string_view::npos;  // where to go back to, and
  std::size_t star_name = 0;                  // the name's place it then tries
  while (n < name.size()) {
    if (m < mask.size() && mask[m] == '*') {
      star = m++;
      star_name = n;
    } else if (m < mask.size() &&
               (mask[m] == '?' || UpperCaseChar(mask[m]) == UpperCaseChar(name[n]))) {
      ++m;
      ++n;
    } else if (star != std::string_view::npos) {
      m = star + 1;
      n = ++star_name;
    } else {
      return false;
    }
  }
  while (m < mask.size() && mask[m] == '*') ++m;
  return m == mask.size();
}

}  // namespace customsconv
