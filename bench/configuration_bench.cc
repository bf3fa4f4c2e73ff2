// Loading a configuration and changing one value of it, against writing its file. The argument is
// the number of lines.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "config/configuration.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"

namespace customsconv::bench {
namespace {

constexpr int kLinesOfASection = 50;

std::string ConfigurationText(std::int64_t lines) {
  std::string text;
  for (std::int64_t i = 0; i < lines; ++i) {
    if (i % kLinesOfASection == 0) {
      text += "[Section" + std::to_string(i) + "]\r\n";
    } else {
      text += "Key" + std::to_string(i) + "=value of line " + std::to_string(i) + "\r\n";
    }
  }
  return text;
}

// A configuration file of that many lines, gone with the object.
class ConfigurationFile {
 public:
  explicit ConfigurationFile(std::int64_t lines)
      : path_((std::filesystem::temp_directory_path() / "customsconv-bench.ini").string()),
        text_(ConfigurationText(lines)) {
    Write();
  }
  ~ConfigurationFile() { std::filesystem::remove(path_); }
  ConfigurationFile(const ConfigurationFile&) = delete;
  ConfigurationFile& operator=(const ConfigurationFile&) = delete;

  void Write() { host_.host().files.Replace(path_, text_); }
  [[nodiscard]] TConfiguration Load() {
    return TConfiguration(host_, path_, CreateMode::kMustExist, CodePage::kWindows);
  }

 private:
  QuietDialogs dialogs_;
  PosixHost host_{dialogs_};
  std::string path_;
  std::string text_;
};

void LoadConfiguration(benchmark::State& state) {
  ConfigurationFile file(state.range(0));
  for (auto _ : state) {
    const TConfiguration configuration = file.Load();
    benchmark::DoNotOptimize(configuration.GetString("Section50", "Key51", ""));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void WriteString(benchmark::State& state) {
  ConfigurationFile file(state.range(0));
  TConfiguration configuration = file.Load();
  int value = 0;
  for (auto _ : state) configuration.WriteString("Section50", "Key51", std::to_string(++value));
}

// The same bytes, as safely: beside the file, flushed, then put in its place.
void WriteFile(benchmark::State& state) {
  ConfigurationFile file(state.range(0));
  for (auto _ : state) file.Write();
}

#define LINES                         \
  ->ArgName("lines")                  \
      ->Arg(10'000)                   \
      ->Arg(100'000)                  \
      ->Arg(1'000'000)                \
      ->Unit(benchmark::kMillisecond) \
      ->UseRealTime()
BENCHMARK(LoadConfiguration) LINES;
BENCHMARK(WriteString) LINES;
BENCHMARK(WriteFile) LINES;
#undef LINES

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
