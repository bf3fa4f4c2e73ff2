#ifndef CUSTOMSCONV_BENCH_EXAMPLE_PROGRAM_H_
#define CUSTOMSCONV_BENCH_EXAMPLE_PROGRAM_H_

#include <string>

#include "catalogue/doc_type_list.h"
#include "config/configuration.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"

namespace customsconv::bench {

// The program folder examples/program, started up, and the schemas beside it.
class ExampleProgram {
 public:
  [[nodiscard]] Files& files() { return host_.host().files; }
  [[nodiscard]] Environment& environment() { return environment_; }
  [[nodiscard]] TDocTypeList& types() { return types_; }

 private:
  const std::string examples_ = std::string(CUSTOMSCONV_SOURCE_DIR) + "/examples/";
  const std::string program_ = examples_ + "program/";
  QuietDialogs dialogs_;
  PosixHost host_{dialogs_};
  SharedConfigurations shared_{host_};
  KeptToday today_{host_.host().clock};
  TConfiguration config_{host_, program_ + "kord.ini", CreateMode::kMustExist, CodePage::kWindows};
  Environment environment_{host_,   program_, program_ + "Data/", examples_ + "schemas/", &config_,
                           shared_, today_};
  TDocTypeList types_{"Kordwin.dcf", /*all_files=*/false, environment_};
};

}  // namespace customsconv::bench

#endif  // CUSTOMSCONV_BENCH_EXAMPLE_PROGRAM_H_
