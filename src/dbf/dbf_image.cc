#include "dbf/dbf_image.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "base/cp1251_literal.h"
#include "dbf/dbf_format.h"

namespace customsconv {
namespace {

// Tables that grow beyond this are left to their files when they are written.
constexpr std::int64_t kWorthKeeping = 64 * 1024;

std::size_t Place(std::int64_t at) { return static_cast<std::size_t>(at); }

}  // namespace

GrowingBytes ReadWhole(FileStream& file, std::string_view path) {
  const std::int64_t size = file.Size();
  GrowingBytes bytes;
  try {
    if (!std::in_range<std::size_t>(size)) throw std::bad_alloc();
    bytes.Resize(static_cast<std::size_t>(size));
  } catch (const std::bad_alloc&) {
    throw FileError(FileError::Kind::kRead, path, "не хватает памяти"_cp1251);
  }
  file.Seek(0, SeekOrigin::kBegin);
  bytes.Resize(file.Read(bytes.data(), bytes.size()));
  return bytes;
}

bool BufferedFile::Read(std::int64_t at, char* to, std::size_t count) {
  constexpr std::size_t kBlock = 32 * 1024;
  if (at < block_at_ || Place(at - block_at_) + count > block_.size()) {
    file_->Seek(at, SeekOrigin::kBegin);
    if (count > kBlock) return file_->Read(to, count) == count;
    block_.resize(kBlock);
    block_.resize(file_->Read(block_.data(), kBlock));
    block_at_ = at;
  }
  if (count > block_.size()) return false;
  std::memcpy(to, block_.data() + Place(at - block_at_), count);
  return true;
}

// ---- the bytes of an image

TDbfMemoryStream::TDbfMemoryStream(GrowingBytes whole) : tail_(std::move(whole)) {
  if (tail_.size() >= dbf::kHeaderSize) count_ = dbf::ReadU32(tail_.data() + dbf::kRecordCountAt);
}

TDbfMemoryStream::TDbfMemoryStream(BufferedFile table, std::int64_t records_end, GrowingBytes rest,
                                   std::uint32_t count)
    : file(std::move(table)), tail_(std::move(rest)), tail_at_(records_end), count_(count) {}

std::int64_t TDbfMemoryStream::size() const {
  return tail_at_ + static_cast<std::int64_t>(tail_.size());
}

bool TDbfMemoryStream::Read(std::int64_t at, char* to, std::size_t count) {
  if (at + static_cast<std::int64_t>(count) > size()) return false;
  if (at >= tail_at_) {
    std::memcpy(to, tail_.data() + Place(at - tail_at_), count);
    return true;
  }
  const auto changed_row = rows_.find(at);
  if (changed_row != rows_.end() && changed_row->second.size() == count) {
    changed_row->second.copy(to, count);
    return true;
  }
  return file.Read(at, to, count);
}

void TDbfMemoryStream::Overwrite(std::int64_t at, std::string_view record) {
  if (undo_size_ >= 0 && at < undo_size_) {
    const std::int64_t end = std::min(undo_size_, at + static_cast<std::int64_t>(record.size()));
    std::string old(Place(end - at), '\0');
    if (Read(at, old.data(), old.size())) undo_.push_back({at, std::move(old)});
  }
  PutRow(at, record);
}

void TDbfMemoryStream::PutRow(std::int64_t at, std::string_view row) {
  if (at < tail_at_) {
    rows_[at] = row;
    return;
  }
  tail_.Overwrite(Place(at - tail_at_), row);
  MarkDirty(at, at + static_cast<std::int64_t>(row.size()));
}

// Rows mostly come one behind the other.
void TDbfMemoryStream::MarkDirty(std::int64_t at, std::int64_t end) {
  auto next = dirty_.upper_bound(at);
  if (next != dirty_.begin() && std::prev(next)->second >= at) {
    --next;
    next->second = std::max(next->second, end);
  } else {
    next = dirty_.emplace_hint(next, at, end);
  }
  for (auto behind = std::next(next); behind != dirty_.end() && behind->first <= next->second;) {
    next->second = std::max(next->second, behind->second);
    behind = dirty_.erase(behind);
  }
}

void TDbfMemoryStream::Erase(std::int64_t at, std::size_t count, std::int64_t records_end,
                             std::string_view end) {
  BecomeWhole();
  if (undo_size_ > at) {
    undo_.push_back({at, std::string(tail_.view().substr(Place(at), Place(undo_size_ - at)))});
  }
  tail_.Erase(Place(at), count);
  tail_.Resize(Place(records_end));
  tail_.Overwrite(Place(records_end), end);
  MarkDirty(at, size());
}

void TDbfMemoryStream::SetRecordCount(std::uint32_t count) {
  count_ = count;
  if (tail_at_ == 0) dbf::WriteU32(tail_.data() + dbf::kRecordCountAt, count);
}

void TDbfMemoryStream::BecomeWhole() {
  if (tail_at_ == 0) return;
  GrowingBytes whole;
  whole.Resize(Place(size()));
  file.stream()->Seek(0, SeekOrigin::kBegin);
  if (file.stream()->Read(whole.data(), Place(tail_at_)) != Place(tail_at_)) {
    throw FileError(FileError::Kind::kRead, path, "файл изменился"_cp1251);
  }
  whole.Overwrite(Place(tail_at_), tail_.view());
  tail_ = std::move(whole);
  tail_at_ = 0;
  for (const auto& [at, row] : std::exchange(rows_, {})) PutRow(at, row);
  SetRecordCount(count_);
}

// ---- on its way to the file

std::vector<TableChange::Piece> TDbfMemoryStream::Changes(bool all) {
  if (all) {
    BecomeWhole();
    const std::size_t head = std::min(tail_.size(), dbf::kHeaderSize);
    return {{0, tail_.view().substr(0, head)},
            {static_cast<std::int64_t>(head), tail_.view().substr(head)}};
  }
  count_bytes_.resize(sizeof count_);
  dbf::WriteU32(count_bytes_.data(), count_);
  std::vector<TableChange::Piece> pieces = {{dbf::kRecordCountAt, count_bytes_}};
  for (const auto& [at, row] : rows_) pieces.push_back({at, row});
  for (const auto& [from, to] : dirty_) {
    const std::int64_t end = std::min(to, size());
    if (from < end) {
      pieces.push_back({from, tail_.view().substr(Place(from - tail_at_), Place(end - from))});
    }
  }
  return pieces;
}

void TDbfMemoryStream::Settle(std::int64_t records_end) {
  dirty_.clear();
  rows_.clear();
  undo_.clear();
  undo_size_ = -1;
  file.Forget();
  if (file.stream() == nullptr) return;
  if (size() < kWorthKeeping && tail_at_ == 0) {
    file = BufferedFile();
    writable = false;
    return;
  }
  GrowingBytes rest;
  rest.Overwrite(0, tail_.view().substr(Place(std::max<std::int64_t>(records_end - tail_at_, 0))));
  tail_ = std::move(rest);
  tail_at_ = records_end;
}

void TDbfMemoryStream::StartUndo() {
  undo_.clear();
  undo_size_ = size();
  undo_count_ = count_;
  was_changed_ = changed;
}

void TDbfMemoryStream::Undo() {
  if (undo_size_ < 0) return;
  if (size() > undo_size_) tail_.Resize(Place(undo_size_ - tail_at_));
  for (auto old = undo_.rbegin(); old != undo_.rend(); ++old) PutRow(old->at, old->bytes);
  SetRecordCount(undo_count_);
  undo_.clear();
  undo_size_ = -1;
  if (was_changed_) return;
  changed = false;
  dirty_.clear();
  rows_.clear();
}

// ---- the bytes of an open table

std::int64_t TableBytes::Size() const {
  if (image_ != nullptr) return image_->size();
  return file() != nullptr ? file()->Size() : 0;
}

bool TableBytes::Read(std::int64_t at, char* to, std::size_t count) const {
  if (image_ != nullptr) return image_->Read(at, to, count);
  return file() != nullptr && file_.Read(at, to, count);
}

}  // namespace customsconv
