#include "support/temp_folder.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "support/text.h"

namespace customsconv {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
  std::string name = (fs::temp_directory_path() / "customsconv-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;  // a leftover in the temporary folder harms nobody
  fs::remove_all(path_, ignored);
}

std::string TempFolder::Win(std::string_view name) const {
  return customsconv::Win((path_ / name).string());
}

void TempFolder::Write(std::string_view name, std::string_view bytes) const {
  fs::create_directories((path_ / name).parent_path());
  std::ofstream(path_ / name, std::ios::binary) << bytes;
}

std::string TempFolder::Read(std::string_view name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  if (!file) throw std::runtime_error("no such file: " + std::string(name));
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string TempFolder::Listing() const {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) names.insert(entry.path().filename());
  std::string listing;
  for (const std::string& name : names) listing += (listing.empty() ? "" : " ") + name;
  return listing;
}

}  // namespace customsconv
