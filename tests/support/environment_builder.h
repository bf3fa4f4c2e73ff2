#ifndef CUSTOMSCONV_TESTS_SUPPORT_ENVIRONMENT_BUILDER_H_
#define CUSTOMSCONV_TESTS_SUPPORT_ENVIRONMENT_BUILDER_H_

#include <string>
#include <string_view>

#include "config/configuration.h"
#include "services/environment.h"
#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {

// `text` as the lines of a file: UTF-8 of a test source in code page 1251, each "\n" a CR LF.
[[nodiscard]] inline std::string WinLines(std::string_view utf8) {
  std::string lines;
  for (const char c : Win(utf8)) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  return lines;
}

// A program folder in memory with everything that an Environment refers to. Usable wherever
// an Environment is wanted. `kord_ini` is UTF-8 with "\n" between lines.
class TestEnvironment {
 public:
  explicit TestEnvironment(std::string_view kord_ini = {})
      : config_(WithFile(host, "C:\\PROG\\kord.ini", WinLines(kord_ini)), "C:\\PROG\\kord.ini",
                CreateMode::kCreate, CodePage::kWindows),
        shared_(host),
        today_(host.clock),
        environment{host,    "C:\\PROG\\", "C:\\PROG\\Data\\", "C:\\RULES\\", &config_,
                    shared_, today_} {}
  TestEnvironment(const TestEnvironment&) = delete;
  TestEnvironment& operator=(const TestEnvironment&) = delete;

  operator Environment&() { return environment; }  // implicit on purpose
  [[nodiscard]] TConfiguration& config() { return config_; }

  FakeHost host;

 private:
  static Host& WithFile(FakeHost& host, std::string_view name, const std::string& text) {
    host.files[name] = text;
    return host;
  }

  TConfiguration config_;
  SharedConfigurations shared_;
  KeptToday today_;

 public:
  Environment environment;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_ENVIRONMENT_BUILDER_H_
