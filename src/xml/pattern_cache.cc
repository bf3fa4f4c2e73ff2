#include "xml/pattern_cache.h"

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

  pcre2_code* code = nullptr;  // null when the expression is no expression
  pcre2_match_data* match = nullptr;
};

Pattern::Pattern(std::string_view expression) : compiled_(std::make_unique<Compiled>(expression)) {}

Pattern::~Pattern() = default;

bool Pattern::FoundIn(std::string_view text) const {
  if (compiled_->match == nullptr) return false;
  return pcre2_match(compiled_->code, CodeUnits(text), text.size(), 0, 0, compiled_->match,
                     nullptr) >= 0;
}

const Pattern& PatternCache::Get(const std::string& expression) {
  return patterns_.try_emplace(expression, expression).first->second;
}

}  // namespace customsconv
