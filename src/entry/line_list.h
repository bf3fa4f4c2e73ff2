#ifndef CUSTOMSCONV_ENTRY_LINE_LIST_H_
#define CUSTOMSCONV_ENTRY_LINE_LIST_H_

#include <string_view>

namespace customsconv {

// The caller's list that a schema check appends its lines to.
class LineList {
 public:
  virtual ~LineList() = default;
  virtual void Append(std::string_view line_1251) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_LINE_LIST_H_
