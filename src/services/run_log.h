#ifndef CUSTOMSCONV_SERVICES_RUN_LOG_H_
#define CUSTOMSCONV_SERVICES_RUN_LOG_H_

#include <string_view>

#include "platform/host.h"

namespace customsconv {

// Appends "yyyy-mm-dd hh:nn:ss - " in local time, `text` and CR LF to the file. An
// empty name means the default log, which is switched off: the line is dropped.
// A log that cannot be written is told with a message; nothing is thrown.
void LogLine(std::string_view text, std::string_view file_name, Host& host);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_RUN_LOG_H_
