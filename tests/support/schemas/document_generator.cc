#include "support/schemas/document_generator.h"

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "support/schemas/value_generator.h"
#include "validation/schema/schema_tree.h"

namespace customsconv {
namespace {

using schema::Element;
using schema::Particle;

class Generator {
 public:
  explicit Generator(const DocumentPlan& plan)
      : plan_(plan), random_(static_cast<unsigned>(plan.number)) {}

  std::string Document(const Element& root) {
    root_namespace_ = root.name.name_space;
    Write(root, {});
    std::string declarations;
    for (const auto& [name_space, prefix] : prefixes_) {
      declarations.append(" xmlns:" + prefix + "=\"").append(name_space) += '"';
    }
    if (!root_namespace_.empty()) declarations += " xmlns=\"" + root_namespace_ + "\"";
    // The declarations go behind the root's name.
    text_.insert(1 + root.name.local.size(), declarations);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + text_;
  }

 private:
  std::string Qualified(const schema::Name& name) {
    if (name.name_space.empty() || name.name_space == root_namespace_) return name.local;
    const auto known =
        prefixes_.try_emplace(name.name_space, "n" + std::to_string(prefixes_.size() + 1)).first;
    return known->second + ":" + name.local;
  }

  void Write(const Element& element, const std::string& indent) {
    const std::string name = Qualified(element.name);
    text_ += indent + "<" + name;
    if (element.complex != nullptr) WriteAttributes(*element.complex);
    text_ += ">";
    const std::size_t content = text_.size();
    if (const schema::SimpleType* type = TextOf(element); type != nullptr) {
      text_ += element.fixed ? *element.fixed : GenerateValue(*type, number_++, Full());
    } else if (element.complex != nullptr) {
      open_.push_back(element.complex);
      for (const Particle* part : ContentOf(*element.complex)) Write(*part, indent + "  ");
      open_.pop_back();
    }
    if (text_.size() > content && text_.back() == '\n') text_ += indent;
    text_ += "</" + name + ">\n";
  }

  void WriteAttributes(const schema::ComplexType& type) {
    for (const schema::Attribute* attribute : AttributesOf(type)) {
      if (!attribute->required && !Full()) continue;
      text_ += " " + attribute->name.local + "=\"" +
               (attribute->fixed ? *attribute->fixed
                                 : GenerateValue(*attribute->type, number_++, false)) +
               "\"";
    }
  }

  // Types that hold themselves end after the second round.
  [[nodiscard]] bool Deep() const {
    return !open_.empty() && std::count(open_.begin(), open_.end(), open_.back()) > 2;
  }

  [[nodiscard]] bool Full() const { return plan_.fullness == Fullness::kFull; }
  [[nodiscard]] bool Mixed() const { return plan_.fullness == Fullness::kMixed; }

  int CountOf(const schema::Occurs& occurs) {
    const int most = std::min(occurs.max, std::max(occurs.min, 2));
    if (Deep() || plan_.fullness == Fullness::kLean) return occurs.min;
    if (Full()) return most;
    return occurs.min + static_cast<int>(random_() % static_cast<unsigned>(most - occurs.min + 1));
  }

  void Write(const Particle& particle, const std::string& indent) {
    const int count = CountOf(particle.occurs);
    for (int i = 0; i < count; ++i) {
      // The first element directly inside another one begins a line.
      if (!text_.empty() && text_.back() == '>') text_ += '\n';
      if (particle.kind == Particle::Kind::kElement) {
        Write(*particle.element, indent);
      } else if (particle.kind == Particle::Kind::kChoice && !particle.parts.empty()) {
        const std::size_t branch = Mixed() ? random_() : static_cast<std::size_t>(plan_.number);
        Write(*particle.parts[branch % particle.parts.size()], indent);
      } else {
        for (const Particle* part : particle.parts) Write(*part, indent);
      }
    }
  }

  DocumentPlan plan_;
  std::minstd_rand random_;  // the same numbers everywhere
  std::string root_namespace_;
  std::map<std::string, std::string> prefixes_;
  std::vector<const schema::ComplexType*> open_;
  std::string text_;
  int number_ = 1;
};

}  // namespace

std::string GenerateDocument(schema::SchemaSet& schemas, const std::string& root,
                             const DocumentPlan& plan) {
  return Generator(plan).Document(schemas.Root(root));
}

int MostBranches(schema::SchemaSet& schemas, const std::string& root) {
  const schema::SchemaTree tree(schemas.Root(root));
  int most = 1;
  for (std::size_t i = 0; i < tree.Count(); ++i) {
    for (const schema::Branch& branch : tree.At(i).branches) most = std::max(most, branch.number);
  }
  return most;
}

}  // namespace customsconv
