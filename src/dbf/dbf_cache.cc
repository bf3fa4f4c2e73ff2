// Which images are held, under which names, and who reads them. How they reach the disk: dbf_saves.cc
// and dbf_flush.cc.

#include "dbf/dbf_cache.h"

#include <algorithm>
#include <utility>

#include "base/cp1251_literal.h"
#include "dbf/dbf_file.h"
#include "dbf/dbf_image.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/file_names.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::string_view kChanged = "файл с тех пор изменился"_cp1251;

}  // namespace

TDbfCache::TDbfCache(Host& host) : host_(host) {}

TDbfCache::~TDbfCache() {
  if (!all_or_none_) Flush();
}

void TDbfCache::DropCachedFile(std::string_view file_name) {
  if (TDbfMemoryStream* image = HeldImage(PathOf(file_name))) Drop(*image);
}

std::string TDbfCache::PathOf(std::string_view table) const {
  return host_.files.FullName(ForceExtension(table, "DBF"));
}

std::string TDbfCache::FolderIdentity(std::string_view folder) const {
  return host_.files.Identity(folder);
}

TDbfMemoryStream* TDbfCache::FindImage(const std::string& path) {
  TDbfMemoryStream* image = HeldImage(path);
  if (image == nullptr || host_.files.Stamp(path) == image->file_age) return image;
  image->changed ? Lose(*image, kChanged) : Drop(*image);
  return nullptr;
}

TDbfMemoryStream* TDbfCache::HeldImage(const std::string& path) {
  if (const auto known = spellings_.find(path); known != spellings_.end()) return known->second;
  if (images_.empty()) return nullptr;
  const auto same_file = images_.find(host_.files.Identity(path));
  if (same_file == images_.end()) return nullptr;
  TDbfMemoryStream& image = *same_file->second;
  image.spellings.push_back(path);
  spellings_.emplace(path, &image);
  return &image;
}

TDbfMemoryStream& TDbfCache::Add(std::unique_ptr<TDbfMemoryStream> image) {
  image->identity = host_.files.Identity(image->path);
  image->folder = FolderIdentity(FolderPart(image->path));
  image->spellings.push_back(image->path);
  TDbfMemoryStream& added = *image;
  spellings_[added.path] = &added;
  images_[added.identity] = std::move(image);
  for (TFileDbfFile* table : tables_) table->JoinImage(added);
  return added;
}

void TDbfCache::Drop(TDbfMemoryStream& image) {
  for (TFileDbfFile* table : tables_) {
    if (table->bytes_.image() == &image) table->Detach();
  }
  changed_.erase(std::remove(changed_.begin(), changed_.end(), &image), changed_.end());
  for (const std::string& path : image.spellings) spellings_.erase(path);
  images_.erase(std::string(image.identity));
}

void TDbfCache::NoteChange(TDbfMemoryStream& image) {
  if (all_or_none_ && std::exchange(image.save, save_) != save_) image.StartUndo();
  if (!note_.empty() && image.note.find(note_) == std::string::npos) {
    image.note.append(image.note.empty() ? "" : ", ").append(note_);
  }
  if (std::exchange(image.changed, true)) return;
  changed_.push_back(&image);
}

std::optional<std::string> TDbfCache::Lookup(std::string_view table_file,
                                             std::string_view key_field, std::string_view key,
                                             std::string_view result_field) {
  TFileDbfFile table(*this);
  if (table.Open(table_file, kModeRead | kShareDenyNone, OnError::kReturn) != DbfStatus::kOk) {
    return std::nullopt;
  }
  for (const std::string_view alternative : Words(key_field, CharSet("|"))) {
    if (!table.FindFirst(alternative, key)) continue;
    return std::string(TrimRight(table.GetFieldByName(result_field)));
  }
  return std::nullopt;
}

}  // namespace customsconv
