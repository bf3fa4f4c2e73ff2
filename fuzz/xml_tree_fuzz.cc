// Parses any bytes as an XML document and looks at every node: parents, order and
// the bounds of the views must hold, whatever was accepted.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "xml/tree/xml_parser.h"

namespace {

using customsconv::TXMLNode;

// Reads every byte that a view spans, so that a sanitizer sees a stray one.
std::size_t SumOf(std::string_view view) {
  std::size_t sum = view.size();
  for (const char c : view) sum += static_cast<unsigned char>(c);
  return sum;
}

std::size_t VisitNode(const TXMLNode& node, std::string& buffer) {
  std::size_t sum = SumOf(node.name) + SumOf(node.Text());
  for (const TXMLNode& attribute : node.attributes) {
    if (attribute.parent != &node || attribute.name.empty()) std::abort();
    sum += SumOf(attribute.name) + SumOf(customsconv::DecodeXmlEntities(attribute.value, buffer));
  }
  return sum + SumOf(customsconv::DecodeXmlEntities(node.value, buffer));
}

std::size_t Visit(const TXMLNode& root) {
  std::size_t sum = 0;
  std::string buffer;
  std::vector<const TXMLNode*> pending = {&root};
  while (!pending.empty()) {
    const TXMLNode* node = pending.back();
    pending.pop_back();
    sum += VisitNode(*node, buffer);
    for (const TXMLNode& child : node->children) {
      if (child.parent != node) std::abort();
      pending.push_back(&child);
    }
  }
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // On the heap at its exact size: a read beyond the end is found.
  const std::vector<char> bytes(data, data + size);
  volatile std::size_t sum = 0;
  try {
    const customsconv::XmlTree tree(std::string_view(bytes.data(), bytes.size()));
    sum = Visit(tree.root());
    for (const TXMLNode& entry : tree.header()) sum = sum + Visit(entry);
  } catch (const customsconv::XmlParseError& error) {
    if (error.text().empty()) std::abort();
  }
  return 0;
}
