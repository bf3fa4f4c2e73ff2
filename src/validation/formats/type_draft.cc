#include "validation/formats/type_draft.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "text/words.h"
#include "validation/formats/draft_names.h"
#include "validation/formats/draft_text.h"
#include "validation/formats/field_form.h"
#include "validation/schema/facets.h"
#include "validation/schema/schema_tree.h"

namespace customsconv {
namespace {

using schema::SchemaTree;
using schema::SimpleType;
using schema::TreeElement;

// A path is looked up in its first 255 bytes; one that comes near gets a block on the way.
constexpr std::size_t kLongPath = 200;
constexpr int kMostBranches = 255;

std::string Win(std::string_view utf8) { return ToWindows(utf8, CodePage::kUtf8); }

// Writes the Fields section: goes through the elements of a schema in their order and says how
// the catalogue keeps each.
class FieldsDraft {
 public:
  FieldsDraft(const SchemaTree& tree, NamespacePrefixes& prefixes, DraftText& text)
      : tree_(tree), prefixes_(prefixes), text_(text), may_be_empty_(tree.Count(), false) {
    // Children stand behind their parents.
    for (std::size_t index = tree.Count(); index-- > 0;) may_be_empty_[index] = MayBeEmpty(index);
  }

  void Write() {
    levels_.push_back({SchemaTree::kRoot, {}});
    const TreeElement& root = tree_.Root();
    TellWhatIsLost(root);
    if (root.element->complex != nullptr) WriteAttributes(*root.element);
    if (TextOf(*root.element) != nullptr) WriteNodeText(*root.element);
    PushChildren(root, 0);
    while (!steps_.empty()) {
      const Step step = steps_.back();
      steps_.pop_back();
      if (step.closes_block) {
        text_.CloseBlock();
        levels_.pop_back();
      } else {
        Visit(step.index, step.branch);
      }
    }
  }

  [[nodiscard]] const std::vector<std::string>& main_blocks() const { return main_blocks_; }

 private:
  // A block that is being written.
  struct Level {
    std::size_t element;
    DraftNames names;
  };
  // An element to come. `branch` is the number of the branch of a choice around it, 0 without.
  struct Step {
    std::size_t index = 0;
    int branch = 0;
    bool closes_block = false;
  };

  void PushChildren(const TreeElement& parent, int branch) {
    for (auto child = parent.children.rbegin(); child != parent.children.rend(); ++child) {
      steps_.push_back({*child, branch});
    }
  }

  void Visit(std::size_t index, int branch) {
    const TreeElement& element = tree_.At(index);
    const std::string path = Path(index);
    if (!levels_.back().names.TakePath(path)) {
      text_.Comment(path + std::string(": этот путь уже занят, элемент не читается"_cp1251));
      return;
    }
    if (!element.branches.empty()) branch = BranchOf(index, branch);
    const SimpleType* value = TextOf(*element.element);
    if (IsBlock(index)) {
      OpenBlock(index, path);
    } else if (value != nullptr) {
      WriteValue(index, path, *value, branch);
    } else {
      WriteGroup(index, path, branch);
    }
  }

  // ---- Where an element stands

  [[nodiscard]] std::string Path(std::size_t index) const {
    return Win(tree_.Path(index, levels_.back().element));
  }

  // The path with the prefixes of namespaces.
  [[nodiscard]] std::string XmlPath(std::size_t index) {
    std::vector<std::size_t> way;
    for (; index != levels_.back().element; index = tree_.At(index).parent) way.push_back(index);
    std::string path;
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
      if (!path.empty()) path += '#';
      path += prefixes_.Qualified(tree_.At(*step).element->name);
    }
    return Win(path);
  }

  [[nodiscard]] std::string CaptionOf(const TreeElement& element) const {
    return Win(element.documentation.empty() ? element.element->name.local : element.documentation);
  }

  // ---- Blocks

  [[nodiscard]] bool IsBlock(std::size_t index) const {
    const TreeElement& element = tree_.At(index);
    const SimpleType* value = TextOf(*element.element);
    if (value == nullptr) {
      return element.Repeats() || (!element.children.empty() && Path(index).size() > kLongPath);
    }
    const bool attributes =
        element.element->complex != nullptr && !AttributesOf(*element.element->complex).empty();
    return attributes || (element.Repeats() && (IsLongText(*value) || element.repeats_in_group));
  }

