#ifndef CUSTOMSCONV_SERVICES_ENVIRONMENT_H_
#define CUSTOMSCONV_SERVICES_ENVIRONMENT_H_

#include <string>

#include "platform/host.h"
#include "services/kept_today.h"

namespace customsconv {

class TConfiguration;
class SharedConfigurations;

// What a run stands on: the folders of the start-up, the configuration and the
// outside world. Owned by the start-up state, handed down by reference; all that
// it refers to outlives whoever it is handed to.
struct Environment {
  Host& host;
  // The program folder exactly as the caller passed it (normally with a closing
  // separator).
  std::string base_path;
  std::string data_path;  // base_path + "Data\"
  // Folder part of the export's second argument: of the rules file, or the
  // schema folder.
  std::string aux_path;
  TConfiguration* config = nullptr;  // kord.ini; null before the start-up published it
  SharedConfigurations& shared;      // ini files beside kord.ini
  KeptToday& today;                  // the date taken at its first use

  [[nodiscard]] int ThisYear() const { return host.clock.ThisYear(); }
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_ENVIRONMENT_H_
