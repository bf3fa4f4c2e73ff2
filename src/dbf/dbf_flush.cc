#include <algorithm>
#include <tuple>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_format.h"
#include "dbf/dbf_image.h"
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

}  // namespace

void TDbfCache::Flush(std::string_view table_names, bool show_progress) {
  if (changed_.empty()) return;
  const std::vector<TDbfMemoryStream*> due = TakeDue(table_names);
  std::unique_ptr<Progress> progress;
  if (table_names.empty() && show_progress) {
    progress = host_.dialogs.StartProgress(kProgressTitle, due.size());
  }
  WriteBack(due, progress.get());
  const auto settled = [](const TDbfMemoryStream* image) { return !image->changed; };
  changed_.erase(std::remove_if(changed_.begin(), changed_.end(), settled), changed_.end());
}

// The changed images that this flush writes, in the order of their names. An image whose folder
// is gone stays changed only in a flush by names; any other flush forgets that it was.
std::vector<TDbfMemoryStream*> TDbfCache::TakeDue(std::string_view table_names) {
  const std::vector<std::string_view> names = Words(table_names, CharSet(" "));
  std::vector<TDbfMemoryStream*> due;
  for (TDbfMemoryStream* image : changed_) {
    if (!table_names.empty() && !Named(*image, names)) continue;
    if (host_.files.FolderExists(FolderPart(image->path))) {
      due.push_back(image);
    } else if (table_names.empty()) {
      image->changed = false;
    }
  }
  std::sort(due.begin(), due.end(), ByName);
  return due;
}

// All new files are safe on the disk before the first one takes its place, so that the
// moment in which the folder holds some old and some new tables is short.
void TDbfCache::WriteBack(const std::vector<TDbfMemoryStream*>& due, Progress* progress) {
  StagedFiles staged;
  std::size_t done = 0;
  for (TDbfMemoryStream* image : due) {
    std::unique_ptr<PendingFile> pending;
    if (TryToWrite(*image, [&] { pending = Stage(*image); })) {
      staged.emplace_back(image, std::move(pending));
    }
    if (progress != nullptr) progress->Show(++done);
  }
  std::vector<PendingFile*> written;
  for (const auto& entry : staged) written.push_back(entry.second.get());
  host_.files.HardenTogether(written);
  std::erase_if(staged, [this](auto& entry) {
    return !TryToWrite(*entry.first, [&entry] { entry.second->Harden(); });
  });
  StagedFiles placed;
  for (auto& [image, pending] : staged) {
    std::unique_ptr<PendingFile> ready;
    const auto put_in_place = [this, image = image, &pending = pending, &ready] {
      // A file that cannot be put in place is of no use to the next attempt.
      ready = pending ? std::move(pending) : Stage(*image);
      ready->Harden();
      ready->Place();
    };
    if (!TryToWrite(*image, put_in_place)) continue;
    Written(*image);
    placed.emplace_back(image, std::move(ready));
  }
  Settle(placed);
}

// One wait for the disk serves all files of a folder; they stand together. Without it a table's
// older copy may still be what the folder names after a power cut, and must not be changed.
void TDbfCache::Settle(const StagedFiles& placed) {
  for (std::size_t i = 0; i < placed.size();) {
    const std::string_view folder = FolderPart(placed[i].first->path);
    const bool settled = placed[i].second->Settle();
    for (; i < placed.size() && FolderPart(placed[i].first->path) == folder; ++i) {
      if (!settled) placed[i].first->same_end = 0;
    }
  }
}

std::unique_ptr<PendingFile> TDbfCache::Stage(TDbfMemoryStream& image) const {
  if (expects_series_ && !image.series) image.series = host_.files.StartSeries(image.path);
  const std::string_view content = image.bytes.view();
  if (!image.series) return host_.files.Stage(image.path, content);
  return image.series->Stage(content, {dbf::kHeaderSize, image.same_end});
}

// False when the image still has to be written. What goes wrong is shown.
template <typename Write>
bool TDbfCache::TryToWrite(TDbfMemoryStream& image, Write write) {
  for (;;) {
    try {
      write();
      return true;
    } catch (const FileError& failure) {
      ShowFailure(failure);
      if (failure.kind() != FileError::Kind::kCreate || !RetryAtOnce(image)) return false;
    } catch (const std::exception& failure) {
      ShowFailure(failure);
      return false;
    }
  }
}

void TDbfCache::Written(TDbfMemoryStream& image) {
  image.file_age = host_.files.Stamp(image.path);
  image.failure_time = kNoFailureSinceWrite;
  image.same_end = image.bytes.size();
  image.changed = false;
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

void TDbfCache::ShowFailure(const std::exception& failure) const {
  const auto* ours = dynamic_cast<const Error*>(&failure);
  host_.dialogs.Exception(ours != nullptr ? std::string_view(ours->text()) : failure.what());
}

}  // namespace customsconv
