// Loads any bytes as an ini file, writes one key, and loads again: every other
// setting must read as before, and nothing may crash.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "config/configuration.h"
#include "support/fake_host.h"

using namespace customsconv;

namespace {

constexpr const char* kFile = "C:\\A.INI";
constexpr const char* kSection = "Fuzz";
constexpr const char* kKey = "key";

void Require(bool holds) {
  if (!holds) std::abort();
}

// The key itself and its pieces, "key(1)" and so on.
bool IsWrittenKey(const std::string& section, const std::string& key) {
  return StartsWithRu(section + "_" + key, std::string(kSection) + "_" + kKey);
}

// A header line shows its name untrimmed and whole; settings are filed under
// the trimmed name within 255 bytes, which only plain names have in common.
bool IsPlain(const std::string& name) {
  return !name.empty() && name.size() < 250 && static_cast<unsigned char>(name.front()) > 32 &&
         static_cast<unsigned char>(name.back()) > 32;
}

void RequireSame(const TConfiguration& before, const TConfiguration& after) {
  for (const std::string& section : before.ReadSections()) {
    if (!IsPlain(section)) continue;
    for (const std::string& key : before.ReadSection(section)) {
      if (IsWrittenKey(section, key)) continue;
      Require(before.ReadString(section, key, "?") == after.ReadString(section, key, "?"));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  FakeHost host;
  // The code page is the first byte's business; only 1251 goes there and back unchanged.
  const auto page = static_cast<CodePage>(data[0] % 4);
  host.files[kFile] = std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1);
  const TConfiguration before(host, kFile, CreateMode::kMustExist, page);
  TConfiguration changed(host, kFile, CreateMode::kMustExist, page);
  try {
    changed.SetString(kSection, kKey, "value");
    changed.SetLongString(kSection, kKey, std::string(600, 'x'));
    changed.SetLongString(kSection, kKey, "value");
  } catch (const Error&) {
    return 0;  // UTF-8 is not written; a value that stands there already needs no writing
  }
  if (page != CodePage::kWindows) return 0;
  const TConfiguration after(host, kFile, CreateMode::kMustExist, page);
  Require(after.GetString(kSection, kKey, "") == "value");
  RequireSame(before, after);
  return 0;
}
