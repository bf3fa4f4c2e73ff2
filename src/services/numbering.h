#ifndef CUSTOMSCONV_SERVICES_NUMBERING_H_
#define CUSTOMSCONV_SERVICES_NUMBERING_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "base/short_text.h"
#include "services/environment.h"

namespace customsconv {

// A compact date (DDMMY, DDMMYY, DDMMYYYY) itself when a declaration may be registered on that
// day, by the clock; else empty.
[[nodiscard]] std::string CheckCompactDate(std::string_view date, const Environment& environment);

// The counters stand in a file that stations share or in kord.ini (see
// numbering_store.h). Each function below does its work under a lock between
// processes, so that no two of them draw the same number. Throws FileError when a
// change cannot be written; the number is then not given out.

// A fresh registration number of the series, by the pattern and counters of the
// configuration; advances those counters that the pattern names.
[[nodiscard]] ShortText NextRegNumber(std::string_view series, bool four_digit_year,
                                      Environment& environment);

// Single counters of the numbering store. The next number follows the stored one
// (`start` when absent, so the first one is start + 1); behind `maximum` comes `start`.
[[nodiscard]] std::int32_t ReadCounter(std::string_view series, std::string_view key,
                                       std::int32_t default_value, Environment& environment);
void WriteCounter(std::string_view series, std::string_view key, std::int32_t value,
                  Environment& environment);
[[nodiscard]] std::int32_t NextCounter(std::string_view series, std::string_view key,
                                       std::int32_t start, std::int32_t maximum,
                                       Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_NUMBERING_H_