  void OpenBlock(std::size_t index, const std::string& path) {
    const TreeElement& element = tree_.At(index);
    TellWhatIsLost(element);
    const std::string name = levels_.back().names.NameFor(path);
    if (levels_.size() == 1 && element.element->complex != nullptr) main_blocks_.push_back(name);
    if (element.Required() && may_be_empty_[index]) TellNotKeptEmpty(path);
    text_.OpenBlock(name, CaptionOf(element), XmlPath(index));
    levels_.push_back({index, {}});
    steps_.push_back({index, 0, /*closes_block=*/true});
    if (TextOf(*element.element) != nullptr) WriteNodeText(*element.element);
    if (element.element->complex != nullptr) WriteAttributes(*element.element);
    PushChildren(element, 0);
  }

  void WriteNodeText(const schema::Element& element) {
    DraftField field;
    field.name = levels_.back().names.NameFor("NodeText");
    field.caption = "Текст элемента"_cp1251;
    Take(FormOf(*TextOf(element)), field);
    text_.Add(field);
  }

  // An attribute is found by its name alone, whatever element of the level bears it.
  void WriteAttributes(const schema::Element& element) {
    for (const schema::Attribute* attribute : AttributesOf(*element.complex)) {
      WriteAttribute(*attribute, Win(attribute->name.local));
    }
  }

  void WriteAttribute(const schema::Attribute& attribute, const std::string& path) {
    const std::string key = "att=" + Win(attribute.name.local);
    if (!levels_.back().names.TakePath(key)) {
      text_.Comment(path + std::string(": поле с этим атрибутом уже есть"_cp1251));
      return;
    }
    DraftField field;
    field.name = levels_.back().names.NameFor(path);
    field.format = "T" + std::to_string(WidthOf(attribute));
    field.caption = attribute.documentation.empty() ? field.name : Win(attribute.documentation);
    field.xml_path = key;
    text_.Add(field);
    const bool in_root_tag = levels_.size() == 1 && attribute.fixed;
    if (attribute.required && !in_root_tag) {
      text_.Comment(path + std::string(": обязательный атрибут не выгружается"_cp1251));
    }
  }

  static int WidthOf(const schema::Attribute& attribute) {
    constexpr int kUnlimited = 50;
    const int most = MostCharacters(*attribute.type).value_or(kUnlimited);
    return attribute.fixed ? static_cast<int>(attribute.fixed->size()) : most;
  }

  // ---- Groups: elements that lend their names to the fields inside

  void WriteGroup(std::size_t index, const std::string& path, int branch) {
    const TreeElement& element = tree_.At(index);
    const bool is_branch = !element.branches.empty() && branch > 0;
    if (is_branch) {
      DraftField field;
      field.name = levels_.back().names.NameFor(path);
      field.format = "B";
      field.caption = CaptionOf(element);
      field.xml_path = XmlPath(index);
      text_.Add(field);
    } else {
      text_.Heading(CaptionOf(element));
    }
    TellWhatIsLost(element);
    if (element.element->complex != nullptr) {
      for (const schema::Attribute* attribute : AttributesOf(*element.element->complex)) {
        WriteAttribute(*attribute, path + "#" + Win(attribute->name.local));
      }
    }
    KeepWhenEmpty(index, path);
    PushChildren(element, branch);
  }

  // A required element whose content may be empty is written empty, too, by PRNT of a field
  // inside. That keeps all elements that the field enters, so they must be required as well.
  void KeepWhenEmpty(std::size_t index, const std::string& path) {
    if (!tree_.At(index).Required() || !may_be_empty_[index]) return;
    for (std::size_t at = index; at != levels_.back().element; at = tree_.At(at).parent) {
      if (tree_.At(at).Required()) continue;
      TellNotKeptEmpty(path);
      return;
    }
    const std::string mark = Win(tree_.At(index).element->name.local) + "_required";
    DraftField field;
    field.name = levels_.back().names.NameFor(path + "#" + mark);
    field.format = "T1";
    field.caption = "Элемент обязателен и пустым"_cp1251;
    field.xml_path = XmlPath(index) + "#" + mark;
    field.attributes = " PRNT=\"1\"";
    text_.Add(field);
  }

