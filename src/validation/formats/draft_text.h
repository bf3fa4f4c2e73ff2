#ifndef CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_TEXT_H_
#define CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// A field of a type that is being drafted. Texts are code page 1251.
struct DraftField {
  std::string name;
  std::string format;
  std::string caption;
  std::string xml_path;
  std::string pattern;
  std::string attributes;  // further ones, each with a blank in front
};

// The lines of a catalogue file, as they grow. Captions lose what a catalogue would read in them:
// braces open blocks, brackets name the two values of a logical field, quotes end an attribute.
class DraftText {
 public:
  // A line as it is.
  void Line(std::string_view line);
  void Comment(std::string_view text);
  // Begins a group of fields.
  void Heading(std::string_view text);
  void Add(const DraftField& field);
  void OpenBlock(std::string_view name, std::string_view caption, std::string_view xml_path);
  void CloseBlock();

  [[nodiscard]] const std::string& Text() const CUSTOMSCONV_LIFETIME_BOUND { return text_; }

 private:
  std::string text_;
  std::size_t depth_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_TEXT_H_
