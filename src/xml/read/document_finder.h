#ifndef CUSTOMSCONV_XML_READ_DOCUMENT_FINDER_H_
#define CUSTOMSCONV_XML_READ_DOCUMENT_FINDER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"

namespace customsconv {

// Where the documents stand in an XML text that holds several:
//
//   for (const RootName& root : FindRootNames(text)) …   // "ESADout", 2
//   DocumentFinder finder("ESADout_CU:ESADout");
//   const std::string_view second = finder.Find(text, 2);

// Name of a root element and how many documents of a text have it.
struct RootName {
  std::string name;  // as the first of them writes it
  int count = 0;
};

// The root names of the documents in `text`, in order of first appearance, counted
// without regard to letter case. A document stands behind each "<DocBody>"; where no
// more of those come, behind each XML declaration. Takes linear time.
[[nodiscard]] std::vector<RootName> FindRootNames(std::string_view text);

// Finds the documents of one root tag in a text by their order. What was found is
// remembered, so that going through all documents looks at the text once.
class DocumentFinder {
 public:
  explicit DocumentFinder(std::string_view root_tag);

  // Text of the document with that number (from 1), from "<" through its end tag and the
  // line ends behind it; empty when there are not so many. `text` must be the same in
  // every call. Throws Error when the document has no end tag.
  [[nodiscard]] std::string_view Find(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                      std::size_t number);

 private:
  [[nodiscard]] std::size_t StartOf(std::string_view text, std::size_t number);
  [[nodiscard]] std::size_t EndTagBehind(std::string_view text, std::size_t start);

  std::string start_tag_;  // a blank behind the name: a root has attributes
  std::string end_tag_;
  std::vector<std::size_t> starts_;  // in order; the last is npos once all are found
  // The end tag found last and where the search for it began.
  std::size_t end_tag_searched_from_ = 0;
  std::size_t end_tag_position_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_DOCUMENT_FINDER_H_