  void TellNotKeptEmpty(const std::string& path) {
    text_.Comment(path + std::string(": обязателен, но пустым не выгружается"_cp1251));
  }

  [[nodiscard]] bool MayBeEmpty(std::size_t index) const {
    if (TextOf(*tree_.At(index).element) != nullptr) return false;
    const std::vector<std::size_t>& children = tree_.At(index).children;
    return std::none_of(children.begin(), children.end(), [this](std::size_t child) {
      return tree_.At(child).Required() && !may_be_empty_[child];
    });
  }

  // ---- Choices

  // The number of the branch that the element begins or lies in. The choice gets its field when
  // its first element comes.
  int BranchOf(std::size_t index, int around) {
    const TreeElement& element = tree_.At(index);
    const schema::Branch& branch = element.branches.front();
    const auto [known, is_new] = told_choices_.try_emplace(branch.choice, false);
    if (is_new) known->second = around == 0 && WriteChoice(index);
    if (is_new && !known->second) TellBranches(index);
    return known->second ? branch.number : around;
  }

  // False when the catalogue cannot keep the number of the branch.
  bool WriteChoice(std::size_t first) {
    const TreeElement& element = tree_.At(first);
    for (const std::size_t child : BranchesAt(first)) {
      if (HoldsBlock(child) || tree_.At(child).branches.front().number > kMostBranches)
        return false;
    }
    const std::string name = Win(element.element->name.local) + "_choice";
    const std::string around = Path(element.parent);
    const std::string xml_around = XmlPath(element.parent);
    DraftField field;
    field.name = levels_.back().names.NameFor(around.empty() ? name : around + "#" + name);
    field.format = "T3";
    field.caption = "Номер заполненной ветви"_cp1251;
    field.xml_path = xml_around.empty() ? name : xml_around + "#" + name;
    text_.Add(field);
    return true;
  }

  // The elements of the same choice, in order.
  [[nodiscard]] std::vector<std::size_t> BranchesAt(std::size_t first) const {
    std::vector<std::size_t> branches;
    const int choice = tree_.At(first).branches.front().choice;
    for (const std::size_t child : tree_.At(tree_.At(first).parent).children) {
      const TreeElement& element = tree_.At(child);
      if (!element.branches.empty() && element.branches.front().choice == choice) {
        branches.push_back(child);
      }
    }
    return branches;
  }

  // A block ends the fields that a choice looks back over.
  [[nodiscard]] bool HoldsBlock(std::size_t index) const {
    std::vector<std::size_t> left{index};
    while (!left.empty()) {
      const std::size_t at = left.back();
      left.pop_back();
      if (IsBlock(at)) return true;
      const std::vector<std::size_t>& children = tree_.At(at).children;
      left.insert(left.end(), children.begin(), children.end());
    }
    return false;
  }

  void TellBranches(std::size_t first) {
    std::string names;
    int last = 0;
    for (const std::size_t child : BranchesAt(first)) {
      const TreeElement& element = tree_.At(child);
      const int number = std::exchange(last, element.branches.front().number);
      if (!names.empty()) names.append(number == last ? ", " : " | ");
      names += Win(element.element->name.local);
    }
    text_.Comment(std::string("одно из, номер ветви не хранится: "_cp1251) + names);
  }

  // ---- Values

  void WriteValue(std::size_t index, const std::string& path, const SimpleType& value, int branch) {
    const TreeElement& element = tree_.At(index);
    TellWhatIsLost(element);
    DraftField field;
    field.name = levels_.back().names.NameFor(path);
    field.caption = CaptionOf(element);
    field.xml_path = XmlPath(index);
    const bool gathered = element.Repeats();
    Take(gathered ? GatheredFormOf(value, element.occurs.max) : FormOf(value), field);
    if (gathered) field.attributes += " SEQ=\"1\"";
    if (branch > 0) field.attributes += " CHOICE=\"" + std::to_string(branch) + "\"";
    text_.Add(field);
  }

  void Take(const FieldForm& form, DraftField& field) {
    for (const std::string& loss : form.losses) text_.Comment(field.name + ": " + loss);
    field.format = form.format;
    field.pattern = form.pattern;
  }

