#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_FILES_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_FILES_H_

#include <libxml/tree.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/lifetime.h"
#include "platform/files.h"
#include "validation/schema/components.h"

namespace customsconv::schema {

// The schema files that one file leads to by "include" and "import", as XML trees, and what they
// declare globally. Only files below the first one's folder are read, never anything from a
// network.
class SchemaFiles {
 public:
  // One file as it was included: a file without a namespace of its own takes the includer's.
  struct File {
    std::string name;  // below the first one's folder, code page 1251
    std::string name_space;
    bool elements_qualified = false;  // local elements belong to the namespace
    bool attributes_qualified = false;
    const xmlNode* root = nullptr;
  };
  // A declaration and the file that it stands in.
  struct Node {
    const xmlNode* node = nullptr;
    const File* file = nullptr;
  };

  // Throws Error naming the file and what is wrong with it: it is missing or no XML, its root is
  // no schema, a file that it includes is missing. A missing import is passed over.
  SchemaFiles(const Files& files, std::string_view schema_file);
  ~SchemaFiles();
  SchemaFiles(const SchemaFiles&) = delete;
  SchemaFiles& operator=(const SchemaFiles&) = delete;

  [[nodiscard]] const File& Main() const CUSTOMSCONV_LIFETIME_BOUND { return files_.front(); }
  // The global declaration of a kind ("element", "complexType", ...); a null node for none.
  [[nodiscard]] Node Find(std::string_view kind, const Name& name) const;
  // The global elements of all files, in the order in which they were met.
  [[nodiscard]] const std::vector<Node>& Elements() const CUSTOMSCONV_LIFETIME_BOUND {
    return elements_;
  }

  // The name that an attribute's value stands for ("p:Name" by the declarations in reach).
  [[nodiscard]] static Name Resolve(const Node& at, std::string_view value);
  [[nodiscard]] static Place PlaceOf(const Node& at);
  // Error about a place: "Не могу использовать схему FILE, строка N: REASON".
  [[noreturn]] static void Fail(const Node& at, std::string_view reason_1251);

 private:
  struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
  };

  const xmlNode* Parse(const std::string& name);
  void Load(const std::string& name, std::string_view name_space);
  void TakeDeclarations(const File& file);
  void Follow(const Node& reference);

  const Files& host_files_;
  std::string folder_;
  std::map<std::string, std::unique_ptr<xmlDoc, FreeDocument>> documents_;  // by file name
  std::deque<File> files_;
  std::map<std::tuple<std::string, Name>, Node, std::less<>> declarations_;
  std::vector<Node> elements_;
};

// Text of an attribute; empty when there is none.
[[nodiscard]] std::string AttributeText(const xmlNode& node, const char* name);
[[nodiscard]] bool HasAttribute(const xmlNode& node, const char* name);
// The element children that belong to the schema language, but for annotations.
[[nodiscard]] std::vector<const xmlNode*> SchemaChildren(const xmlNode& node);
[[nodiscard]] std::string_view LocalName(const xmlNode& node CUSTOMSCONV_LIFETIME_BOUND);
// What the node's annotation says, in one line.
[[nodiscard]] std::string DocumentationOf(const xmlNode& node);

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_FILES_H_
