#include "services/exchange_lock.h"

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "platform/wait_for_lock.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::uint32_t kPause = 1000;  // milliseconds between two checks
constexpr int kChecks = 101;
constexpr int kChecksPerQuestion = 20;

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

ExchangeLock::ExchangeLock(Host& host, std::string_view folder)
    : host_(host), path_(std::string(folder).append(kExchangeLockFile)) {
  FileStamp seen = kNoStamp;
  while (!Take(seen)) seen = Wait();
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
  host_.files.Delete(path_);
}

FileStamp ExchangeLock::Wait() {
  const auto progress =
      host_.dialogs.StartProgress("База занята - ждем..."_cp1251, kChecksPerQuestion);
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
  if (host_.files.CreateNew(path_)) return true;
  if (seen == kNoStamp || host_.files.Stamp(path_) != seen) return false;
  host_.files.Replace(path_, "");
  return true;
}

}  // namespace customsconv
