#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_SET_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_SET_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "platform/files.h"
#include "validation/schema/components.h"

namespace customsconv::schema {

// What a schema file and all that it includes or imports declare.
//
//   SchemaSet set(files, "C:\\ALBUM\\Inventory.xsd");
//   const Element& root = set.Root("Inventory");
//   for (const Particle* part : ContentOf(*root.complex)) …
//
// Not read: xs:redefine and xs:override (an error), identity constraints, types that a document
// chooses by xsi:type.
class SchemaSet {
 public:
  // Throws Error naming file, line and reason for a schema that cannot be read. Nothing outside
  // the file's folder is read; an import that is missing matters once something refers to it.
  SchemaSet(const Files& files, std::string_view schema_file);
  ~SchemaSet();
  SchemaSet(const SchemaSet&) = delete;
  SchemaSet& operator=(const SchemaSet&) = delete;

  // The global element of that name of the schema file itself, with all that it leads to. An
  // empty name means the only one, or the one that is named like the file. Throws Error
  // when there is none, or for a reference that leads nowhere.
  [[nodiscard]] const Element& Root(std::string_view name) CUSTOMSCONV_LIFETIME_BOUND;
  // Names of the global elements that the schema file itself declares.
  [[nodiscard]] std::vector<std::string> RootNames() const;
  [[nodiscard]] const std::string& TargetNamespace() const CUSTOMSCONV_LIFETIME_BOUND;
  // File name without folder, code page 1251.
  [[nodiscard]] const std::string& FileName() const CUSTOMSCONV_LIFETIME_BOUND;
  // The prefix that the schema file declares for a namespace; empty when it declares none.
  [[nodiscard]] std::string PrefixOf(std::string_view name_space) const;

 private:
  struct Content;

  [[nodiscard]] std::string UsualRoot() const;

  std::unique_ptr<Content> content_;
};

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_SET_H_
