#ifndef CUSTOMSCONV_XML_PATTERN_CACHE_H_
#define CUSTOMSCONV_XML_PATTERN_CACHE_H_

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace customsconv {

// A Perl-compatible regular expression over code page 1251 text.
class Pattern {
 public:
  explicit Pattern(std::string_view expression);
  ~Pattern();
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  // It matches somewhere in `text`. One that does not compile, or gives up on a
  // text, matches nothing.
  [[nodiscard]] bool FoundIn(std::string_view text) const;

 private:
  struct Compiled;
  std::unique_ptr<Compiled> compiled_;
};

// Compiles each expression once, however many fields and values it is tried on.
class PatternCache {
 public:
  // Lives as long as the cache.
  [[nodiscard]] const Pattern& Get(const std::string& expression);

 private:
  std::unordered_map<std::string, Pattern> patterns_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_PATTERN_CACHE_H_
