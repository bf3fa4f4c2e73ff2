#ifndef CUSTOMSCONV_XML_TREE_XML_PARSER_H_
#define CUSTOMSCONV_XML_TREE_XML_PARSER_H_

#include <memory>
#include <string_view>

#include "base/error.h"
#include "base/lifetime.h"
#include "xml/tree/xml_node.h"

namespace customsconv {

// What the parser could not read; the messages are the parser's own, most with
// the text around the place.
class XmlParseError : public Error {
 public:
  using Error::Error;
};

class XmlArena;

// The tree of one XML document.
//
//   const XmlTree tree(text);
//   for (const TXMLNode& child : tree.root().children) {
//     if (child.LocalName() == "GTDNumber") number = child.Text();
//   }
//
// Made in one pass over the text, without recursion; all nodes stand in one arena that goes with
// the tree. The text is not copied and must outlive the tree; only tokens that needed decoding
// live in the arena.
//
// Lenient where customs documents need it (elements left open at the end, end tags compared only
// as far as the start tag's name reaches), strict about attributes.
class XmlTree {
 public:
  // Throws XmlParseError. An empty text gives an empty element.
  explicit XmlTree(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);
  ~XmlTree();
  XmlTree(XmlTree&&) noexcept;
  XmlTree& operator=(XmlTree&&) noexcept;

  [[nodiscard]] const TXMLNode& root() const CUSTOMSCONV_LIFETIME_BOUND { return *root_; }
  // One entry per "<?name ...?>" in front of the root element.
  [[nodiscard]] const TXMLNodeList& header() const CUSTOMSCONV_LIFETIME_BOUND { return header_; }

 private:
  std::unique_ptr<XmlArena> arena_;
  const TXMLNode* root_ = nullptr;
  TXMLNodeList header_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_TREE_XML_PARSER_H_
