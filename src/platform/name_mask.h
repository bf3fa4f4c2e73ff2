#ifndef CUSTOMSCONV_PLATFORM_NAME_MASK_H_
#define CUSTOMSCONV_PLATFORM_NAME_MASK_H_

#include <string_view>

namespace customsconv {

// Whether a file name (code page 1251, without folder) matches `mask`: "*"
// stands for any characters, "?" for one; letter case does not matter. "*.*" matches
// names without a dot too.
[[nodiscard]] bool MatchesMask(std::string_view name, std::string_view mask);

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_NAME_MASK_H_
