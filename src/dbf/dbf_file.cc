#include "dbf/dbf_file.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "dbf/dbf_format.h"
#include "dbf/dbf_image.h"
#include "dbf/dbf_layout.h"
#include "text/file_names.h"

// Opening and creating, records as wholes. Fields are in dbf_file_fields.cc,
// searching in dbf_search.cc.
namespace customsconv {
namespace {

constexpr std::string_view kMissing = "dBaseInt: Не найден файл "_cp1251;
constexpr std::int64_t kMaxRecordCount = 0xFFFFFFFF;

// The form of a path that messages show, short as all names that they hold.
ShortText ShownName(std::string_view path) {
  std::string name = UpperCaseRu(path);
  std::replace(name.begin(), name.end(), '/', '\\');
  return ShortText::Cut(name);
}

}  // namespace

TFileDbfFile::TFileDbfFile(TDbfCache& cache) : cache_(cache) {}

TFileDbfFile::~TFileDbfFile() {
  if (listed_) cache_.Delist(*this);
}

// ---- opening

DbfStatus TFileDbfFile::Open(std::string_view name, FileMode mode, OnError on_error) {
  std::string path = cache_.PathOf(name);
  if (!std::exchange(listed_, true)) cache_.Enlist(*this);
  Close();
  path_ = std::move(path);
  file_name_ = ShownName(path_);
  mode_ = mode;
  try {
    const DbfStatus status = OpenExpanded(on_error);
    if (status != DbfStatus::kOk) Close();
    return status;
  } catch (...) {
    Close();
    throw;
  }
}

DbfStatus TFileDbfFile::OpenExpanded(OnError on_error) {
  try {
    LayoutResult found;
    if (!AttachWhole(found)) {
      if (on_error == OnError::kReturn) return DbfStatus::kNoFile;
      throw DbfError(std::string(kMissing).append(file_name_));
    }
    if (!found.layout) {
      if (on_error == OnError::kReturn) return DbfStatus::kNotATable;
      throw DbfError(std::string(found.fault).append(file_name_));
    }
    if (bytes_.image() != nullptr) bytes_.image()->layout = found.layout;
    layout_ = std::move(found.layout);
  } catch (const FileError&) {
    if (on_error == OnError::kThrow) throw;
    return DbfStatus::kNoFile;
  }
  record_.assign(layout_->header.record_length, '\0');
  record_ += dbf::kEndOfTable;
  return DbfStatus::kOk;
}

// A table that another process changed while it was read is read once more, with saves kept out:
// its record count and its size may not have been those of one moment. False when there is no such
// file.
bool TFileDbfFile::AttachWhole(LayoutResult& found) {
  if (TDbfMemoryStream* image = cache_.FindImage(path_)) {
    Use(*image, found);
    return true;
  }
  const std::string_view folder = FolderPart(path_);
  cache_.UndoBrokenSave(folder);
  if (!Attach(found)) return false;
  while (cache_.IsSavedMeanwhile(folder, path_, file_time_)) {
    if (bytes_.image() != nullptr) cache_.Drop(*bytes_.image());
    Close();
    const auto lock = cache_.LockToRead(folder);
    if (!Attach(found)) return false;
    if (lock) break;
  }
  return true;
}

bool TFileDbfFile::Attach(LayoutResult& found) {
  const Files& files = cache_.host().files;
  if (!files.Exists(path_)) return false;
  std::unique_ptr<FileStream> file = files.Open(path_, mode_);
  file_time_ = file->Stamp();
  const std::int64_t size = file->Size();
  if (size >= kMinFileSize) {
    becomes_image_ = !WantsToWrite() && size < kMaxImageSize;
    bytes_ = TableBytes(std::move(file));
    found = ReadLayout(bytes_);
  } else {
    Use(cache_.Add(LoadImage(*file)), found);
  }
  return true;
}

void TFileDbfFile::Use(TDbfMemoryStream& image, LayoutResult& found) {
  file_time_ = image.file_age;
  bytes_ = TableBytes(image);
  found = image.layout ? LayoutResult{image.layout, {}} : ReadLayout(bytes_);
}

bool TFileDbfFile::WantsToWrite() const { return (mode_ & kModeAccessMask) != kModeRead; }

std::unique_ptr<TDbfMemoryStream> TFileDbfFile::LoadImage(FileStream& file) const {
  return Named(std::make_unique<TDbfMemoryStream>(ReadWhole(file, path_)));
}

std::unique_ptr<TDbfMemoryStream> TFileDbfFile::Named(
    std::unique_ptr<TDbfMemoryStream> image) const {
  image->path = path_;
  image->name = file_name_;
  image->file_age = file_time_;
  image->layout = layout_;
  return image;
}

// As it was opened: nobody has changed the file since.
std::unique_ptr<TDbfMemoryStream> TFileDbfFile::ImageOverFile() {
  const std::int64_t end = layout_->header.SizeOfRecords();
  GrowingBytes rest;
  rest.Resize(static_cast<std::size_t>(bytes_.Size() - end));
  if (!bytes_.Read(end, rest.data(), rest.size())) rest.Resize(0);
  auto image = Named(std::make_unique<TDbfMemoryStream>(bytes_.TakeFile(), end, std::move(rest),
                                                        layout_->header.record_count));
  image->writable = WantsToWrite();
  return image;
}

// Records are wanted of a table that was read so far to know its fields only.
void TFileDbfFile::LoadToRead() {
  becomes_image_ = false;
  FileStream* const file = bytes_.file();
  if (file == nullptr || file->Stamp() != file_time_ || cache_.FindImage(path_) != nullptr) return;
  cache_.Add(LoadImage(*file));
}

// Its record buffer fits, as files of one stamp have one layout.
void TFileDbfFile::JoinImage(TDbfMemoryStream& image) {
  if (bytes_.file() == nullptr || file_time_ != image.file_age || !image.layout) return;
  if (image.layout->header.record_length != layout_->header.record_length) return;
  if (cache_.host().files.Identity(path_) != image.identity) return;
  layout_ = image.layout;
  bytes_ = TableBytes(image);
}

DbfStatus TFileDbfFile::CreateTable(TDescrs& fields, std::string_view name) {
  if (fields.empty()) return DbfStatus::kRefused;
  Close();
  if (!dbf::CanBeWritten(fields)) return DbfStatus::kNotATable;
  Host& host = cache_.host();
  const std::string empty_table = dbf::EmptyTable(fields, DayOf(host.clock.Today()));
  const std::string path = cache_.PathOf(name);
  {
    const auto lock = cache_.LockToCreate(FolderPart(path));
    TDbfMemoryStream* const outdated = cache_.HeldImage(path);
    host.files.Replace(path, empty_table);
    if (outdated != nullptr) cache_.Drop(*outdated);
  }
  const DbfStatus status = Open(name, kModeReadWrite | kShareDenyNone, OnError::kReturn);
  if (status == DbfStatus::kOk) fields = layout_->fields;
  return status;
}

void TFileDbfFile::Close() {
  layout_.reset();
  bytes_ = TableBytes();
  record_.clear();
  current_record_ = -1;
  becomes_image_ = false;
  this_year_ = 0;
}

bool TFileDbfFile::Refresh() {
  if (!is_open() || cache_.host().files.Stamp(path_) == file_time_) return false;
  const std::string path = path_;
  Close();
  Open(path, mode_, OnError::kThrow);
  return true;
}

const FieldDescriptor& TFileDbfFile::FieldAt(int field) const {
  assert(Field(field) != nullptr);
  return layout_->fields[static_cast<std::size_t>(field)];
}

const TDescrs& TFileDbfFile::fields() const {
  static const TDescrs kNone;
  return layout_ ? layout_->fields : kNone;
}

// ---- records

// The count of an image is the table's own, which others may have changed.
std::int64_t TFileDbfFile::RecordCount() const {
  if (!layout_ || !bytes_.attached()) return 0;
  const auto image = bytes_.image();
  return image == nullptr ? layout_->header.record_count : image->record_count();
}

// What is changed of a large table is kept beside its file. A table whose file is another one by
// now stays without bytes, as one does when its image is dropped.
bool TFileDbfFile::PrepareChange() {
  if (bytes_.image() == nullptr) {
    if (bytes_.file() == nullptr) return false;
    const bool unchanged = cache_.host().files.Stamp(path_) == file_time_;
    if (unchanged && cache_.FindImage(path_) == nullptr) {
      bytes_ = TableBytes(cache_.Add(ImageOverFile()));
    }
    if (bytes_.image() == nullptr) Detach();
    if (!bytes_.attached()) return false;
  }
  cache_.NoteChange(*bytes_.image());
  return true;
}

void TFileDbfFile::NormaliseMark() {
  if (record_.front() != dbf::kDeletedMark) record_.front() = dbf::kLiveMark;
}

void TFileDbfFile::BlankRecord() {
  if (layout_) std::fill_n(record_.begin(), layout_->header.record_length, ' ');
}

DbfStatus TFileDbfFile::GoTo(std::int64_t record) {
  const std::int64_t count = RecordCount();
  at_beginning_ = record < 1;
  past_end_ = record > count;
  if (record == current_record_ && record != -1) return DbfStatus::kOk;
  if (!layout_ || record < 1 || record > count) return DbfStatus::kRefused;
  if (becomes_image_) LoadToRead();
  if (!bytes_.Read(layout_->RecordAt(record), record_.data(), layout_->header.record_length)) {
    return DbfStatus::kRefused;
  }
  current_record_ = record;
  return DbfStatus::kOk;
}

DbfStatus TFileDbfFile::Post() {
  const bool is_there = current_record_ >= 1 && current_record_ <= RecordCount();
  if (!is_there || !PrepareChange()) return DbfStatus::kRefused;
  NormaliseMark();
  bytes_.image()->Overwrite(layout_->RecordAt(current_record_),
                            std::string_view(record_).substr(0, layout_->header.record_length));
  return DbfStatus::kOk;
}

bool TFileDbfFile::Append() {
  const std::int64_t count = RecordCount();
  if (count >= kMaxRecordCount || !PrepareChange()) return false;
  NormaliseMark();
  bytes_.image()->Overwrite(layout_->RecordAt(count + 1), record_);
  bytes_.image()->SetRecordCount(static_cast<std::uint32_t>(count + 1));
  current_record_ = count + 1;
  return true;
}

DbfStatus TFileDbfFile::DeleteRecord(std::int64_t record) {
  const std::int64_t count = RecordCount();
  if (record < 1 || record > count || !PrepareChange()) return DbfStatus::kRefused;
  bytes_.image()->Erase(layout_->RecordAt(record), layout_->header.record_length,
                        layout_->RecordAt(count), {&dbf::kEndOfTable, 1});
  bytes_.image()->SetRecordCount(static_cast<std::uint32_t>(count - 1));
  current_record_ = 0;
  return DbfStatus::kOk;
}

}  // namespace customsconv
