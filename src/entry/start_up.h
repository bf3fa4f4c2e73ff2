#ifndef CUSTOMSCONV_ENTRY_START_UP_H_
#define CUSTOMSCONV_ENTRY_START_UP_H_

#include <memory>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "catalogue/doc_type_list.h"
#include "config/configuration.h"
#include "platform/host.h"
#include "platform/noting_dialogs.h"
#include "services/environment.h"

namespace customsconv {

inline constexpr std::string_view kDcfFileName = "Kordwin.dcf";

// The process-wide state: the folders of the run, the configuration and the catalogue
// of document types. Every call of an export starts it up anew and so replaces what an
// earlier call left; a catalogue whose files are as they were is kept, unless something was told
// meanwhile, which is told again at each call.
class StartUpState {
 public:
  // `host` must outlive the state.
  explicit StartUpState(Host& host);

  // `program_dir` as the caller passed it, `aux_dir` the folder part of the
  // export's second argument. False when the catalogue cannot be loaded. Throws Error
  // when kord.ini is missing or cannot be opened.
  [[nodiscard]] bool StartUp(std::string_view program_dir, std::string_view aux_dir);
  // Releases configuration and catalogue.
  void TearDown();

  [[nodiscard]] Environment& environment() CUSTOMSCONV_LIFETIME_BOUND { return environment_; }
  // The last start-up returned true, and nothing was released since.
  [[nodiscard]] bool is_started() const { return environment_.config != nullptr; }
  // Only while it is started.
  [[nodiscard]] TDocTypeList& types() CUSTOMSCONV_LIFETIME_BOUND { return *types_; }
  // Why the last start-up returned false; empty when the user has been told.
  [[nodiscard]] const std::string& quiet_failure() const CUSTOMSCONV_LIFETIME_BOUND {
    return quiet_failure_;
  }

 private:
  void LoadTypes();

  NotingDialogs dialogs_;
  Host host_;
  SharedConfigurations shared_;
  KeptToday today_;
  Environment environment_;
  std::unique_ptr<TConfiguration> config_;
  std::unique_ptr<TDocTypeList> types_;
  std::string quiet_failure_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_START_UP_H_
