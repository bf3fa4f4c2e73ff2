#ifndef CUSTOMSCONV_XML_WRITE_VALUE_FORMAT_H_
#define CUSTOMSCONV_XML_WRITE_VALUE_FORMAT_H_

#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "catalogue/field_info.h"

namespace customsconv {

// Turns stored values into the form that they have in XML.
//
//   ValueFormatter formatter(clock.ThisYear());
//   formatter.Format(date_field, "11.06.2015")   "2015-06-11"
//   formatter.Format(number_field, "12,50")      "12.5"
//
// Most values come out as they are; those are not copied.
class ValueFormatter {
 public:
  explicit ValueFormatter(int this_year) : this_year_(this_year) {}

  // The value of `field` by its type, in code page 1251; empty for an empty value,
  // for a date that is none, and for types that have no value of their own. The
  // view is good until the next call, or as long as `raw`.
  [[nodiscard]] std::string_view Format(const TFieldInfo& field,
                                        std::string_view raw CUSTOMSCONV_LIFETIME_BOUND)
      CUSTOMSCONV_LIFETIME_BOUND;

 private:
  [[nodiscard]] std::string_view Keep(std::string text);
  [[nodiscard]] std::string_view Number(std::string_view raw);
  [[nodiscard]] std::string_view DateText(std::string_view raw);
  [[nodiscard]] std::string_view Escaped(std::string_view raw);

  int this_year_;
  std::string kept_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_VALUE_FORMAT_H_
