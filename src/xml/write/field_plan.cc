#include "xml/write/field_plan.h"

#include <utility>

#include "base/characters.h"
#include "base/unicode.h"
#include "text/char_set.h"
#include "text/xml_escape.h"

namespace customsconv {
namespace {

constexpr char kLevelMark = '#';
constexpr std::string_view kNoElement = "NOP";
constexpr std::string_view kOutsideNames = " \"&'<>";

bool BeginsName(char c) { return c == '_' || (IsLetterOrDigit(c) && !IsDigit(c)); }

// The elements that are open between two fields of a level.
class OpenPath {
 public:
  // Leaves what `name` does not lie in, and takes the rest off the name. Returns how
  // many elements that were.
  std::size_t Leave(std::string_view& name) {
    std::size_t left = 0;
    for (; !ends_.empty(); ++left) {
      if (name.starts_with(path_) && name.substr(path_.size()).starts_with(kLevelMark)) {
        name.remove_prefix(path_.size() + 1);
        break;
      }
      ends_.pop_back();
      path_.resize(ends_.empty() ? 0 : ends_.back());
    }
    return left;
  }

  void Enter(std::string_view word) {
    if (!path_.empty()) path_ += kLevelMark;
    path_.append(word);
    ends_.push_back(path_.size());
  }

 private:
  std::string path_;
  std::vector<std::size_t> ends_;  // of each word in the path
};

}  // namespace

std::string ValidElementName(std::string_view word) {
  std::string name(word);
  bool changed = false;
  for (char& c : name) {
    if (kOutsideNames.find(c) == std::string_view::npos) continue;
    c = '_';
    changed = true;
  }
  if (changed) return '_' + name;
  return !name.empty() && BeginsName(name.front()) ? name : "G_" + name;
}

FieldPlan::FieldPlan(const TBasis& basis, bool utf8, PatternCache& patterns) {
  const auto encoded = [utf8](std::string text) { return utf8 ? Utf8FromWin(text) : text; };
  OpenPath path;
  for (int position = 0; position < basis.Count(); ++position) {
    const TFieldInfo& field = basis.Item(position);
    std::string_view name = field.xml_path.empty() ? field.name : field.xml_path;
    if (name == kNoElement) continue;
    FieldStep step;
    step.position = position;
    step.field = &field;
    step.closes = path.Leave(name);
    step.first_open = entered.size();
    for (std::size_t end = name.find(kLevelMark); end != name.npos; end = name.find(kLevelMark)) {
      if (end > 0) {
        path.Enter(name.substr(0, end));
        entered.push_back(name.substr(0, end));
      }
      name.remove_prefix(end + 1);
    }
    step.opens = entered.size() - step.first_open;
    step.rest = name;
    step.element = encoded(ValidElementName(name));
    if (name.find_first_of(kOutsideNames) != name.npos) {
      step.attribute = encoded(" Name=\"" + XmlEscape(field.name) + '"');
    }
    step.piece_width = field.seq != 0 ? basis.TotalWidth(position) : 0;
    if (!field.pattern.empty()) step.pattern = &patterns.Get(field.pattern);
    steps.push_back(std::move(step));
  }
}

}  // namespace customsconv
