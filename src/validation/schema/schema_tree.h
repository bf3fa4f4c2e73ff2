#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_TREE_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_TREE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "base/lifetime.h"
#include "validation/schema/components.h"

namespace customsconv::schema {

// A branch of a choice. Choices are numbered through the tree, branches from 1.
struct Branch {
  int choice = 0;
  int number = 0;
  friend bool operator==(const Branch&, const Branch&) = default;
};

// An element at its place in the documents of one root.
struct TreeElement {
  const Element* element = nullptr;
  std::string documentation;
  std::size_t parent = 0;
  std::vector<std::size_t> children;  // in the order of the schema
  std::size_t order = 0;              // its number when parents are counted before children
  // In one parent; groups and choices are taken into account, so in a branch of a choice nothing
  // is required.
  Occurs occurs;
  std::vector<Branch> branches;  // of the choices around it within the parent, outermost first
  // Elements of a group that repeats as a whole: their order among each other matters.
  bool repeats_in_group = false;
  // The parent's content names it several times; `occurs` counts all of them.
  bool several_places = false;
  bool holds_any = false;  // also elements that the schema does not name
  bool cut = false;        // holds itself; what is inside is not followed further

  [[nodiscard]] bool Repeats() const { return occurs.max > 1; }
  [[nodiscard]] bool Required() const { return occurs.min > 0; }
};

// All elements that documents of one root may hold, each at its place: content models with their
// groups are flattened into lists of children, references and types are followed. An element that
// holds itself is followed for a second round and then cut.
class SchemaTree {
 public:
  // The root's components must outlive the tree. Throws Error for a schema with more elements, or
  // more levels of them, than any format has.
  explicit SchemaTree(const Element& root);

  static constexpr std::size_t kRoot = 0;
  [[nodiscard]] const TreeElement& At(std::size_t index) const CUSTOMSCONV_LIFETIME_BOUND {
    return elements_[index];
  }
  [[nodiscard]] const TreeElement& Root() const CUSTOMSCONV_LIFETIME_BOUND {
    return elements_[kRoot];
  }
  [[nodiscard]] std::size_t Count() const { return elements_.size(); }
  // The indices in the order of a document, parents before their children.
  [[nodiscard]] std::vector<std::size_t> InOrder() const;
  // Local names below `from`, joined by "#"; empty for `from` itself, which is the element or an
  // element around it.
  [[nodiscard]] std::string Path(std::size_t index, std::size_t from = kRoot) const;

 private:
  [[nodiscard]] int RoundsOf(const ComplexType& type, std::size_t index) const;

  std::vector<TreeElement> elements_;
};

// Whether one document may hold both: they stand in different branches of no choice.
[[nodiscard]] bool MayMeet(const TreeElement& a, const TreeElement& b);

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_TREE_H_
