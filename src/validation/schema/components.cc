#include "validation/schema/components.h"

#include <algorithm>

namespace customsconv::schema {
namespace {

// Replaces the attribute of that name, or adds one.
void Overlay(std::vector<const Attribute*>& attributes, const Attribute& own) {
  const auto same = std::find_if(attributes.begin(), attributes.end(),
                                 [&](const Attribute* a) { return a->name == own.name; });
  if (same == attributes.end()) {
    attributes.push_back(&own);
  } else {
    *same = &own;
  }
}

}  // namespace

std::vector<const Particle*> ContentOf(const ComplexType& type) {
  std::vector<const Particle*> content;
  for (const ComplexType* part = &type; part != nullptr; part = part->base) {
    if (part->content != nullptr) content.push_back(part->content);
    if (part->restricts) break;
  }
  std::reverse(content.begin(), content.end());
  return content;
}

std::vector<const Attribute*> AttributesOf(const ComplexType& type) {
  std::vector<const ComplexType*> chain;
  for (const ComplexType* part = &type; part != nullptr; part = part->base) chain.push_back(part);
  std::vector<const Attribute*> attributes;
  for (auto part = chain.rbegin(); part != chain.rend(); ++part) {
    for (const Attribute& own : (*part)->attributes) Overlay(attributes, own);
  }
  std::erase_if(attributes, [](const Attribute* a) { return a->prohibited; });
  return attributes;
}

const SimpleType* TextOf(const Element& element) {
  return element.complex == nullptr ? element.simple : element.complex->text;
}

}  // namespace customsconv::schema
