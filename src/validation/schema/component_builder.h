#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENT_BUILDER_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENT_BUILDER_H_

#include <libxml/tree.h>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "base/lifetime.h"
#include "validation/schema/components.h"
#include "validation/schema/schema_files.h"

namespace customsconv::schema {

// Makes components of declarations, each once. A component that refers to another takes its
// address and leaves it to be filled later, so types may lead to each other in circles and in
// chains of any length.
class ComponentBuilder {
 public:
  // `files` must outlive the builder; the components live as long as the builder.
  explicit ComponentBuilder(const SchemaFiles& files) : files_(files) {}
  ComponentBuilder(const ComponentBuilder&) = delete;
  ComponentBuilder& operator=(const ComponentBuilder&) = delete;

  // The element of a global declaration, complete with all that it leads to. Throws Error for a
  // reference that leads nowhere and for a type that is its own base.
  [[nodiscard]] const Element& Build(const SchemaFiles::Node& declaration)
      CUSTOMSCONV_LIFETIME_BOUND;

 private:
  using Node = SchemaFiles::Node;
  using At = std::pair<const xmlNode*, const SchemaFiles::File*>;

  // What the declaration at a place gives: made now, and to be filled later, or earlier.
  const Element* ElementAt(const Node& at, bool global);
  const SimpleType* SimpleAt(const Node& at);
  const ComplexType* ComplexAt(const Node& at);
  const Particle* GroupAt(const Node& reference);
  // What an attribute of the node refers to.
  [[nodiscard]] Node Referred(std::string_view kind, const Node& from, const char* attribute) const;
  const SimpleType* SimpleReferred(const Node& from, std::string_view name);
  const SimpleType* BuiltIn(std::string_view name);
  // The type of an element's or attribute's value: by name, or as it stands inside.
  const SimpleType* SimpleOf(const Node& at);

  void FillElement(Element& element, const Node& at);
  void FillSimple(SimpleType& type, const Node& at);
  void FillRestriction(SimpleType& type, const Node& at);
  void FillComplex(ComplexType& type, const Node& at);
  void FillDerivation(ComplexType& type, const Node& at, bool simple_content);
  void TakeText(ComplexType& type, const Node& at);
  void TakeParts(ComplexType& type, const Node& at);
  void TakeAttribute(ComplexType& type, const Node& at);
  [[nodiscard]] const Particle* ParticleAt(const Node& at);
  void TakeSubstitutes();

  void FillAll();
  void InheritTexts();
  void InheritLimits();

  const SchemaFiles& files_;
  std::deque<Element> elements_;
  std::deque<SimpleType> simple_types_;
  std::deque<ComplexType> complex_types_;
  std::deque<Particle> particles_;
  std::map<At, Element*> element_at_;
  std::map<At, SimpleType*> simple_at_;
  std::map<At, ComplexType*> complex_at_;
  std::map<At, Particle*> group_at_;
  std::map<std::string, SimpleType*, std::less<>> built_in_;
  // Types with a text and attributes; null for a text that is the base's.
  std::map<const ComplexType*, SimpleType*> own_text_;
  std::set<const SimpleType*> limited_;  // they have the limits of their bases already
  std::map<std::pair<const Element*, const Element*>, bool> substitutes_;  // head and member
  std::deque<std::function<void()>> to_fill_;
};

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENT_BUILDER_H_
