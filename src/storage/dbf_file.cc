#include "storage/dbf_file.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "storage/dbf_format.h"
#include "storage/dbf_image.h"
#include "storage/dbf_layout.h"

// Opening and creating, records as wholes. Fields are in dbf_file_fields.cc,
// searching in dbf_search.cc.
namespace customsconv {
namespace {

constexpr std::string_view kMissing = "dBaseInt: Не найден файл "_cp1251;
constexpr std::size_t kMovedPiece = 61439;  // bytes moved at a time while a record is deleted
constexpr std::int64_t kMaxRecordCount = 0xFFFFFFFF;

// The form of a path that messages show.
ShortText ShownName(std::string_view path) {
  std::string name = UpperCaseRu(path);
  std::replace(name.begin(), name.end(), '/', '\\');
  return name;
}

void ReadWhole(FileStream& file, GrowingBytes& bytes) {
  bytes.Resize(static_cast<std::size_t>(file.Size()));
  bytes.Resize(file.Read(bytes.data(), bytes.size()));
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
  count_in_file_ = layout_->header.record_count;
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
    auto loaded = std::make_unique<TDbfMemoryStream>();
    ReadWhole(*file, loaded->bytes);
    loaded->path = path_;
    loaded->name = file_name_;
    loaded->file_age = file_time_;
    image = &cache_.Add(std::move(loaded));
  }
  file_time_ = image->file_age;
  bytes_ = TableBytes(*image);
  return true;
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

std::int64_t TFileDbfFile::RecordCount() const {
  if (!layout_ || !bytes_.attached()) return 0;
  return bytes_.image() != nullptr ? CountInTable() : count_in_file_;
}

std::int64_t TFileDbfFile::CountInTable() const {
  if (const auto image = bytes_.image()) {
    return dbf::ReadU32(image->bytes.data() + dbf::kRecordCountAt);
  }
  char count[4];
  return bytes_.Read(dbf::kRecordCountAt, count, sizeof count) ? dbf::ReadU32(count) : 0;
}

void TFileDbfFile::WriteCount(std::int64_t count) {
  char bytes[4];
  dbf::WriteU32(bytes, static_cast<std::uint32_t>(count));
  bytes_.Write(dbf::kRecordCountAt, {bytes, sizeof bytes});
  count_in_file_ = count;
}

void TFileDbfFile::MarkChanged() {
  if (const auto image = bytes_.image()) cache_.MarkChanged(*image);
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
  if (current_record_ < 1 || current_record_ > RecordCount()) return DbfStatus::kRefused;
  NormaliseMark();
  bytes_.Write(layout_->RecordAt(current_record_),
               std::string_view(record_).substr(0, layout_->header.record_length));
  MarkChanged();
  return DbfStatus::kOk;
}

bool TFileDbfFile::Append() {
  if (!layout_ || !bytes_.attached()) return false;
  const std::int64_t count = CountInTable();
  if (count >= kMaxRecordCount) return false;
  NormaliseMark();
  WriteLastRecord(count + 1);
  current_record_ = count + 1;
  MarkChanged();
  return true;
}

// Puts the record buffer and the end mark behind the records, then counts it. A
// file whose writing fails gets its end back, so that it stays a table.
void TFileDbfFile::WriteLastRecord(std::int64_t count) {
  const std::int64_t at = layout_->RecordAt(count);
  try {
    bytes_.Write(at, record_);
    WriteCount(count);
  } catch (const FileError&) {
    bytes_.Truncate(at);
    bytes_.Write(at, {&dbf::kEndOfTable, 1});
    throw;
  }
}

DbfStatus TFileDbfFile::DeleteRecord(std::int64_t record) {
  if (!layout_ || !bytes_.attached()) return DbfStatus::kRefused;
  const std::int64_t count = CountInTable();
  if (record < 1 || record > count) return DbfStatus::kRefused;
  MoveRecordsForward(record);
  const std::int64_t end = layout_->RecordAt(count);
  bytes_.Truncate(end);
  bytes_.Write(end, {&dbf::kEndOfTable, 1});
  WriteCount(count - 1);
  current_record_ = 0;
  MarkChanged();
  return DbfStatus::kOk;
}

// Everything behind the record moves into its place.
void TFileDbfFile::MoveRecordsForward(std::int64_t record) {
  if (const auto image = bytes_.image()) {
    image->bytes.Erase(static_cast<std::size_t>(layout_->RecordAt(record)),
                       layout_->header.record_length);
    return;
  }
  std::int64_t from = layout_->RecordAt(record + 1);
  const std::int64_t end = bytes_.Size();
  std::string piece;
  while (from < end) {
    piece.resize(static_cast<std::size_t>(std::min<std::int64_t>(end - from, kMovedPiece)));
    if (!bytes_.Read(from, piece.data(), piece.size())) return;
    bytes_.Write(from - layout_->header.record_length, piece);
    from += static_cast<std::int64_t>(piece.size());
  }
}

}  // namespace customsconv
