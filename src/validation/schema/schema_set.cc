#include "validation/schema/schema_set.h"

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/unicode.h"
#include "text/file_names.h"
#include "validation/schema/component_builder.h"
#include "validation/schema/schema_files.h"

namespace customsconv::schema {

// The files and the components that were built from them so far: a set builds what it is asked for.
struct SchemaSet::Content {
  Content(const Files& files, std::string_view schema_file)
      : schema_files(files, schema_file), builder(schema_files) {}

  SchemaFiles schema_files;
  ComponentBuilder builder;
};

SchemaSet::SchemaSet(const Files& files, std::string_view schema_file)
    : content_(std::make_unique<Content>(files, schema_file)) {}

SchemaSet::~SchemaSet() = default;

const Element& SchemaSet::Root(std::string_view name) {
  const std::string chosen = name.empty() ? UsualRoot() : std::string(name);
  const SchemaFiles::Node at = content_->schema_files.Find("element", {TargetNamespace(), chosen});
  if (at.node == nullptr) {
    throw Error(std::string("Схема "_cp1251) + FileName() +
                std::string(" не описывает корневой элемент "_cp1251) +
                ToWindows(chosen, CodePage::kUtf8));
  }
  return content_->builder.Build(at);
}

std::string SchemaSet::UsualRoot() const {
  const std::vector<std::string> names = RootNames();
  return names.size() == 1 ? names.front() : Utf8FromWin(ExtractFileBaseName(FileName()));
}

std::vector<std::string> SchemaSet::RootNames() const {
  std::vector<std::string> names;
  for (const xmlNode* child : SchemaChildren(*content_->schema_files.Main().root)) {
    if (LocalName(*child) == "element") names.push_back(AttributeText(*child, "name"));
  }
  return names;
}

const std::string& SchemaSet::TargetNamespace() const {
  return content_->schema_files.Main().name_space;
}

const std::string& SchemaSet::FileName() const { return content_->schema_files.Main().name; }

std::string SchemaSet::PrefixOf(std::string_view name_space) const {
  for (const xmlNs* ns = content_->schema_files.Main().root->nsDef; ns != nullptr; ns = ns->next) {
    if (ns->prefix == nullptr || ns->href == nullptr) continue;
    if (reinterpret_cast<const char*>(ns->href) == name_space) {
      return reinterpret_cast<const char*>(ns->prefix);
    }
  }
  return {};
}

}  // namespace customsconv::schema
