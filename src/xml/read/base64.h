#ifndef CUSTOMSCONV_XML_READ_BASE64_H_
#define CUSTOMSCONV_XML_READ_BASE64_H_

#include <cstddef>
#include <string>

namespace customsconv {

// Binary content as XML carries it:
//
//   std::string text = "TWFu\r\nTWE=";
//   if (Base64DecodeInPlace(text)) …  // "ManMa"

// Decodes `text` in place, skipping characters outside the alphabet. False for a
// misplaced "="; the text then holds the bytes decoded so far and undecoded rest.
// `decoded_size` receives the number of decoded bytes, also then.
[[nodiscard]] bool Base64DecodeInPlace(std::string& text, std::size_t* decoded_size = nullptr);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_BASE64_H_
