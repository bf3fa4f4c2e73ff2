#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_file.h"
#include "dbf/dbf_image.h"
#include "dbf/dbf_layout.h"
#include "text/char_set.h"
#include "text/file_names.h"
#include "text/words.h"

// How changed images reach the disk.
namespace customsconv {
namespace {

constexpr std::string_view kProgressTitle = "Сохраняю файлы"_cp1251;
constexpr DateTime kRetryAfter = 10.0 / (24 * 60 * 60);  // ten seconds

// A table as a flush by names calls it: the file name up to its first ".".
std::string_view BaseName(const TDbfMemoryStream& image) {
  const std::string_view name = FileNameOf(image.name);
  return name.substr(0, name.find('.'));
}

bool Named(const TDbfMemoryStream& image, const std::vector<std::string_view>& names) {
  return std::any_of(names.begin(), names.end(),
                     [&image](std::string_view name) { return SameTextRu(name, BaseName(image)); });
}

bool ByName(const TDbfMemoryStream* a, const TDbfMemoryStream* b) {
  return std::tie(a->name, a->identity) < std::tie(b->name, b->identity);
}

// A file that is not to be had, which may be because another station has it.
bool MayBeBusy(const FileError& failure) {
  return failure.kind() == FileError::Kind::kCreate || failure.kind() == FileError::Kind::kOpen;
}

}  // namespace

void TDbfCache::Flush(std::string_view table_names, bool show_progress) {
  if (changed_.empty()) return;
  const Images due = TakeDue(table_names);
  std::unique_ptr<Progress> progress;
  if (table_names.empty() && show_progress) {
    progress = host_.dialogs.StartProgress(kProgressTitle, due.size());
  }
  std::map<std::string, Images> by_folder = ByFolder(due);
  if (held_) {
    const auto own = by_folder.extract(held_->folder);
    if (own) WriteFolder(own.mapped(), progress.get());
    // Two that hold a folder and wait for each other's would wait for good.
    if (!by_folder.empty()) held_.reset();
  }
  for (const auto& [folder, images] : by_folder) WriteFolder(images, progress.get());
  ForgetWritten();
}

// In the order of their names.
std::map<std::string, TDbfCache::Images> TDbfCache::ByFolder(const Images& images) {
  std::map<std::string, Images> by_folder;
  for (TDbfMemoryStream* image : images) by_folder[image->folder].push_back(image);
  for (auto& [folder, in_folder] : by_folder) {
    std::sort(in_folder.begin(), in_folder.end(), ByName);
  }
  return by_folder;
}

// The changed images that this flush writes. An image whose folder
// is gone stays changed only in a flush by names; any other flush forgets that it was.
TDbfCache::Images TDbfCache::TakeDue(std::string_view table_names) {
  const std::vector<std::string_view> names = Words(table_names, CharSet(" "));
  Images due;
  for (TDbfMemoryStream* image : changed_) {
    if (!table_names.empty() && !Named(*image, names)) continue;
    if (host_.files.FolderExists(FolderPart(image->path))) {
      due.push_back(image);
    } else if (table_names.empty()) {
      image->changed = false;
    }
  }
  return due;
}

// Who writes what a flush could not write before has to keep other stations out; a first flush
// leaves that to its caller.
void TDbfCache::WriteFolder(const Images& due, Progress* progress) {
  const std::string folder(FolderPart(due.front()->path));
  std::optional<SaveLock> own;
  std::optional<ExchangeLock> marker;
  try {
    if (!held_ || held_->folder != due.front()->folder) {
      own.emplace(LockAndUndo(folder));
      const auto late = [](const TDbfMemoryStream* image) { return image->late; };
      if (std::any_of(due.begin(), due.end(), late)) marker.emplace(host_, folder);
    }
  } catch (const SilentAbort&) {
    // The user gives the flush up for another station's sake, whose rows will come first.
    for (TDbfMemoryStream* image : due) image->late = true;
    return;
  } catch (const std::exception& failure) {
    for (TDbfMemoryStream* image : due) image->late = true;
    return ShowFailure(failure);
  }
  Images ready;
  std::size_t done = 0;
  for (TDbfMemoryStream* image : due) {
    if (MayBeWritten(*image) && TryToPrepare(*image)) ready.push_back(image);
    if (progress != nullptr) progress->Show(++done);
  }
  WriteTogether(folder, ready);
}

// Rows of other stations come first; in a file that is gone there are none. What is lost is told.
bool TDbfCache::MayBeWritten(TDbfMemoryStream& image) {
  const FileStamp stamp = host_.files.Stamp(image.path);
  if (!image.late || stamp == image.file_age || stamp == kNoStamp) return true;
  Lose(image, "файл с тех пор изменился"_cp1251);
  return false;
}

// False when the image still has to be written. What goes wrong is shown.
bool TDbfCache::TryToPrepare(TDbfMemoryStream& image) {
  for (;;) {
    try {
      Prepare(image);
      return true;
    } catch (const FileError& failure) {
      ShowFailure(failure);
      if (MayBeBusy(failure) && RetryAtOnce(image)) continue;
    } catch (const std::exception& failure) {
      ShowFailure(failure);
    }
    image.late = true;
    return false;
  }
}

// Opens the file and makes sure of room, so that a full disk is met before anything changes. A
// file that is gone, or another one by now, is written as a whole.
void TDbfCache::Prepare(TDbfMemoryStream& image) {
  const FileStamp stamp = host_.files.Stamp(image.path);
  image.replaces = stamp != image.file_age;
  if (image.replaces) {
    image.BecomeWhole();
    image.file = BufferedFile();
    image.writable = false;
  }
  if (stamp == kNoStamp) return;
  if (!image.writable) {
    image.file = BufferedFile(host_.files.Open(image.path, kModeReadWrite | kShareDenyNone));
    image.writable = true;
  }
  // Room, even if there is not enough, may be a change of the file to the system.
  FileStream& file = *image.file.stream();
  const auto take_stamp = [&] {
    if (!image.replaces) image.file_age = file.Stamp();
  };
  try {
    file.Reserve(image.size());
  } catch (const FileError&) {
    take_stamp();
    throw;
  }
  take_stamp();
}

void TDbfCache::WriteTogether(const std::string& folder, Images& images) {
  while (!images.empty()) {
    const std::optional<TransactionFailure> failure = Write(folder, images);
    if (!failure) {
      for (TDbfMemoryStream* image : images) Written(*image);
      return;
    }
    try {
      std::rethrow_exception(failure->cause);
    } catch (const std::exception& cause) {
      ShowFailure(cause);
    }
    // What was undone has new stamps and the old bytes.
    for (TDbfMemoryStream* image : images) {
      image->late = true;
      const bool same = failure->undone && !image->replaces;
      if (same) image->file_age = host_.files.Stamp(image->path);
    }
    if (!failure->table) return;
    images.erase(images.begin() + static_cast<std::ptrdiff_t>(*failure->table));
    if (!failure->undone) return;
  }
}

std::optional<TransactionFailure> TDbfCache::Write(const std::string& folder,
                                                   const Images& images) {
  std::vector<TableChange> changes;
  std::string note;
  for (TDbfMemoryStream* image : images) {
    FileStream* const file = image->file.stream();
    changes.push_back({image->path, file, image->size(), image->Changes(image->replaces)});
    if (note.find(image->note) == std::string::npos) {
      note.append(note.empty() ? "" : ", ").append(image->note);
    }
  }
  return WriteTables(host_, folder, note, changes);
}

void TDbfCache::Written(TDbfMemoryStream& image) {
  image.file_age = host_.files.Stamp(image.path);
  GiveRoomBack(image);
  image.failure_time = kNoFailureSinceWrite;
  image.changed = image.late = false;
  image.note.clear();
  image.Settle(image.layout->header.header_length +
               static_cast<std::int64_t>(image.record_count()) *
                   image.layout->header.record_length);
  // A new file may be known by another identity than the one it replaced. An image that is
  // held for it already is outdated now, as its next user finds.
  std::string identity = host_.files.Identity(image.path);
  if (identity == image.identity || images_.contains(identity)) return;
  auto node = images_.extract(image.identity);
  node.key() = identity;
  image.identity = std::move(identity);
  images_.insert(std::move(node));
}

// A file that another station held for more than ten seconds is tried once more, so
// a flush that is repeated meets a station that has let go meanwhile.
bool TDbfCache::RetryAtOnce(TDbfMemoryStream& image) const {
  const DateTime now = host_.clock.Now();
  const bool retry = now - image.failure_time > kRetryAfter;
  image.failure_time = retry ? kNoFailureSinceLoad : std::min(now, image.failure_time);
  return retry;
}

void TDbfCache::Lose(TDbfMemoryStream& image, std::string_view why) {
  lost_ = image.path;
  std::string text("Несохраненные строки таблицы "_cp1251);
  text.append(image.name);
  if (!image.note.empty()) text.append(" (").append(image.note).append(")");
  text.append(" потеряны: "_cp1251).append(why);
  Drop(image);
  host_.dialogs.Exception(text);
}

void TDbfCache::ShowFailure(const std::exception& failure) const {
  const auto* ours = dynamic_cast<const Error*>(&failure);
  host_.dialogs.Exception(ours != nullptr ? std::string_view(ours->text()) : failure.what());
}

void TDbfCache::ForgetWritten() {
  const auto settled = [](const TDbfMemoryStream* image) { return !image->changed; };
  changed_.erase(std::remove_if(changed_.begin(), changed_.end(), settled), changed_.end());
  CloseUnused();
}

// Images of large tables keep their files open. Where there are many, those go that nobody uses:
// they are soon loaded again.
void TDbfCache::CloseUnused() {
  constexpr std::size_t kMostOpen = 128;
  Images open;
  for (const auto& [identity, image] : images_) {
    if (image->file.stream() != nullptr) open.push_back(image.get());
  }
  if (open.size() <= kMostOpen) return;
  std::set<const TDbfMemoryStream*> used(changed_.begin(), changed_.end());
  for (const TFileDbfFile* table : tables_) used.insert(table->bytes_.image());
  for (TDbfMemoryStream* image : open) {
    if (!used.contains(image)) Drop(*image);
  }
}

// Room on the disk was made sure of for rows that will not come.
void TDbfCache::GiveRoomBack(TDbfMemoryStream& image) const {
  if (!std::exchange(image.spare_room, false) || !image.writable) return;
  FileStream& file = *image.file.stream();
  if (file.Stamp() != image.file_age) return;
  GiveSpareRoomBack(file);
  image.file_age = file.Stamp();
}

}  // namespace customsconv
