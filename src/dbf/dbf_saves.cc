#include <list>
#include <map>
#include <utility>

#include "base/cp1251_literal.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_image.h"
#include "text/file_names.h"

// Saves under the locks of their folder, and what dead ones left.
namespace customsconv {
namespace {

[[noreturn]] void ThrowNotUndone(const std::string& folder, std::string_view cause) {
  std::string text("Прерванное сохранение таблиц не отменено: "_cp1251);
  text.append(cause).append(". Команда: customsconv tables recover "_cp1251);
  throw DbfError(text.append(folder));
}

}  // namespace

void TDbfCache::BeginSave(std::string_view folder) {
  const std::string path = host_.files.FullName(std::string(folder).append(kSaveLockFile));
  const std::string own_folder(FolderPart(path));
  std::string identity = FolderIdentity(own_folder);
  ++save_;
  in_save_ = held_ && held_->folder == identity;
  if (in_save_) return;
  Commit();
  if (all_or_none_) LeaveGap();
  held_.emplace(host_, std::move(identity), SaveLock(host_, own_folder), folder);
  try {
    TellKeptJournals(own_folder);
    UndoAndTell(own_folder, held_->own);  // behind the marker: its holder may have the tables
  } catch (...) {
    LetGo();
    throw;
  }
  in_save_ = true;
}

// Other stations look once a second whether the folder is free: who saves without end leaves it
// free for longer than that now and then.
void TDbfCache::LeaveGap() {
  constexpr std::uint64_t kBusy = 10'000;  // milliseconds
  constexpr std::uint64_t kGap = 1'100;
  const std::uint64_t now = host_.clock.Ticks();
  const std::uint64_t gap = now - free_since_;
  if (gap < kGap && now - busy_since_ < kBusy) return;
  if (gap < kGap) host_.clock.Sleep(static_cast<std::uint32_t>(kGap - gap));
  busy_since_ = host_.clock.Ticks();
}

void TDbfCache::LetGo() {
  held_.reset();
  in_save_ = false;
  free_since_ = host_.clock.Ticks();
}

std::optional<std::uint64_t> TDbfCache::KeepsOthersOut() const {
  if (!held_ || in_save_) return std::nullopt;
  return host_.clock.Ticks() - held_->since;
}

void TDbfCache::EndSave() {
  if (all_or_none_) {
    try {
      for (TDbfMemoryStream* image : changed_) {
        if (image->save == save_) PrepareOwn(*image);
      }
    } catch (const Error&) {
      AbandonSave();
      throw;
    }
    in_save_ = false;
    return;
  }
  try {
    Flush({}, /*show_progress=*/true);
  } catch (...) {
    AbandonSave();
    throw;
  }
  LetGo();
}

void TDbfCache::AbandonSave() {
  in_save_ = false;
  if (all_or_none_) {
    for (TDbfMemoryStream* image : changed_) {
      if (image->save != save_) continue;
      image->Undo();
      image->spare_room = true;
      if (!image->changed) GiveRoomBack(*image);
    }
    ForgetWritten();
    if (!changed_.empty() || !lost_.empty()) return;  // of earlier saves
  }
  for (TDbfMemoryStream* image : changed_) image->late = true;
  LetGo();
}

void TDbfCache::Commit() {
  if (!held_) return;
  if (all_or_none_) {
    try {
      WriteWaiting();
    } catch (...) {
      while (!changed_.empty()) {
        TDbfMemoryStream& lost = *changed_.back();
        lost.spare_room = true;
        GiveRoomBack(lost);
        Drop(lost);
      }
      lost_.clear();
      LetGo();
      throw;
    }
  }
  LetGo();
}

void TDbfCache::WriteWaiting() {
  std::map<std::string, Images> by_folder = ByFolder(changed_);
  // Tables that the catalogue looks for elsewhere. The folder of the set comes last: most of what
  // can go wrong has gone wrong before.
  Images own;
  if (auto found = by_folder.extract(held_->folder)) own = std::move(found.mapped());
  std::list<Held> others;
  for (const auto& [identity, images] : by_folder) {
    const std::string folder(FolderPart(images.front()->path));
    try {
      others.emplace_back(host_, identity, LockAndUndo(folder), folder);
    } catch (const SilentAbort&) {
      throw WaitingGivenUp(folder);
    }
  }
  // Whoever does not mind our locks may have written since the save ended.
  for (const TDbfMemoryStream* image : changed_) {
    const FileStamp expected = image->replaces ? kNoStamp : image->file_age;
    if (host_.files.Stamp(image->path) != expected) lost_ = image->path;
  }
  if (!lost_.empty()) {
    throw FileError(FileError::Kind::kWrite, lost_, "файл изменила другая программа"_cp1251);
  }
  const auto write = [this](const Images& images) {
    if (images.empty()) return;
    const auto failure = Write(std::string(FolderPart(images.front()->path)), images);
    if (failure) std::rethrow_exception(failure->cause);
    for (TDbfMemoryStream* image : images) Written(*image);
    ForgetWritten();
  };
  for (const auto& [identity, images] : by_folder) write(images);
  write(own);
}

// Others may have written the file since it was loaded only if they do not mind our lock.
void TDbfCache::PrepareOwn(TDbfMemoryStream& image) {
  Prepare(image);
  if (!image.replaces || image.file.stream() == nullptr) return;
  throw FileError(FileError::Kind::kWrite, image.path, "файл изменила другая программа"_cp1251);
}

void TDbfCache::UndoBrokenSave(std::string_view folder) {
  const std::string path(folder);
  if (!HasJournal(host_.files, path)) return;
  if (held_ && held_->folder == FolderIdentity(path)) return;
  try {
    const auto lock = LockToRead(path);
  } catch (const FileError& failure) {
    ThrowNotUndone(path, failure.text());
  }
}

std::optional<SaveLock> TDbfCache::LockToCreate(std::string_view folder) {
  if (held_ && held_->folder == FolderIdentity(folder)) return std::nullopt;
  std::optional<SaveLock> lock = LockToRead(folder);
  if (!lock) lock.emplace(host_, std::string(folder));
  return lock;
}

bool TDbfCache::IsSavedMeanwhile(std::string_view folder, std::string_view path,
                                 FileStamp stamp) const {
  if (held_ && held_->folder == FolderIdentity(folder)) return false;
  return HasJournal(host_.files, std::string(folder)) || host_.files.Stamp(path) != stamp;
}

// Who may not write in the folder cannot make the lock, but sees when a save is over.
std::optional<SaveLock> TDbfCache::LockToRead(std::string_view folder) {
  constexpr int kLooks = 100;
  constexpr std::uint32_t kPause = 5;  // milliseconds
  const std::string path(folder);
  for (int look = 1;; ++look) {
    try {
      return LockAndUndo(path);
    } catch (const SilentAbort&) {
      throw WaitingGivenUp(folder);
    } catch (const FileError& failure) {
      if (failure.kind() != FileError::Kind::kCreate) throw;
      if (!HasJournal(host_.files, path)) return std::nullopt;
      if (look == kLooks) throw;
    }
    host_.clock.Sleep(kPause);
  }
}

SaveLock TDbfCache::LockAndUndo(const std::string& folder) {
  SaveLock lock(host_, folder);
  if (HasJournal(host_.files, folder)) {
    const ExchangeLock marker(host_, folder);
    UndoAndTell(folder, lock);
  }
  return lock;
}

void TDbfCache::UndoAndTell(const std::string& folder, const SaveLock& lock) {
  if (!HasJournal(host_.files, folder)) return;
  if (!lock.certain()) {
    ThrowNotUndone(folder, "на этом диске нет блокировок, и его автор может работать"_cp1251);
  }
  try {
    const std::string told = Told(Recover(host_, folder), folder);
    if (!told.empty()) host_.dialogs.Message(told);
  } catch (const FileError& failure) {
    ThrowNotUndone(folder, failure.text());
  }
}

// Once for each folder: they stand there until somebody has looked at the tables.
void TDbfCache::TellKeptJournals(const std::string& folder) {
  if (!looked_through_.insert(held_->folder).second) return;
  for (const KeptJournal& kept : KeptJournals(host_, folder)) {
    host_.dialogs.Message(Told(kept, folder));
  }
}

}  // namespace customsconv
