// The log of a run: one line an event, with the local time in front.

#include "services/run_log.h"

#include <string>

#include "base/cp1251_literal.h"
#include "text/date_format.h"

namespace customsconv {

void LogLine(std::string_view text, std::string_view file_name, Host& host) {
  if (file_name.empty()) return;
  std::string line = FormatDateTime("yyyy-mm-dd hh:nn:ss - ", host.clock.Now());
  line.append(text).append("\r\n");
  try {
    host.files.Append(file_name, line);
  } catch (const FileError&) {
    host.dialogs.Message(std::string("Ошибка при записи "_cp1251).append(file_name));
  }
}

}  // namespace customsconv
