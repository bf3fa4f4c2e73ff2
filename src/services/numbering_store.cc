#include "services/numbering_store.h"

#include <string_view>

#include "base/cp1251_literal.h"
#include "config/settings.h"
#include "platform/wait_for_lock.h"
#include "services/program_paths.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

// The counter file that the stations share, whether it exists or not; empty when
// none is named.
std::string SharedCounterFile(const Environment& environment) {
  if (settings::SqlLastNum(*environment.config)) return {};
  const std::string name = settings::LastNumsFile(*environment.config);
  if (name.empty()) return {};
  std::string path = ExpandProgramPath(name, environment);
  if (path.ends_with('\\')) path.pop_back();
  return path;
}

bool AskToCreate(const std::string& path, Dialogs& dialogs) {
  std::string question;
  question.append("Не могу открыть файл общей нумерации деклараций"_cp1251);
  question.append("\r\n").append(path).append("\r\n");
  question.append("Создать новый файл и начать нумерацию с единицы?"_cp1251);
  return dialogs.Confirm(question);
}

}  // namespace

NumberingStore::NumberingStore(Environment& environment) : main_(*environment.config) {
  const std::string path = SharedCounterFile(environment);
  if (path.empty() || !environment.host.files.Exists(path)) return;
  shared_ = std::make_unique<TConfiguration>(environment.host, path, CreateMode::kMustExist,
                                             CodePage::kWindows);
}

NumberingLock::NumberingLock(Environment& environment)
    : environment_(environment), shared_file_(SharedCounterFile(environment)) {
  Take();
}

void NumberingLock::Take() {
  const Files& files = environment_.host.files;
  const bool can_be_shared =
      !shared_file_.empty() && files.FolderExists(ExtractFileFolder(shared_file_));
  lock_ = WaitForLock(environment_.host,
                      can_be_shared ? shared_file_ : environment_.config->file_name());
  if (SharedFileIsMissing() || shared_file_.empty()) RereadConfiguration(environment_);
}

bool NumberingLock::SharedFileIsMissing() const {
  return !shared_file_.empty() && !environment_.host.files.Exists(shared_file_);
}

void NumberingLock::OfferSharedFile() {
  if (!SharedFileIsMissing()) return;
  lock_.reset();
  const bool wanted = AskToCreate(shared_file_, environment_.host.dialogs);
  // Another station may make the file meanwhile: it stays as it is then.
  if (wanted) static_cast<void>(environment_.host.files.CreateNew(shared_file_));
  Take();
}

void RereadConfiguration(Environment& environment) {
  TConfiguration& config = *environment.config;
  if (environment.host.files.Exists(config.file_name())) config.Reload();
}

}  // namespace customsconv
