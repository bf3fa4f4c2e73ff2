#ifndef CUSTOMSCONV_XML_WRITE_PATTERN_CACHE_H_
#define CUSTOMSCONV_XML_WRITE_PATTERN_CACHE_H_

#include <string>
#include <unordered_map>

#include "base/lifetime.h"
#include "text/pattern.h"

namespace customsconv {

// Compiles each expression once, however many fields and values it is tried on.
class PatternCache {
 public:
  // Lives as long as the cache.
  [[nodiscard]] const Pattern& Get(const std::string& expression) CUSTOMSCONV_LIFETIME_BOUND {
    return patterns_.try_emplace(expression, expression).first->second;
  }

 private:
  std::unordered_map<std::string, Pattern> patterns_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_PATTERN_CACHE_H_
