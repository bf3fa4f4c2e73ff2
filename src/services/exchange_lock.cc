#include "services/exchange_lock.h"

#include "base/cp1251_literal.h"
#include "platform/wait_for_lock.h"
#include "text/blanks.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

constexpr std::uint32_t kPause = 1000;  // milliseconds between two checks
constexpr int kChecks = 101;
constexpr int kChecksPerQuestion = 20;
// Who holds a SaveLock may itself wait for another station's marker.
constexpr int kSaveLockChecks = kChecks + kChecksPerQuestion;
constexpr std::string_view kBusy = "База занята - ждем..."_cp1251;

LockAnswer Ask(Dialogs& dialogs) {
  constexpr std::size_t kWidestChoice = 45;
  return dialogs.Choose(
      "База занята!"_cp1251,
      "База АРМ-ТИ занята с другого компьютера. Возможно выгружается длинная ГТД, или программа зависла."_cp1251,
      {std::string("Подождать еще"_cp1251),
       PadRightBlanks("Снять блокировку и выгрузить"_cp1251, kWidestChoice),
       std::string("Прервать выгрузку"_cp1251)});
}

}  // namespace

SaveLock::SaveLock(Host& host, const std::string& folder) {
  const std::string path = folder + std::string(kSaveLockFile);
  file_ = host.files.HoldFile(path);
  if (file_ == nullptr) file_ = Wait(host, path);
  if (!certain()) return;
  const std::string marker = folder + std::string(kExchangeLockFile);
  if (host.files.Stamp(marker) == host.files.Stamp(path)) host.files.Delete(marker);
}

// Saves are over in some hundredths of a second; only who waits longer is told.
std::unique_ptr<FileLock> SaveLock::Wait(Host& host, const std::string& path) {
  constexpr std::uint32_t kLook = 5;  // milliseconds between two looks
  constexpr std::uint32_t kLooksPerSecond = kPause / kLook;
  std::unique_ptr<Progress> progress;
  for (std::uint32_t look = 1; look <= kSaveLockChecks * kLooksPerSecond; ++look) {
    host.clock.Sleep(kLook);
    if (auto file = host.files.HoldFile(path)) return file;
    if (look % kLooksPerSecond != 0) continue;
    const std::uint32_t step = look / kLooksPerSecond % kChecksPerQuestion;
    if (progress == nullptr) progress = host.dialogs.StartProgress(kBusy, kChecksPerQuestion);
    progress->Show(step == 0 ? kChecksPerQuestion : step);
    if (step == 0 && Ask(host.dialogs) == LockAnswer::kAbandon) throw SilentAbort();
  }
  throw FileError(FileError::Kind::kOpen, path,
                  "его держит другой процесс этой программы, который не отвечает"_cp1251);
}

Error WaitingGivenUp(std::string_view folder) {
  std::string text("Таблицы сохраняет другая программа, ожидание прервано: "_cp1251);
  return Error(text.append(folder));
}

ExchangeLock::ExchangeLock(Host& host, std::string_view folder)
    : host_(host),
      path_(std::string(folder).append(kExchangeLockFile)),
      twin_(std::string(FolderPart(path_)).append(kSaveLockFile)) {
  FileStamp seen = kNoStamp;
  while (!Take(seen)) seen = Wait();
  own_ = host_.files.Stamp(path_);
  held_ = true;
}

ExchangeLock::~ExchangeLock() {
  try {
    Release();
  } catch (...) {
    // A marker that stays makes the next station wait and take the lock over.
  }
}

void ExchangeLock::Release() {
  if (!held_) return;
  held_ = false;
  if (host_.files.Stamp(path_) == own_) host_.files.Delete(path_);  // else somebody took it over
}

FileStamp ExchangeLock::Wait() {
  const auto progress = host_.dialogs.StartProgress(kBusy, kChecksPerQuestion);
  FileStamp seen = kNoStamp;
  for (int check = 1; check <= kChecks; ++check) {
    host_.clock.Sleep(kPause);
    seen = host_.files.Stamp(path_);
    if (seen == kNoStamp) break;
    const int step = check % kChecksPerQuestion;
    progress->Show(static_cast<std::size_t>(step == 0 ? kChecksPerQuestion : step));
    if (step != 0) continue;
    const LockAnswer answer = Ask(host_.dialogs);
    if (answer == LockAnswer::kAbandon) throw SilentAbort();
    if (answer == LockAnswer::kTakeOver) break;
  }
  return seen;
}

// Of several stations that end their waiting at the same moment the first one changes
// the marker's stamp, so that the others see a marker that is not the one they waited for.
bool ExchangeLock::Take(FileStamp seen) {
  const auto guard = WaitForLock(host_, path_);
  if (host_.files.CreateNew(path_, twin_)) return true;
  if (seen == kNoStamp || host_.files.Stamp(path_) != seen) return false;
  if (host_.files.Delete(path_)) return host_.files.CreateNew(path_, twin_);
  throw FileError(FileError::Kind::kCreate, path_, "не могу удалить"_cp1251);
}

}  // namespace customsconv