  // What no line of the catalogue says about the element.
  void TellWhatIsLost(const TreeElement& element) {
    const std::string name = Win(element.element->name.local) + ": ";
    const schema::ComplexType* type = element.element->complex;
    const std::pair<bool, std::string_view> losses[] = {
        {element.cut, "вложен сам в себя, глубже не описан"_cp1251},
        {element.holds_any, "держит и элементы, которых нет в схеме; они не читаются"_cp1251},
        {type != nullptr && type->mixed, "текст между элементами не читается"_cp1251},
        {type != nullptr && type->any_attribute,
         "атрибуты, которых нет в схеме, не читаются"_cp1251},
        {element.element->nillable, "xsi:nil не выгружается"_cp1251},
        {type == nullptr && element.element->simple == nullptr,
         "любое содержание, не читается"_cp1251},
        {element.several_places, "стоит в схеме в нескольких местах, выгружается в первом"_cp1251},
        {element.repeats_in_group, "повторяется вместе с соседями, порядок не хранится"_cp1251}};
    for (const auto& [holds, text] : losses) {
      if (holds) text_.Comment(name + std::string(text));
    }
  }

  const SchemaTree& tree_;
  NamespacePrefixes& prefixes_;
  DraftText& text_;
  std::vector<Level> levels_;
  std::vector<Step> steps_;
  std::vector<bool> may_be_empty_;
  std::map<int, bool> told_choices_;  // the catalogue keeps the branch
  std::vector<std::string> main_blocks_;
};

// The start tag of the root with the attributes that always stand in it.
std::string RootTag(const schema::Element& root, NamespacePrefixes& prefixes) {
  std::string tag = "<" + prefixes.Qualified(root.name) + prefixes.Declarations();
  if (root.complex != nullptr) {
    for (const schema::Attribute* attribute : AttributesOf(*root.complex)) {
      if (!attribute->required || !attribute->fixed) continue;
      tag.append(" ").append(attribute->name.local).append("=\"").append(*attribute->fixed) += '"';
    }
  }
  return Win(tag + ">");
}

void WriteHeader(const std::string& code, const schema::Element& root, const std::string& tag,
                 const std::vector<std::string>& main_blocks, DraftText& text) {
  const std::string name = Win(root.name.local);
  text.Line("[" + code + ".HEADER]");
  text.Line("FullName=" + (root.documentation.empty() ? name : Win(root.documentation)));
  text.Line("ShortName=" + code);
  if (!main_blocks.empty()) {
    std::string choice("; MainBlock - один из блоков: "_cp1251);
    for (const std::string& block : main_blocks) {
      choice.append(block == main_blocks.front() ? "" : ", ").append(block);
    }
    text.Line(choice);
  }
  text.Line("XmlType=" + name);
  text.Line("Prefix=" + tag);
  text.Line("XmlCoding=UTF-8");
  text.Line("");
}

// Elements without a namespace cannot stand below one that is the default.
std::string RootPrefix(const schema::SchemaSet& schemas, const SchemaTree& tree,
                       const std::string& wanted) {
  if (!wanted.empty() || schemas.TargetNamespace().empty()) return wanted;
  for (std::size_t index = 0; index < tree.Count(); ++index) {
    if (!tree.At(index).element->name.name_space.empty()) continue;
    const std::string declared = schemas.PrefixOf(schemas.TargetNamespace());
    return declared.empty() ? "doc" : declared;
  }
  return {};
}

}  // namespace

std::string DraftType(schema::SchemaSet& schemas, const DraftOptions& options) {
  const schema::Element& root = schemas.Root(options.root);
  const SchemaTree tree(root);
  const std::string code = options.code.empty() ? Win(root.name.local) : Win(options.code);
  NamespacePrefixes prefixes(schemas, RootPrefix(schemas, tree, options.prefix));
  DraftText fields;
  FieldsDraft draft(tree, prefixes, fields);
  draft.Write();

  DraftText text;
  text.Line(std::string("; Черновик по схеме "_cp1251) + schemas.FileName() +
            std::string(". Что язык каталога не может сказать, стоит в пояснениях."_cp1251));
  WriteHeader(code, root, RootTag(root, prefixes), draft.main_blocks(), text);
  text.Line("[" + code + ".Fields]");
  return text.Text() + fields.Text();
}

}  // namespace customsconv
