#ifndef CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_SCHEMA_WORLD_H_
#define CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_SCHEMA_WORLD_H_

#include <string>
#include <string_view>

#include "support/fake_files.h"
#include "support/text.h"

namespace customsconv {

// Schema files in memory, in the folder C:\XSD.
class SchemaWorld {
 public:
  // A schema of the namespace "urn:NAME" ("urn:t" for "t.xsd"), declared as the prefix "t", with
  // the prefix "o" for "urn:o". `content` is UTF-8.
  void Schema(const std::string& name, std::string_view content,
              std::string_view attributes = "elementFormDefault=\"qualified\"") {
    const std::string name_space = "urn:" + name.substr(0, name.find('.'));
    File(name,
         "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" xmlns:t=\"urn:t\" "
         "xmlns:o=\"urn:o\" targetNamespace=\"" +
             name_space + "\" " + std::string(attributes) + ">\n" + std::string(content) +
             "\n</xs:schema>");
  }
  void File(const std::string& name, std::string_view bytes) {
    files["C:\\XSD\\" + name] = std::string(bytes);
  }

  static constexpr const char* kMain = "C:\\XSD\\t.xsd";
  FakeFiles files;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_SCHEMA_WORLD_H_
