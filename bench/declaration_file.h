#ifndef CUSTOMSCONV_BENCH_DECLARATION_FILE_H_
#define CUSTOMSCONV_BENCH_DECLARATION_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "declaration_generator.h"
#include "platform/files.h"

namespace customsconv::bench {

// A generated file of declarations, gone with the object.
class DeclarationFile {
 public:
  DeclarationFile(std::int64_t megabytes, int documents, Files& files)
      : path_((std::filesystem::temp_directory_path() / "customsconv-bench.xml").string()) {
    const std::string text =
        GenerateDeclarations(ShapeOfSize(static_cast<std::size_t>(megabytes) << 20, documents));
    size_ = text.size();
    files.Replace(path_, text);
  }
  ~DeclarationFile() { std::filesystem::remove(path_); }
  DeclarationFile(const DeclarationFile&) = delete;
  DeclarationFile& operator=(const DeclarationFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  std::string path_;
  std::size_t size_ = 0;
};

}  // namespace customsconv::bench

#endif  // CUSTOMSCONV_BENCH_DECLARATION_FILE_H_
