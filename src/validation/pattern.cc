#include "validation/pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cassert>

namespace customsconv {

class Pattern::Code {
 public:
  explicit Code(const char* expression) {
    int error = 0;
    PCRE2_SIZE place = 0;
    code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(expression), PCRE2_ZERO_TERMINATED, 0,
                          &error, &place, nullptr);
    assert(code_ != nullptr);
    match_ = pcre2_match_data_create(1, nullptr);
  }
  ~Code() {
    pcre2_match_data_free(match_);
    pcre2_code_free(code_);
  }
  Code(const Code&) = delete;
  Code& operator=(const Code&) = delete;

  struct Match {
    std::size_t from;
    std::size_t to;
  };
  // The first match at or behind `start`; false when there is none.
  bool Find(std::string_view text, std::size_t start, Match& match) const {
    const int found = pcre2_match(code_, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(),
                                  start, 0, match_, nullptr);
    if (found < 0) return false;
    const PCRE2_SIZE* place = pcre2_get_ovector_pointer(match_);
    match = {place[0], place[1]};
    return true;
  }

 private:
  pcre2_code* code_ = nullptr;
  pcre2_match_data* match_ = nullptr;
};

Pattern::Pattern(const char* expression) : code_(std::make_unique<Code>(expression)) {}
Pattern::~Pattern() = default;

std::string Pattern::RemoveAll(std::string_view text) const {
  std::string kept;
  std::size_t position = 0;
  Code::Match match{};
  while (position < text.size() && code_->Find(text, position, match) && match.to > match.from) {
    kept.append(text.substr(position, match.from - position));
    position = match.to;
  }
  return kept.append(text.substr(position));
}

}  // namespace customsconv
