// The element that a verdict names is looked for in the written text, by its name and line, and
// from there by its path in the file.

#include "entry/original_place.h"

#include <algorithm>
#include <vector>

#include "base/lifetime.h"
#include "xml/tree/xml_parser.h"

namespace customsconv {
namespace {

// "Code" of "Element 'Code': [facet 'maxLength'] …"
std::string_view NamedElement(std::string_view reason CUSTOMSCONV_LIFETIME_BOUND) {
  constexpr std::string_view kBefore = "Element '";
  if (!reason.starts_with(kBefore)) return {};
  reason.remove_prefix(kBefore.size());
  return reason.substr(0, reason.find('\''));
}

const TXMLNode* First(const TXMLNode& parent) {
  return parent.children.empty() ? nullptr : &*parent.children.begin();
}

// The node behind this one in document order.
const TXMLNode* Next(const TXMLNode* node) {
  if (const TXMLNode* child = First(*node)) return child;
  while (node != nullptr && node->next == nullptr) node = node->parent;
  return node == nullptr ? nullptr : node->next;
}

// The last element of that name that begins in the first `lines` lines of the text.
const TXMLNode* LastOf(std::string_view name, const TXMLNode& root, std::string_view text,
                       int lines) {
  std::size_t end = 0;
  for (int line = 0; line < lines && end != std::string_view::npos; ++line) {
    end = text.find('\n', end == 0 ? 0 : end + 1);
  }
  const char* const behind = text.data() + std::min(end, text.size());
  const TXMLNode* found = nullptr;
  for (const TXMLNode* node = &root; node != nullptr; node = Next(node)) {
    if (node->type != NodeType::kElement) continue;
    if (node->name.data() > behind) break;
    if (node->LocalName() == name) found = node;
  }
  return found;
}

// An element among its siblings of the same name.
struct Step {
  std::string_view name;
  std::size_t number = 0;  // from 1
  std::size_t siblings = 0;
};

std::vector<Step> StepsTo(const TXMLNode* node) {
  std::vector<Step> steps;
  for (; node->parent != nullptr; node = node->parent) {
    Step step{node->LocalName()};
    for (const TXMLNode& sibling : node->parent->children) {
      if (sibling.type != NodeType::kElement || sibling.LocalName() != step.name) continue;
      ++step.siblings;
      if (&sibling == node) step.number = step.siblings;
    }
    steps.push_back(step);
  }
  std::reverse(steps.begin(), steps.end());
  return steps;
}

const TXMLNode* Child(const TXMLNode& parent, const Step& step) {
  std::size_t number = 0;
  for (const TXMLNode& child : parent.children) {
    if (child.type != NodeType::kElement || child.LocalName() != step.name) continue;
    if (++number == step.number) return &child;
  }
  return nullptr;
}

}  // namespace

OriginalPlace OriginalPlaceOf(const SchemaVerdict& verdict, std::string_view written,
                              const TXMLContainer& container) {
  const std::string_view name = NamedElement(verdict.reason);
  if (name.empty() || container.CurText().empty()) return {};
  const XmlTree tree(written);
  const TXMLNode* const fault = LastOf(name, tree.root(), written, verdict.line);
  if (fault == nullptr) return {};
  const XmlTree original(container.CurText());
  const TXMLNode* place = &original.root();
  OriginalPlace result{std::string(tree.root().LocalName())};
  bool is_there = true;
  for (const Step& step : StepsTo(fault)) {
    result.path.append("/").append(step.name);
    if (step.siblings > 1) result.path += "[" + std::to_string(step.number) + "]";
    const TXMLNode* const child = is_there ? Child(*place, step) : nullptr;
    is_there = child != nullptr;
    if (is_there) place = child;
  }
  result.line = container.FileLineOf(place->name.data());
  return result;
}

}  // namespace customsconv
