#ifndef CUSTOMSCONV_XML_TREE_XML_NODE_H_
#define CUSTOMSCONV_XML_TREE_XML_NODE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

enum class NodeType : std::uint8_t { kElement, kAttribute, kText, kCData, kComment };

struct TXMLNode;

// The nodes of one list in document order, linked through TXMLNode::next.
//
//   for (const TXMLNode& attribute : node.attributes) …
//   if (const TXMLNode* goods = node.children.Find("Goods")) …  // finds "ns:Goods", too
//
// A list never owns storage of its own: nodes live in their tree's arena. Count and Item walk
// from the first node.
class TXMLNodeList {
 public:
  class Iterator {
   public:
    explicit Iterator(const TXMLNode* node) : node_(node) {}
    const TXMLNode& operator*() const { return *node_; }
    const TXMLNode* operator->() const { return node_; }
    inline Iterator& operator++();
    bool operator==(const Iterator& other) const = default;

   private:
    const TXMLNode* node_;
  };

  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] bool empty() const { return first_ == nullptr; }
  // The node at `index` (from 0), which must be below Count().
  [[nodiscard]] const TXMLNode& Item(std::size_t index) const;
  // The first node of that name; a stored name with a ":" is also found by what follows
  // its first ":". Letter case counts. Null when there is none.
  [[nodiscard]] const TXMLNode* Find(std::string_view name) const;
  [[nodiscard]] Iterator begin() const { return Iterator(first_); }
  [[nodiscard]] Iterator end() const { return Iterator(nullptr); }

 private:
  friend class XmlTreeBuilder;
  const TXMLNode* first_ = nullptr;
};

// One node of an XML tree. Names and values are views into the parsed text or the tree's arena and
// live as long as both. Text is as in the file (single-byte); only the decodings of the parser
// itself have been applied, see DecodeXmlEntities.
struct TXMLNode {
  // Of an attribute, text, CDATA or comment node; empty for an element.
  std::string_view value;
  // As written, namespace prefix included; "#cdata-section", "#comment", empty
  // for text.
  std::string_view name;
  const TXMLNode* parent = nullptr;
  const TXMLNode* next = nullptr;  // the next node of the list it stands in
  TXMLNodeList attributes;
  TXMLNodeList children;
  NodeType type = NodeType::kElement;

  // For an element the value of its first text or CDATA child (empty when
  // there is none), else its own value.
  [[nodiscard]] std::string_view Text() const;
  // Text of the attribute of that name; empty when there is none.
  [[nodiscard]] std::string_view Attribute(std::string_view attribute_name) const;
  // `name` behind its first ":", or the whole name.
  [[nodiscard]] std::string_view LocalName() const {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
  }
};

inline TXMLNodeList::Iterator& TXMLNodeList::Iterator::operator++() {
  node_ = node_->next;
  return *this;
}

// The five named entities in a fixed order, then decimal references ("&#192;" is the byte 192,
// above 255 "?"). What cannot be decoded stays. Returns `value` itself (no copy) when it holds no
// "&"; otherwise decodes into `buffer` and returns a view of it.
[[nodiscard]] std::string_view DecodeXmlEntities(std::string_view value CUSTOMSCONV_LIFETIME_BOUND,
                                                 std::string& buffer CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_TREE_XML_NODE_H_
