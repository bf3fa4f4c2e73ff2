#include "services/archive_run.h"

#include <string>

#include "base/cp1251_literal.h"
#include "config/settings.h"
#include "platform/wait_for_lock.h"
#include "services/file_services.h"
#include "services/numbering_store.h"
#include "services/program_paths.h"
#include "services/program_start.h"
#include "text/blanks.h"
#include "text/date_format.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

// Day and month, station, archive number: "D1703001.005".
std::string ArchiveName(std::int32_t number, Environment& environment) {
  std::string name = "D" + FormatDateTime("ddmm", environment.today.Today());
  name += PadLeft(settings::ArchiveId(*environment.config), '0', 3);
  return name + '.' + PadLeft(std::to_string(number), '0', 3);
}

// Stations that have no shared counter file count in kord.ini, too: their numbers must survive.
void StoreArchiveNumber(std::int32_t number, Environment& environment) {
  const auto lock = WaitForLock(environment.host, environment.config->file_name());
  RereadConfiguration(environment);
  settings::SetArcNum(*environment.config, number);
}

}  // namespace

void ArchiveForTpo(std::string_view folder, bool new_archive, Environment& environment) {
  const std::int32_t next = settings::ArcNum(*environment.config);
  const std::string archive = ArchiveName(new_archive ? next : next - 1, environment);
  std::string question;
  question.append("Призвести архивацию файлов для загрузки в АРМ ТПО (архив "_cp1251);
  if (!environment.host.dialogs.Confirm(question.append(archive).append(")?"))) return;

  const Files& files = environment.host.files;
  const std::string utilities = BasePath(environment) + "Utils\\";
  const std::string program = ShortPathName(files, utilities + "arctmr.bat");
  const std::string parameters = CommandWord(ShortPathName(files, folder)) + ' ' +
                                 CommandWord(ShortPathName(files, utilities)) + ' ' + archive;
  if (!ExecFile(program, parameters, WindowStyle::kNormal, false, environment)) {
    environment.host.dialogs.Message(std::string("Не могу запустить "_cp1251) + program);
    return;
  }
  if (new_archive) StoreArchiveNumber(next + 1, environment);
}

}  // namespace customsconv
