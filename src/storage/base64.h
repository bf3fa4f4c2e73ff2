#ifndef CUSTOMSCONV_STORAGE_BASE64_H_
#define CUSTOMSCONV_STORAGE_BASE64_H_

#include <string>

namespace customsconv {

// Decodes `text` in place, skipping characters outside the alphabet. False for a
// misplaced "="; the text then holds the bytes decoded so far and undecoded rest.
[[nodiscard]] bool Base64DecodeInPlace(std::string& text);

}  // namespace customsconv

#endif  // CUSTOMSCONV_STORAGE_BASE64_H_
