#ifndef CUSTOMSCONV_VALIDATION_PATTERN_H_
#define CUSTOMSCONV_VALIDATION_PATTERN_H_

#include <memory>
#include <string>
#include <string_view>

namespace customsconv {

// A regular expression over single-byte text, compiled once.
class Pattern {
 public:
  // `expression` must compile.
  explicit Pattern(const char* expression);
  ~Pattern();
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  // `text` without any of its matches.
  [[nodiscard]] std::string RemoveAll(std::string_view text) const;

 private:
  class Code;
  std::unique_ptr<Code> code_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_PATTERN_H_
