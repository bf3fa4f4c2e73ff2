#include "validation/schema/component_builder.h"

#include <algorithm>
#include <vector>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "text/numbers.h"
#include "text/words.h"
#include "validation/schema/facets.h"

namespace customsconv::schema {
namespace {

constexpr std::string_view kSchemaNamespace = "http://www.w3.org/2001/XMLSchema";

// The child of that kind; a null node for none.
SchemaFiles::Node ChildOf(const SchemaFiles::Node& at, std::string_view kind) {
  for (const xmlNode* child : SchemaChildren(*at.node)) {
    if (LocalName(*child) == kind) return {child, at.file};
  }
  return {};
}

std::optional<std::string> OptionalText(const xmlNode& node, const char* name) {
  if (!HasAttribute(node, name)) return std::nullopt;
  return AttributeText(node, name);
}

bool IsTrue(const xmlNode& node, const char* name) {
  const std::string value = AttributeText(node, name);
  return value == "true" || value == "1";
}

Occurs OccursOf(const xmlNode& node) {
  const auto count = [&node](const char* attribute) {
    const std::string text = AttributeText(node, attribute);
    if (text == "unbounded") return kUnbounded;
    return text.empty() ? 1 : std::max(0, IntOr(text, kUnbounded));
  };
  return {count("minOccurs"), count("maxOccurs")};
}

bool IsQualified(const xmlNode& node, bool by_default) {
  const std::string form = AttributeText(node, "form");
  return form.empty() ? by_default : form == "qualified";
}

// A particle with other particles inside.
std::optional<Particle::Kind> CompositorOf(std::string_view name) {
  if (name == "sequence") return Particle::Kind::kSequence;
  if (name == "choice") return Particle::Kind::kChoice;
  if (name == "all") return Particle::Kind::kAll;
  return std::nullopt;
}

// The types in an order in which each comes behind its base. Null when one is its own base.
template <typename Type>
std::optional<std::vector<Type*>> BasesFirst(std::deque<Type>& types) {
  std::map<const Type*, Type*> waiting;
  for (Type& type : types) waiting.emplace(&type, &type);
  std::vector<Type*> order;
  for (Type& start : types) {
    std::vector<Type*> chain;
    for (const Type* type = &start; type != nullptr; type = type->base) {
      const auto found = waiting.find(type);
      if (found == waiting.end()) {
        const bool placed = std::find(chain.begin(), chain.end(), type) == chain.end();
        if (!placed) return std::nullopt;
        break;
      }
      chain.push_back(found->second);
      waiting.erase(found);
    }
    order.insert(order.end(), chain.rbegin(), chain.rend());
  }
  return order;
}

}  // namespace

const Element& ComponentBuilder::Build(const SchemaFiles::Node& declaration) {
  const Element* element = ElementAt(declaration, /*global=*/true);
  FillAll();
  TakeSubstitutes();
  InheritTexts();
  InheritLimits();
  return *element;
}

void ComponentBuilder::FillAll() {
  while (!to_fill_.empty()) {
    const std::function<void()> fill = std::move(to_fill_.front());
    to_fill_.pop_front();
    fill();
  }
}

// ---- Elements

const Element* ComponentBuilder::ElementAt(const Node& at, bool global) {
  Element*& element = element_at_[{at.node, at.file}];
  if (element != nullptr) return element;
  element = &elements_.emplace_back();
  element->name.local = AttributeText(*at.node, "name");
  if (global || IsQualified(*at.node, at.file->elements_qualified)) {
    element->name.name_space = at.file->name_space;
  }
  to_fill_.push_back([this, target = element, at] { FillElement(*target, at); });
  return element;
}

void ComponentBuilder::FillElement(Element& element, const Node& at) {
  element.nillable = IsTrue(*at.node, "nillable");
  element.abstract = IsTrue(*at.node, "abstract");
  element.fixed = OptionalText(*at.node, "fixed");
  element.documentation = DocumentationOf(*at.node);
  element.place = SchemaFiles::PlaceOf(at);
  const Node inside = ChildOf(at, "complexType");
  if (inside.node != nullptr) {
    element.complex = ComplexAt(inside);
    return;
  }
  const std::string type = AttributeText(*at.node, "type");
  if (!type.empty()) {
    const Node complex = files_.Find("complexType", SchemaFiles::Resolve(at, type));
    if (complex.node != nullptr) {
      element.complex = ComplexAt(complex);
      return;
    }
  }
  element.simple = SimpleOf(at);
}

// Elements that may stand in place of one that is there may bring others with them.
void ComponentBuilder::TakeSubstitutes() {
  for (bool more = true; std::exchange(more, false);) {
    for (const Node& member : files_.Elements()) {
      if (!HasAttribute(*member.node, "substitutionGroup")) continue;
      const Node head_at = Referred("element", member, "substitutionGroup");
      const auto head = element_at_.find({head_at.node, head_at.file});
      if (head == element_at_.end()) continue;
      const Element* element = ElementAt(member, /*global=*/true);
      if (!substitutes_.try_emplace({head->second, element}, true).second) continue;
      head->second->substitutes.push_back(element);
      more = true;
    }
    FillAll();
  }
}

// ---- References

SchemaFiles::Node ComponentBuilder::Referred(std::string_view kind, const Node& from,
                                             const char* attribute) const {
  const std::string value = AttributeText(*from.node, attribute);
  const Node found = files_.Find(kind, SchemaFiles::Resolve(from, value));
  if (found.node == nullptr) {
    SchemaFiles::Fail(from,
                      std::string("нет описания "_cp1251) + ToWindows(value, CodePage::kUtf8));
  }
  return found;
}

const SimpleType* ComponentBuilder::SimpleReferred(const Node& from, std::string_view name) {
  const Name type = SchemaFiles::Resolve(from, name);
  if (type.name_space == kSchemaNamespace) return BuiltIn(type.local);
  const Node at = files_.Find("simpleType", type);
  if (at.node == nullptr) {
    SchemaFiles::Fail(from, std::string("нет описания типа "_cp1251) +
                                ToWindows(std::string(name), CodePage::kUtf8));
  }
  return SimpleAt(at);
}

const SimpleType* ComponentBuilder::BuiltIn(std::string_view name) {
  if (name == "anyType") return nullptr;
  const bool any = name == "anySimpleType" || name == "anyAtomicType";
  SimpleType*& type = built_in_[std::string(name)];
  if (type == nullptr) {
    type = &simple_types_.emplace_back();
    type->built_in = any ? "string" : name;
  }
  return type;
}

const SimpleType* ComponentBuilder::SimpleOf(const Node& at) {
  const std::string type = AttributeText(*at.node, "type");
  if (!type.empty()) return SimpleReferred(at, type);
  const Node inside = ChildOf(at, "simpleType");
  return inside.node == nullptr ? nullptr : SimpleAt(inside);
}

// ---- Simple types

const SimpleType* ComponentBuilder::SimpleAt(const Node& at) {
  SimpleType*& type = simple_at_[{at.node, at.file}];
  if (type != nullptr) return type;
  type = &simple_types_.emplace_back();
  type->name = {at.file->name_space, AttributeText(*at.node, "name")};
  to_fill_.push_back([this, target = type, at] { FillSimple(*target, at); });
  return type;
}

void ComponentBuilder::FillSimple(SimpleType& type, const Node& at) {
  if (const Node restriction = ChildOf(at, "restriction"); restriction.node != nullptr) {
    FillRestriction(type, restriction);
    return;
  }
  const Node list = ChildOf(at, "list");
  const Node parts = list.node != nullptr ? list : ChildOf(at, "union");
  if (parts.node == nullptr) SchemaFiles::Fail(at, "простой тип без содержания"_cp1251);
  type.variety = list.node != nullptr ? SimpleType::Variety::kList : SimpleType::Variety::kUnion;
  type.built_in = "string";
  const std::string names =
      AttributeText(*parts.node, list.node != nullptr ? "itemType" : "memberTypes");
  for (const std::string_view name : Words(names, CharSet(" \t\r\n"))) {
    type.members.push_back(SimpleReferred(parts, name));
  }
  for (const xmlNode* child : SchemaChildren(*parts.node)) {
    if (LocalName(*child) == "simpleType") type.members.push_back(SimpleAt({child, at.file}));
  }
}

void ComponentBuilder::FillRestriction(SimpleType& type, const Node& at) {
  const std::string base = AttributeText(*at.node, "base");
  if (!base.empty()) {
    type.base = SimpleReferred(at, base);
  } else if (const Node inside = ChildOf(at, "simpleType"); inside.node != nullptr) {
    type.base = SimpleAt(inside);
  }
  TakeFacets(type, at);
}

// ---- Complex types

const ComplexType* ComponentBuilder::ComplexAt(const Node& at) {
  ComplexType*& type = complex_at_[{at.node, at.file}];
  if (type != nullptr) return type;
  type = &complex_types_.emplace_back();
  type->name = {at.file->name_space, AttributeText(*at.node, "name")};
  to_fill_.push_back([this, target = type, at] { FillComplex(*target, at); });
  return type;
}

void ComponentBuilder::FillComplex(ComplexType& type, const Node& at) {
  type.mixed = IsTrue(*at.node, "mixed");
  type.documentation = DocumentationOf(*at.node);
  const Node simple = ChildOf(at, "simpleContent");
  const Node complex = ChildOf(at, "complexContent");
  if (simple.node != nullptr) {
    FillDerivation(type, simple, /*simple_content=*/true);
  } else if (complex.node != nullptr) {
    type.mixed = type.mixed || IsTrue(*complex.node, "mixed");
    FillDerivation(type, complex, /*simple_content=*/false);
  } else {
    TakeParts(type, at);
  }
}

void ComponentBuilder::FillDerivation(ComplexType& type, const Node& at, bool simple_content) {
  Node own = ChildOf(at, "extension");
  type.restricts = own.node == nullptr;
  if (type.restricts) own = ChildOf(at, "restriction");
  if (own.node == nullptr) SchemaFiles::Fail(at, "нет ни extension, ни restriction"_cp1251);
  const std::string base = AttributeText(*own.node, "base");
  const Node complex = files_.Find("complexType", SchemaFiles::Resolve(own, base));
  if (complex.node != nullptr) {
    type.base = ComplexAt(complex);
  } else if (simple_content) {
    type.text = SimpleReferred(own, base);
  } else if (SchemaFiles::Resolve(own, base).name_space != kSchemaNamespace) {
    static_cast<void>(Referred("complexType", own, "base"));
  }
  if (simple_content) TakeText(type, own);
  TakeParts(type, own);
}

// The text of an element that also has attributes; what it is without a base is known once the
// base is.
void ComponentBuilder::TakeText(ComplexType& type, const Node& at) {
  SimpleType*& own = own_text_[&type];
  if (!type.restricts) return;
  own = &simple_types_.emplace_back();
  const Node inside = ChildOf(at, "simpleType");
  own->base = inside.node == nullptr ? type.text : SimpleAt(inside);
  TakeFacets(*own, at);
  type.text = own;
}

// What stands directly in a type or in its extension or restriction.
void ComponentBuilder::TakeParts(ComplexType& type, const Node& at) {
  std::vector<Node> places{at};
  std::set<const xmlNode*> groups;
  for (std::size_t i = 0; i < places.size(); ++i) {
    for (const xmlNode* child : SchemaChildren(*places[i].node)) {
      const Node part{child, places[i].file};
      const std::string_view kind = LocalName(*child);
      if (kind == "attribute") {
        TakeAttribute(type, part);
      } else if (kind == "anyAttribute") {
        type.any_attribute = true;
      } else if (kind == "attributeGroup") {
        const Node group = Referred(kind, part, "ref");
        if (groups.insert(group.node).second) places.push_back(group);
      } else if (const Particle* particle = ParticleAt(part); particle != nullptr) {
        type.content = particle;
      }
    }
  }
}

void ComponentBuilder::TakeAttribute(ComplexType& type, const Node& at) {
  const bool reference = HasAttribute(*at.node, "ref");
  const Node declared = reference ? Referred("attribute", at, "ref") : at;
  Attribute attribute;
  attribute.name.local = AttributeText(*declared.node, "name");
  if (reference || IsQualified(*at.node, at.file->attributes_qualified)) {
    attribute.name.name_space = declared.file->name_space;
  }
  attribute.type = SimpleOf(declared);
  if (attribute.type == nullptr) attribute.type = BuiltIn("string");
  attribute.required = AttributeText(*at.node, "use") == "required";
  attribute.prohibited = AttributeText(*at.node, "use") == "prohibited";
  attribute.fixed = OptionalText(*at.node, "fixed");
  if (!attribute.fixed) attribute.fixed = OptionalText(*declared.node, "fixed");
  attribute.documentation = DocumentationOf(*declared.node);
  type.attributes.push_back(std::move(attribute));
}

// ---- Content

// Null for what is no part of a content. Parts nest as deep as the file's elements, which the
// XML parser bounds.
const Particle* ComponentBuilder::ParticleAt(const Node& at) {
  const std::string_view kind = LocalName(*at.node);
  if (kind == "group") return GroupAt(at);
  const std::optional<Particle::Kind> compositor = CompositorOf(kind);
  if (!compositor && kind != "element" && kind != "any") return nullptr;
  Particle& particle = particles_.emplace_back();
  particle.occurs = OccursOf(*at.node);
  if (compositor) {
    particle.kind = *compositor;
    for (const xmlNode* child : SchemaChildren(*at.node)) {
      const Particle* part = ParticleAt({child, at.file});
      if (part != nullptr) particle.parts.push_back(part);
    }
  } else if (kind == "any") {
    particle.kind = Particle::Kind::kAny;
  } else {
    particle.kind = Particle::Kind::kElement;
    const bool reference = HasAttribute(*at.node, "ref");
    particle.element = ElementAt(reference ? Referred("element", at, "ref") : at, reference);
    particle.documentation = DocumentationOf(*at.node);
  }
  return &particle;
}

// A reference to a named group: its content with the reference's own count.
const Particle* ComponentBuilder::GroupAt(const Node& reference) {
  const Node group = Referred("group", reference, "ref");
  Particle*& content = group_at_[{group.node, group.file}];
  if (content == nullptr) {
    content = &particles_.emplace_back();
    to_fill_.push_back([this, target = content, group] {
      for (const xmlNode* child : SchemaChildren(*group.node)) {
        const Particle* part = ParticleAt({child, group.file});
        if (part != nullptr) target->parts.push_back(part);
      }
    });
  }
  Particle& particle = particles_.emplace_back();
  particle.occurs = OccursOf(*reference.node);
  particle.parts.push_back(content);
  return &particle;
}

// ---- What comes from the bases

void ComponentBuilder::InheritTexts() {
  const auto order = BasesFirst(complex_types_);
  if (!order) throw Error(std::string("Тип схемы выведен из самого себя"_cp1251));
  for (ComplexType* type : *order) {
    const auto own = own_text_.find(type);
    if (own == own_text_.end() || type->base == nullptr) continue;
    if (own->second == nullptr) {
      type->text = type->base->text;
    } else if (own->second->base == nullptr) {
      own->second->base = type->base->text;
    }
  }
}

void ComponentBuilder::InheritLimits() {
  const auto order = BasesFirst(simple_types_);
  if (!order) throw Error(std::string("Тип схемы выведен из самого себя"_cp1251));
  for (SimpleType* type : *order) {
    if (limited_.insert(type).second && type->base != nullptr) AddLimitsOf(*type->base, *type);
  }
}

}  // namespace customsconv::schema
