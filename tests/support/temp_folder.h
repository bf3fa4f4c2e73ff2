#ifndef CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_
#define CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_

#include <filesystem>
#include <string>
#include <string_view>

namespace customsconv {

// A folder of the real file system, removed with all its content at the end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  // Path of `name` (UTF-8, "/" between folders) as the system takes it.
  [[nodiscard]] std::string operator/(std::string_view name) const { return path_ / name; }
  // The same as our own code takes it: code page 1251.
  [[nodiscard]] std::string Win(std::string_view name) const;

  // Straight to and from the disk; folders on the way are made.
  void Write(std::string_view name, std::string_view bytes) const;
  [[nodiscard]] std::string Read(std::string_view name) const;
  // Names of everything in the folder, sorted.
  [[nodiscard]] std::string Listing() const;

 private:
  std::filesystem::path path_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_TEMP_FOLDER_H_
