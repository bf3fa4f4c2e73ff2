#include "validation/schema/schema_tree.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/cp1251_literal.h"
#include "base/error.h"

namespace customsconv::schema {
namespace {

constexpr std::size_t kMostElements = 500000;
constexpr int kMostLevels = 1000;
constexpr int kMostGroupsInside = 200;
constexpr int kRoundsOfARecursion = 2;

// The element and all that may stand in its place, but for abstract ones.
std::vector<const Element*> StandIns(const Element& element) {
  std::vector<const Element*> all{&element};
  std::set<const Element*> met{&element};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (const Element* other : std::vector(all[i]->substitutes)) {
      if (met.insert(other).second) all.push_back(other);
    }
  }
  std::erase_if(all, [](const Element* e) { return e->abstract; });
  return all;
}

// More than one element can stand in the particle.
bool HoldsSeveral(const Particle& particle, int depth = 0) {
  if (particle.kind == Particle::Kind::kElement) return StandIns(*particle.element).size() > 1;
  if (particle.kind == Particle::Kind::kAny || particle.parts.empty()) return false;
  return particle.parts.size() > 1 || depth > kMostGroupsInside ||
         HoldsSeveral(*particle.parts.front(), depth + 1);
}

// Puts the content of one element into a list of children.
class Flattening {
 public:
  Flattening(std::vector<TreeElement>& elements, std::size_t parent, int& choices)
      : elements_(elements), parent_(parent), choices_(choices) {}

  void Take(const Particle& particle) { Take(particle, {}); }

 private:
  // What is around a particle within the parent.
  struct Around {
    Occurs occurs;
    std::vector<Branch> branches;
    bool repeats = false;
    int depth = 0;
  };

  // Recurses over groups within groups, which are counted against a bound.
  void Take(const Particle& particle, Around around) {
    if (++around.depth > kMostGroupsInside) {
      throw Error(std::string("Группы схемы вложены слишком глубоко"_cp1251));
    }
    around.occurs = {Times(around.occurs.min, particle.occurs.min),
                     Times(around.occurs.max, particle.occurs.max)};
    if (around.occurs.max == 0) return;
    around.repeats = around.repeats || (particle.occurs.max > 1 && HoldsSeveral(particle));
    switch (particle.kind) {
      case Particle::Kind::kAny:
        elements_[parent_].holds_any = true;
        return;
      case Particle::Kind::kElement:
        TakeElement(particle, around);
        return;
      case Particle::Kind::kChoice:
        TakeBranches(particle.parts, around,
                     [this](const Particle* part, const Around& inside) { Take(*part, inside); });
        return;
      case Particle::Kind::kSequence:
      case Particle::Kind::kAll:
        for (const Particle* part : particle.parts) Take(*part, around);
        return;
    }
  }

  // A choice that repeats excludes nothing: every branch may come in its turn.
  template <typename Alternatives, typename TakeOne>
  void TakeBranches(const Alternatives& alternatives, const Around& around,
                    const TakeOne& take_one) {
    const bool excludes = alternatives.size() > 1 && !around.repeats;
    const int choice = excludes ? ++choices_ : 0;
    int number = 0;
    for (const auto& alternative : alternatives) {
      Around inside = around;
      if (alternatives.size() > 1) inside.occurs.min = 0;
      if (excludes) inside.branches.push_back({choice, ++number});
      take_one(alternative, inside);
    }
  }

  void TakeElement(const Particle& particle, const Around& around) {
    TakeBranches(StandIns(*particle.element), around,
                 [&](const Element* element, const Around& inside) {
                   const bool itself = element == particle.element;
                   const std::string& documentation = itself && !particle.documentation.empty()
                                                          ? particle.documentation
                                                          : element->documentation;
                   Add(*element, documentation, inside);
                 });
  }

  void Add(const Element& element, const std::string& documentation, const Around& around) {
    const auto [known, is_new] = children_.try_emplace(element.name, elements_.size());
    if (!is_new) {
      AddPlace(elements_[known->second], around);
      return;
    }
    if (elements_.size() == kMostElements) {
      throw Error(std::string("Схема описывает слишком много элементов"_cp1251));
    }
    TreeElement& child = elements_.emplace_back();
    child.element = &element;
    child.documentation = documentation;
    child.parent = parent_;
    child.occurs = around.occurs;
    child.branches = around.branches;
    child.repeats_in_group = around.repeats;
    elements_[parent_].children.push_back(known->second);
  }

  static void AddPlace(TreeElement& child, const Around& around) {
    TreeElement other;
    other.branches = around.branches;
    const bool both = MayMeet(child, other);
    child.occurs.min = both ? Sum(child.occurs.min, around.occurs.min) : 0;
    child.occurs.max = both ? Sum(child.occurs.max, around.occurs.max)
                            : std::max(child.occurs.max, around.occurs.max);
    child.repeats_in_group = child.repeats_in_group || around.repeats;
    child.several_places = true;
    // What is left are the choices that both places share.
    std::erase_if(child.branches, [&around](const Branch& branch) {
      return std::find(around.branches.begin(), around.branches.end(), branch) ==
             around.branches.end();
    });
  }

  std::vector<TreeElement>& elements_;
  std::size_t parent_;
  int& choices_;
  std::map<Name, std::size_t> children_;
};

}  // namespace

bool MayMeet(const TreeElement& a, const TreeElement& b) {
  for (const Branch& branch : a.branches) {
    for (const Branch& other : b.branches) {
      if (branch.choice == other.choice && branch.number != other.number) return false;
    }
  }
  return true;
}

SchemaTree::SchemaTree(const Element& root) {
  elements_.emplace_back();
  elements_.front().element = &root;
  elements_.front().documentation = root.documentation;
  int choices = 0;
  for (std::size_t next = 0; next < elements_.size(); ++next) {
    const ComplexType* type = elements_[next].element->complex;
    if (type == nullptr) continue;
    elements_[next].cut = RoundsOf(*type, next) > kRoundsOfARecursion;
    if (elements_[next].cut) continue;
    Flattening flattening(elements_, next, choices);
    for (const Particle* part : ContentOf(*type)) flattening.Take(*part);
  }
  std::size_t order = 0;
  for (const std::size_t index : InOrder()) elements_[index].order = order++;
}

// How many elements of the type stand from the root down to an element.
int SchemaTree::RoundsOf(const ComplexType& type, std::size_t index) const {
  int rounds = 0;
  for (int levels = 0;; index = elements_[index].parent) {
    rounds += elements_[index].element->complex == &type ? 1 : 0;
    if (index == kRoot) return rounds;
    if (++levels > kMostLevels) {
      throw Error(std::string("Элементы схемы вложены слишком глубоко"_cp1251));
    }
  }
}

std::vector<std::size_t> SchemaTree::InOrder() const {
  std::vector<std::size_t> order;
  std::vector<std::size_t> left{kRoot};
  while (!left.empty()) {
    const std::size_t index = left.back();
    left.pop_back();
    order.push_back(index);
    const std::vector<std::size_t>& children = elements_[index].children;
    left.insert(left.end(), children.rbegin(), children.rend());
  }
  return order;
}

std::string SchemaTree::Path(std::size_t index, std::size_t from) const {
  std::vector<std::size_t> way;
  for (; index != from; index = elements_[index].parent) way.push_back(index);
  std::string path;
  for (auto step = way.rbegin(); step != way.rend(); ++step) {
    if (!path.empty()) path += '#';
    path += elements_[*step].element->name.local;
  }
  return path;
}

}  // namespace customsconv::schema
