#ifndef CUSTOMSCONV_TEXT_PATTERN_H_
#define CUSTOMSCONV_TEXT_PATTERN_H_

#include <memory>
#include <string>
#include <string_view>

namespace customsconv {

// A Perl-compatible regular expression over single-byte text, compiled once.
//
//   const Pattern digits("^[0-9]+$");
//   if (!digits.FoundIn(value)) …
//
// An expression that does not compile matches nothing.
class Pattern {
 public:
  explicit Pattern(std::string_view expression);
  ~Pattern();
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  // It matches somewhere in `text`. One that gives up on a text does not.
  [[nodiscard]] bool FoundIn(std::string_view text) const;
  // `text` with `replacement` in the place of each match (an empty match ends the search).
  [[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view replacement) const;

 private:
  struct Compiled;
  std::unique_ptr<Compiled> compiled_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_PATTERN_H_
