#include "validation/formats/draft_names.h"

#include <algorithm>

#include "base/letter_case.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kPathSeparator("#");

// `words` joined by "#", each cut to at most `most` bytes.
std::string JoinCut(const std::vector<std::string_view>& words, std::size_t most) {
  std::string name;
  for (const std::string_view word : words) {
    if (!name.empty()) name += '#';
    name.append(word.substr(0, most));
  }
  return name;
}

}  // namespace

NamespacePrefixes::NamespacePrefixes(const schema::SchemaSet& schemas, std::string_view root_prefix)
    : schemas_(schemas) {
  const std::string& root = schemas.TargetNamespace();
  prefixes_.emplace(root, root_prefix);
  used_.emplace(root_prefix);
  if (!root.empty()) order_.push_back(root);
}

std::string NamespacePrefixes::Qualified(const schema::Name& name) {
  if (name.name_space.empty()) return name.local;
  const std::string& prefix = PrefixOf(name.name_space);
  return prefix.empty() ? name.local : prefix + ":" + name.local;
}

const std::string& NamespacePrefixes::PrefixOf(const std::string& name_space) {
  const auto [known, is_new] = prefixes_.try_emplace(name_space);
  if (!is_new) return known->second;
  std::string wanted = schemas_.PrefixOf(name_space);
  if (wanted.empty()) wanted = "ns";
  std::string prefix = wanted;
  for (int number = 2; !used_.insert(prefix).second; ++number) {
    prefix = wanted + std::to_string(number);
  }
  order_.push_back(name_space);
  return known->second = prefix;
}

std::string NamespacePrefixes::Declarations() const {
  std::string text;
  for (const std::string& name_space : order_) {
    const std::string& prefix = prefixes_.at(name_space);
    text.append(" xmlns").append(prefix.empty() ? "" : ":" + prefix);
    text.append("=\"").append(name_space).append("\"");
  }
  return text;
}

std::string DraftNames::NameFor(std::string_view path) {
  const std::string whole = ReplaceChar(path, '.', '_');
  const std::vector<std::string_view> words = Words(whole, kPathSeparator);
  std::string name = whole;
  for (std::size_t most = kMostBytes; name.size() > kMostBytes && most > 1; --most) {
    name = JoinCut(words, most);
  }
  name.resize(std::min(name.size(), kMostBytes));
  const std::string wanted = name;
  for (int number = 2; !names_.insert(UpperCaseRu(name)).second; ++number) {
    const std::string digits = std::to_string(number);
    name = wanted.substr(0, kMostBytes - digits.size()) + digits;
  }
  return name;
}

bool DraftNames::TakePath(std::string_view path) { return paths_.insert(UpperCaseRu(path)).second; }

}  // namespace customsconv
