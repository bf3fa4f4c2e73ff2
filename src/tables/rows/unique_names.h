#ifndef CUSTOMSCONV_TABLES_ROWS_UNIQUE_NAMES_H_
#define CUSTOMSCONV_TABLES_ROWS_UNIQUE_NAMES_H_

#include <string>
#include <string_view>
#include <unordered_set>

#include "base/letter_case.h"

namespace customsconv {

// Gives names (code page 1251) that stay different for programs that do not mind letter case: the
// second NAIM becomes NAIM_2. A name that is empty becomes "_".
class UniqueNames {
 public:
  [[nodiscard]] std::string Of(std::string_view name) {
    const std::string wanted(name.empty() ? "_" : name);
    std::string given = wanted;
    for (int number = 2; !given_.insert(given).second; ++number) {
      given = wanted + "_" + std::to_string(number);
    }
    return given;
  }

 private:
  std::unordered_set<std::string, NoCaseHash, NoCaseEqual> given_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_UNIQUE_NAMES_H_
