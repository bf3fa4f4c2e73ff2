#ifndef CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_
#define CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/text.h"

namespace customsconv {

// All bytes of a file of the real file system.
[[nodiscard]] inline std::string FileBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("no such file: " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

// A folder of the real file system, removed with all its content at the end.
class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "customsconv-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TempFolder() {
    std::error_code ignored;  // a leftover in the temporary folder harms nobody
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  // Path of `name` (UTF-8, "/" between folders) as the system takes it.
  [[nodiscard]] std::string operator/(std::string_view name) const { return path_ / name; }
  // The same as our own code takes it: code page 1251.
  [[nodiscard]] std::string Win(std::string_view name) const {
    return customsconv::Win((path_ / name).string());
  }

  // Straight to and from the disk; folders on the way are made.
  void Write(std::string_view name, std::string_view bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  [[nodiscard]] std::string Read(std::string_view name) const { return FileBytes(path_ / name); }
  // Names of everything in the folder, sorted.
  [[nodiscard]] std::string Listing() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.insert(entry.path().filename());
    }
    std::string listing;
    for (const std::string& name : names) listing += (listing.empty() ? "" : " ") + name;
    return listing;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_
