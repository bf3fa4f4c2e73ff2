#include "dbf/dbf_format.h"

#include <algorithm>
#include <cstring>

#include "base/dos_code_page.h"
#include "base/letter_case.h"
#include "text/blanks.h"

namespace customsconv::dbf {
namespace {

constexpr std::size_t kMaxU16 = 0xFFFF;
constexpr std::size_t kMaxByte = 0xFF;

bool IsMemo(const FieldDescriptor& field) {
  return UpperCaseChar(field.type) == column_type::kMemo;
}

std::size_t HeaderLengthOf(const TDescrs& fields) {
  return kDescriptorSize * (fields.size() + 1) + kEndOfDescriptors.size();
}

std::size_t RecordLengthOf(const TDescrs& fields) {
  std::size_t length = kMarkSize;
  for (const FieldDescriptor& field : fields) length += field.length;
  return length;
}

std::string Padded(std::string_view name) {
  std::string padded(name.substr(0, kNameSize));
  padded.resize(kNameSize, ' ');
  return padded;
}

// Years are kept in two digits, with the century of 1900 dropped, then that of 2000.
char YearByte(int year) {
  const int since_1900 = year - 1900;
  return static_cast<char>(since_1900 > 99 ? year - 2000 : since_1900);
}

void WriteDescriptor(char* to, const FieldDescriptor& field) {
  const std::string_view name = field.TrimmedName();
  std::memcpy(to, name.data(), std::min(name.size(), kNameSize));
  to[kTypeAt] = field.type;
  to[kLengthAt] = static_cast<char>(field.length & kMaxByte);
  const bool long_text = field.type == column_type::kCharacter && field.length > kMaxByte;
  to[kDecimalsAt] = static_cast<char>(long_text ? field.length >> 8 : field.decimals);
}

}  // namespace

int Header::FieldCount() const {
  const int tail = version == kVersionExtended ? kDescriptorsTailExtended : kDescriptorsTail;
  return std::max(0, (header_length - tail) / static_cast<int>(kDescriptorSize) - 1);
}

Header ReadHeader(std::string_view bytes) {
  Header header;
  header.version = static_cast<std::uint8_t>(bytes[kVersionAt]);
  header.record_count = ReadU32(bytes.data() + kRecordCountAt);
  header.header_length = ReadU16(bytes.data() + kHeaderLengthAt);
  header.record_length = ReadU16(bytes.data() + kRecordLengthAt);
  return header;
}

FieldDescriptor ReadDescriptor(std::string_view bytes) {
  FieldDescriptor field;
  const std::string_view name = bytes.substr(0, std::min(kNameSize, bytes.find('\0')));
  field.name = Padded(UpperCaseRu(Trim(WinFromDos(name))));
  field.type = bytes[kTypeAt];
  field.length = static_cast<unsigned char>(bytes[kLengthAt]);
  field.decimals = static_cast<std::uint8_t>(bytes[kDecimalsAt]);
  if (field.type == column_type::kCharacter && field.decimals != 0) {
    field.length = static_cast<std::uint16_t>(field.length + (field.decimals << 8));
    field.decimals = 0;
  }
  return field;
}

bool CanBeWritten(const TDescrs& fields) {
  const auto readable = [](const FieldDescriptor& field) {
    if (field.type == column_type::kCharacter)
      return field.length > kMaxByte || field.decimals == 0;
    return field.length <= kMaxByte;
  };
  return HeaderLengthOf(fields) <= kMaxU16 && RecordLengthOf(fields) <= kMaxU16 &&
         std::all_of(fields.begin(), fields.end(), readable);
}

std::string EmptyTable(TDescrs& fields, CalendarDay today) {
  const std::size_t header_length = HeaderLengthOf(fields);
  std::string bytes(header_length - kEndOfDescriptors.size(), '\0');
  const bool with_memo = std::any_of(fields.begin(), fields.end(), IsMemo);
  bytes[kVersionAt] = static_cast<char>(with_memo ? kVersionWithMemo : kVersionPlain);
  bytes[kDateAt] = YearByte(today.year);
  bytes[kDateAt + 1] = static_cast<char>(today.month);
  bytes[kDateAt + 2] = static_cast<char>(today.day);
  WriteU16(&bytes[kHeaderLengthAt], static_cast<std::uint16_t>(header_length));
  WriteU16(&bytes[kRecordLengthAt], static_cast<std::uint16_t>(RecordLengthOf(fields)));
  bytes[kCodePageAt] = kCodePage866;

  std::size_t at = kHeaderSize;
  std::size_t offset = kMarkSize;
  for (FieldDescriptor& field : fields) {
    field.name = Padded(Trim(field.name));
    field.offset = static_cast<std::uint16_t>(offset);
    WriteDescriptor(&bytes[at], field);
    at += kDescriptorSize;
    offset += field.length;
  }
  bytes += kEndOfDescriptors;
  bytes += kEndOfTable;
  return bytes;
}

}  // namespace customsconv::dbf
