#ifndef CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_NAMES_H_
#define CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_NAMES_H_

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "validation/schema/schema_set.h"

namespace customsconv {

// Prefixes of the namespaces of one document type, in the order of their first use.
class NamespacePrefixes {
 public:
  // `root_prefix` is that of the root's namespace; empty when it is the default one.
  NamespacePrefixes(const schema::SchemaSet& schemas, std::string_view root_prefix);

  // "cat_ru:Name", or the bare name in the default namespace and without a namespace.
  [[nodiscard]] std::string Qualified(const schema::Name& name);
  // The declarations for a start tag, each with a blank in front.
  [[nodiscard]] std::string Declarations() const;

 private:
  const std::string& PrefixOf(const std::string& name_space);

  const schema::SchemaSet& schemas_;
  std::map<std::string, std::string> prefixes_;  // by namespace
  std::set<std::string> used_;
  std::vector<std::string> order_;  // namespaces
};

// Names of the fields of one level: no name twice, none longer than a path of a rules line takes.
class DraftNames {
 public:
  static constexpr std::size_t kMostBytes = 100;

  // A name for the field at the "#"-joined path of element names. Too long a path loses the ends
  // of its longest words; "." would make a field a part of another, "_" stands for it.
  [[nodiscard]] std::string NameFor(std::string_view path);
  // Whether the path, letter case apart, was not taken yet: only the first field of a path is
  // ever filled.
  [[nodiscard]] bool TakePath(std::string_view path);

 private:
  std::set<std::string> names_;  // in capitals
  std::set<std::string> paths_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_FORMATS_DRAFT_NAMES_H_
