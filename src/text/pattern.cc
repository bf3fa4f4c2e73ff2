// The expressions are PCRE2's, compiled for single bytes: code page 1251 needs no more.

#include "text/pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstddef>

namespace customsconv {
namespace {

PCRE2_SPTR CodeUnits(std::string_view text) { return reinterpret_cast<PCRE2_SPTR>(text.data()); }

}  // namespace

struct Pattern::Compiled {
  explicit Compiled(std::string_view expression) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    code = pcre2_compile(CodeUnits(expression), expression.size(), 0, &error, &offset, nullptr);
    if (code != nullptr) match = pcre2_match_data_create_from_pattern(code, nullptr);
  }
  ~Compiled() {
    pcre2_match_data_free(match);
    pcre2_code_free(code);
  }
  Compiled(const Compiled&) = delete;
  Compiled& operator=(const Compiled&) = delete;

  // True when there is a match at or behind `start`; MatchStart and MatchEnd tell where.
  [[nodiscard]] bool Find(std::string_view text, std::size_t start) const {
    return match != nullptr &&
           pcre2_match(code, CodeUnits(text), text.size(), start, 0, match, nullptr) >= 0;
  }
  [[nodiscard]] std::size_t MatchStart() const { return pcre2_get_ovector_pointer(match)[0]; }
  [[nodiscard]] std::size_t MatchEnd() const { return pcre2_get_ovector_pointer(match)[1]; }

  pcre2_code* code = nullptr;  // null when the expression is no expression
  pcre2_match_data* match = nullptr;
};

Pattern::Pattern(std::string_view expression) : compiled_(std::make_unique<Compiled>(expression)) {}

Pattern::~Pattern() = default;

bool Pattern::FoundIn(std::string_view text) const { return compiled_->Find(text, 0); }

std::string Pattern::ReplaceAll(std::string_view text, std::string_view replacement) const {
  std::string result;
  std::size_t position = 0;
  while (compiled_->Find(text, position) && compiled_->MatchEnd() > compiled_->MatchStart()) {
    result.append(text.substr(position, compiled_->MatchStart() - position)).append(replacement);
    position = compiled_->MatchEnd();
  }
  return result.append(text.substr(position));
}

}  // namespace customsconv
