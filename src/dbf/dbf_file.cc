#include "dbf/dbf_file.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "dbf/dbf_format.h"
#include "dbf/dbf_image.h"
#include "dbf/dbf_layout.h"

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
    if (!Attach()) {
      if (on_error == OnError::kReturn) return DbfStatus::kNoFile;
      throw DbfError(std::string(kMissing).append(file_name_));
    }
    const auto image = bytes_.image();
    LayoutResult found{image != nullptr ? image->layout : nullptr, {}};
    if (!found.layout) found = ReadLayout(bytes_);
    if (!found.layout) {
      if (on_error == OnError::kReturn) return DbfStatus::kNotATable;
      throw DbfError(std::string(found.fault).append(file_name_));
    }
    if (image != nullptr) image->layout = found.layout;
    layout_ = std::move(found.layout);
  } catch (const FileError&) {
    if (on_error == OnError::kThrow) throw;
    return DbfStatus::kNoFile;
  }
  record_.assign(layout_->header.record_length, '\0');
  record_ += dbf::kEndOfTable;
  return DbfStatus::kOk;
}

// False when there is no such file.
bool TFileDbfFile::Attach() {
  TDbfMemoryStream* image = cache_.FindImage(path_);
  if (image == nullptr) {
    const Files& files = cache_.host().files;
    if (!files.Exists(path_)) return false;
    std::unique_ptr<FileStream> file = files.Open(path_, mode_);
    file_time_ = file->Stamp();
    if (file->Size() >= kMaxImageSize) {
      bytes_ = TableBytes(std::move(file));
      return true;
    }
    image = &cache_.Add(LoadImage(*file));
  }
  file_time_ = image->file_age;
  bytes_ = TableBytes(*image);
  return true;
}

std::unique_ptr<TDbfMemoryStream> TFileDbfFile::LoadImage(FileStream& file) const {
  auto image = std::make_unique<TDbfMemoryStream>();
  image->bytes = ReadWhole(file, path_);
  image->path = path_;
  image->name = file_name_;
  image->file_age = file_time_;
  return image;
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
  TDbfMemoryStream* const outdated = cache_.HeldImage(path);
  host.files.Replace(path, empty_table);
  if (outdated != nullptr) cache_.Drop(*outdated);
  const DbfStatus status = Open(name, kModeReadWrite | kShareDenyNone, OnError::kReturn);
  if (status == DbfStatus::kOk) fields = layout_->fields;
  return status;
}

void TFileDbfFile::Close() {
  layout_.reset();
  bytes_ = TableBytes();
  record_.clear();
  current_record_ = -1;
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
  return image == nullptr ? layout_->header.record_count
                          : dbf::ReadU32(image->bytes.data() + dbf::kRecordCountAt);
}

// A file is replaced as a whole, whatever its size, so that it is a table at any moment. A
// table whose file is another one by now stays without bytes, as one does when its image is
// dropped.
bool TFileDbfFile::PrepareChange() {
  if (bytes_.image() != nullptr) return true;
  if (bytes_.file() == nullptr) return false;
  const bool unchanged = cache_.host().files.Stamp(path_) == file_time_;
  if (unchanged && cache_.FindImage(path_) == nullptr) {
    auto loaded = LoadImage(*bytes_.file());
    loaded->layout = ReadLayout(TableBytes(*loaded)).layout;
    cache_.Add(std::move(loaded));
  }
  if (bytes_.image() == nullptr) Detach();
  return bytes_.image() != nullptr;
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
  if (!bytes_.Read(layout_->RecordAt(record), record_.data(), layout_->header.record_length)) {
    return DbfStatus::kRefused;
  }
  current_record_ = record;
  return DbfStatus::kOk;
}

DbfStatus TFileDbfFile::Post() {
  if (current_record_ < 1 || !PrepareChange() || current_record_ > RecordCount()) {
    return DbfStatus::kRefused;
  }
  NormaliseMark();
  TDbfMemoryStream& image = *bytes_.image();
  const auto at = static_cast<std::size_t>(layout_->RecordAt(current_record_));
  image.Touch(at);
  image.bytes.Overwrite(at, std::string_view(record_).substr(0, layout_->header.record_length));
  cache_.MarkChanged(image);
  return DbfStatus::kOk;
}

bool TFileDbfFile::Append() {
  if (!PrepareChange()) return false;
  const std::int64_t count = RecordCount();
  if (count >= kMaxRecordCount) return false;
  NormaliseMark();
  const auto at = static_cast<std::size_t>(layout_->RecordAt(count + 1));
  bytes_.image()->Touch(at);
  bytes_.image()->bytes.Overwrite(at, record_);
  SetRecordCount(count + 1);
  current_record_ = count + 1;
  return true;
}

DbfStatus TFileDbfFile::DeleteRecord(std::int64_t record) {
  if (record < 1 || !PrepareChange() || record > RecordCount()) return DbfStatus::kRefused;
  const std::int64_t count = RecordCount();
  GrowingBytes& bytes = bytes_.image()->bytes;
  const auto at = static_cast<std::size_t>(layout_->RecordAt(record));
  bytes_.image()->Touch(at);
  bytes.Erase(at, layout_->header.record_length);
  const auto end = static_cast<std::size_t>(layout_->RecordAt(count));
  bytes.Resize(end);
  bytes.Overwrite(end, {&dbf::kEndOfTable, 1});
  SetRecordCount(count - 1);
  current_record_ = 0;
  return DbfStatus::kOk;
}

void TFileDbfFile::SetRecordCount(std::int64_t count) {
  TDbfMemoryStream& image = *bytes_.image();
  dbf::WriteU32(image.bytes.data() + dbf::kRecordCountAt, static_cast<std::uint32_t>(count));
  cache_.MarkChanged(image);
}

}  // namespace customsconv
