#include "xml/tree/xml_node.h"

#include <algorithm>
#include <array>

#include "base/characters.h"

namespace customsconv {

namespace {

struct NamedEntity {
  std::string_view text;
  char character;
};
constexpr std::array<NamedEntity, 5> kNamedEntities = {
    {{"&apos;", '\''}, {"&gt;", '>'}, {"&lt;", '<'}, {"&quot;", '"'}, {"&amp;", '&'}}};

// One pass from left to right does what five passes in the order of the table
// would: no entity holds the "&" of another, and what a decoded character makes
// with its neighbours ("&lt;" from "&amp;lt;") stays.
void DecodeNamedEntities(std::string_view value, std::string& to) {
  to.clear();
  for (std::size_t from = 0; from < value.size();) {
    const std::size_t ampersand = std::min(value.find('&', from), value.size());
    to.append(value.substr(from, ampersand - from));
    from = ampersand;
    if (from == value.size()) break;
    const auto* entity =
        std::find_if(kNamedEntities.begin(), kNamedEntities.end(),
                     [&](const NamedEntity& e) { return value.substr(from).starts_with(e.text); });
    const bool found = entity != kNamedEntities.end();
    to.push_back(found ? entity->character : '&');
    from += found ? entity->text.size() : 1;
  }
}

// The byte that the digits of a reference stand for; '\0' when they are no
// positive decimal number.
char ReferencedByte(std::string_view digits) {
  constexpr int kBeyondByte = 256;
  int number = 0;
  for (const char c : digits) {
    if (!IsDigit(c)) return '\0';
    number = std::min(number * 10 + (c - '0'), kBeyondByte);
  }
  return number == kBeyondByte ? '?' : static_cast<char>(number);
}

// Decodes in place, reading ahead of writing. The byte that a reference gave is
// looked at again: an "&" may begin the next reference.
void DecodeNumericReferences(std::string& text) {
  std::size_t written = 0;
  std::size_t read = 0;
  while (read + 1 < text.size()) {
    if (text[read] != '&' || text[read + 1] != '#') {
      text[written++] = text[read++];
      continue;
    }
    const std::size_t semicolon = text.find(';', read + 2);
    if (semicolon == std::string::npos) break;
    const std::string_view digits = std::string_view(text).substr(read + 2, semicolon - read - 2);
    if (const char byte = ReferencedByte(digits); byte != '\0') {
      read = semicolon;
      text[read] = byte;
    } else {
      while (read <= semicolon) text[written++] = text[read++];
    }
  }
  text.erase(written, read - written);
}

}  // namespace

std::size_t TXMLNodeList::Count() const {
  std::size_t count = 0;
  for (const TXMLNode* node = first_; node != nullptr; node = node->next) ++count;
  return count;
}

const TXMLNode& TXMLNodeList::Item(std::size_t index) const {
  const TXMLNode* node = first_;
  while (index-- > 0) node = node->next;
  return *node;
}

const TXMLNode* TXMLNodeList::Find(std::string_view name) const {
  for (const TXMLNode& node : *this) {
    if (node.name == name || node.LocalName() == name) return &node;
  }
  return nullptr;
}

std::string_view TXMLNode::Text() const {
  if (type != NodeType::kElement) return value;
  for (const TXMLNode& child : children) {
    if (child.type == NodeType::kText || child.type == NodeType::kCData) return child.value;
  }
  return {};
}

std::string_view TXMLNode::Attribute(std::string_view attribute_name) const {
  const TXMLNode* attribute = attributes.Find(attribute_name);
  return attribute == nullptr ? std::string_view{} : attribute->Text();
}

std::string_view DecodeXmlEntities(std::string_view value, std::string& buffer) {
  if (value.find('&') == std::string_view::npos) return value;
  DecodeNamedEntities(value, buffer);
  DecodeNumericReferences(buffer);
  return buffer;
}

}  // namespace customsconv
