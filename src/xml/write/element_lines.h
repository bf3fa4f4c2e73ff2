#ifndef CUSTOMSCONV_XML_WRITE_ELEMENT_LINES_H_
#define CUSTOMSCONV_XML_WRITE_ELEMENT_LINES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// XML text as it grows line by line, and the elements that are open in it.
//
//   ElementLines lines(true);
//   lines.Open("Goods", false);
//   lines.AddValue("Number", "", "1");
//   lines.Close();
//   lines.TakeText()                   <Goods>, <Number>1</Number> and </Goods> on three lines
//
// The rules of the format look at the line written last only: an element that is
// closed while its start tag is the last line vanishes, one whose start tag stands
// somewhere in the last line is closed there, any other gets a line of its own.
//
// Start tags are therefore put off until something is written inside them: the
// many elements that stay empty cost nothing.
class ElementLines {
 public:
  // Values are converted to UTF-8 when `utf8` is set; all else is written as it is.
  explicit ElementLines(bool utf8) : utf8_(utf8) {}

  void AddLine(std::string_view line);
  // Blanks in front of the outermost element; inner ones get two more a level.
  void SetIndent(std::size_t indent) { indent_ = indent; }

  // `name` must stay until the element is closed. A `marked` element stays when it is empty.
  void Open(std::string_view name, bool marked);
  // Closes the innermost element.
  void Close();
  [[nodiscard]] std::size_t Depth() const { return open_.size(); }

  // One element with its value on a line; `attribute` begins with a blank or is empty.
  // Both are in the encoding of the values already.
  void AddValue(std::string_view name, std::string_view attribute, std::string_view value);
  // Adds `value` to the line written last.
  void AddToLastLine(std::string_view value);

  // The text, each line followed by CR LF, without the marks of marked elements.
  // Every other text that looks like a mark goes with them, and a CR or LF inside a
  // value ends a line. Nothing may be added afterwards.
  [[nodiscard]] std::string TakeText();

 private:
  struct Element {
    std::string_view name;
    bool marked;
    std::size_t line_before = 0;  // the line in front of its start tag, once that is written
  };

  // The line that is written last begins at last_line_ from now on.
  void StartLine(std::size_t depth);
  void WriteStartTags();
  void AppendValueText(std::string_view text);
  bool utf8_;
  std::size_t indent_ = 0;
  std::string text_;  // lines with CR LF between them
  std::size_t last_line_ = 0;
  std::vector<Element> open_;
  std::size_t written_ = 0;         // how many of the open elements' start tags are in the text
  bool has_breaks_inside_ = false;  // a value brought line breaks of its own
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_ELEMENT_LINES_H_
