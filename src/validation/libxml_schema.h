#ifndef CUSTOMSCONV_VALIDATION_LIBXML_SCHEMA_H_
#define CUSTOMSCONV_VALIDATION_LIBXML_SCHEMA_H_

#include <libxml/xmlschemas.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "platform/files.h"

namespace customsconv {

// A schema ready for use, and the files it was made from.
class CompiledSchema {
 public:
  // Throws Error naming the file, the line and what is wrong with it.
  CompiledSchema(const Files& files, std::string_view schema_file);
  ~CompiledSchema();
  CompiledSchema(const CompiledSchema&) = delete;
  CompiledSchema& operator=(const CompiledSchema&) = delete;

  // All files, also those that were looked for and missing, are as they were.
  [[nodiscard]] bool IsCurrent() const;
  [[nodiscard]] xmlSchemaPtr get() const { return schema_; }
  // In UTF-8; empty for a schema without one.
  [[nodiscard]] std::string_view TargetNamespace() const CUSTOMSCONV_LIFETIME_BOUND;

 private:
  friend class SchemaFolder;
  struct UsedFile {
    std::string path;
    FileStamp stamp;
  };
  const Files& files_;
  std::vector<UsedFile> used_files_;
  xmlSchemaPtr schema_ = nullptr;
};

// While it lives, libxml2 reads nothing at all by itself on this thread.
class NoExternalFiles {
 public:
  NoExternalFiles();
  ~NoExternalFiles();
  NoExternalFiles(const NoExternalFiles&) = delete;
  NoExternalFiles& operator=(const NoExternalFiles&) = delete;

 private:
  xmlExternalEntityLoader former_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_LIBXML_SCHEMA_H_
