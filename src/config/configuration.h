#ifndef CUSTOMSCONV_CONFIG_CONFIGURATION_H_
#define CUSTOMSCONV_CONFIG_CONFIGURATION_H_

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "base/letter_case.h"
#include "base/lifetime.h"
#include "config/ini_file.h"

namespace customsconv {

// A configuration file: an ini file whose flags may be words ("ДА", "YES") and whose values may be
// lists, or longer than a line (in continuation keys).
//
//   TConfiguration config(host, "C:\\PROG\\kord.ini", CreateMode::kMustExist, CodePage::kWindows);
//   const bool check = config.GetBool("ED", "CheckXSD", true);
//   config.SetInteger("Common", "Counter", 7);  // written to the file at once
//
// The settings that the system itself reads have functions of their own in config/settings.h.
class TConfiguration : public TVeltIni {
 public:
  using TVeltIni::TVeltIni;

  // True for "1", "Y", "YES", "TRUE", "ДА" and "-1" in any case, the default for
  // an empty or absent value.
  [[nodiscard]] bool ReadBool(std::string_view section, std::string_view key,
                              bool default_value) const override;

  [[nodiscard]] std::string GetString(std::string_view section, std::string_view key,
                                      std::string_view default_value) const;
  [[nodiscard]] std::int32_t GetInteger(std::string_view section, std::string_view key,
                                        std::int32_t default_value) const;
  [[nodiscard]] bool GetBool(std::string_view section, std::string_view key,
                             bool default_value) const;
  // Word `number` (from 1) of the value, split at "," and ";".
  [[nodiscard]] std::string GetWord(std::string_view section, std::string_view key,
                                    std::size_t number) const;
  void SetString(std::string_view section, std::string_view key, std::string_view value);
  void SetInteger(std::string_view section, std::string_view key, std::int32_t value);
  void SetBool(std::string_view section, std::string_view key, bool value);
  void AppendValue(std::string_view section, std::string_view key, std::string_view value);
  [[nodiscard]] std::string GetLongString(std::string_view section, std::string_view key,
                                          std::string_view default_value) const;
  void SetLongString(std::string_view section, std::string_view key, std::string_view value);
};

// One TConfiguration a file, for the ini files beside kord.ini. A file that changed since its
// object was made gets a new object; references to the old one end there.
class SharedConfigurations {
 public:
  explicit SharedConfigurations(Host& host) : host_(host) {}
  // Throws Error when the file does not exist.
  TConfiguration& Get(std::string_view file_name, CodePage code_page) CUSTOMSCONV_LIFETIME_BOUND;

 private:
  Host& host_;
  std::map<std::string, std::unique_ptr<TConfiguration>, std::less<>> configurations_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_CONFIGURATION_H_
