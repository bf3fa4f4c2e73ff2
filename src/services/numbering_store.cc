#include "services/numbering_store.h"

#include <string_view>

#include "base/cp1251_literal.h"
#include "config/settings.h"
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
  std::string path = ExpandFamilyPath(name, environment);
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

NumberingStore::NumberingStore(Environment& environment, WhenMissing when_missing)
    : main_(*environment.config) {
  const std::string path = SharedCounterFile(environment);
  if (path.empty()) return;
  Host& host = environment.host;
  if (host.files.Exists(path) ||
      (when_missing == WhenMissing::kAsk && AskToCreate(path, host.dialogs))) {
    shared_ = std::make_unique<TConfiguration>(host, path, CreateMode::kCreate, CodePage::kWindows);
  }
}

NumberingLock::NumberingLock(Environment& environment) {
  Files& files = environment.host.files;
  const std::string shared = SharedCounterFile(environment);
  const bool can_be_shared = !shared.empty() && files.FolderExists(ExtractFileFolder(shared));
  lock_ = files.Lock(can_be_shared ? shared : environment.config->file_name());
  if (shared.empty() || !files.Exists(shared)) RereadConfiguration(environment);
}

void RereadConfiguration(Environment& environment) {
  TConfiguration& config = *environment.config;
  if (environment.host.files.Exists(config.file_name())) config.Reload();
}

}  // namespace customsconv
