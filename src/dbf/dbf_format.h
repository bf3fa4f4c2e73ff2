#ifndef CUSTOMSCONV_DBF_DBF_FORMAT_H_
#define CUSTOMSCONV_DBF_DBF_FORMAT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "dbf/dbf_fields.h"

// The bytes of a dBase table. Numbers are little-endian, texts code page 866.
//
//   header, 32 bytes
//     0   1  version: 0x03, 0xF5 with a memo field, 0x30 the extended layout
//     1   3  day of creation: year without its century, month, day
//     4   4  record count
//     8   2  header length: where the records begin
//    10   2  record length
//    12  17  zero
//    29   1  0x26, the code page mark for 866
//    30   2  zero
//   one descriptor a field, 32 bytes each
//     0  11  name, padded with NUL
//    11   1  type letter
//    12   4  zero
//    16   1  length, low byte
//    17   1  decimals; high byte of the length of a "C" field longer than 255
//    18  14  zero
//   0x0D 0x00 (the extended layout: 0x0D and 263 bytes more)
//   the records: a deletion mark ("*" or blank), then the fields in order
//   0x1A
namespace customsconv::dbf {

inline constexpr std::size_t kHeaderSize = 32;
inline constexpr std::size_t kVersionAt = 0;
inline constexpr std::size_t kDateAt = 1;
inline constexpr std::size_t kRecordCountAt = 4;
inline constexpr std::size_t kHeaderLengthAt = 8;
inline constexpr std::size_t kRecordLengthAt = 10;
inline constexpr std::size_t kCodePageAt = 29;

inline constexpr std::uint8_t kVersionPlain = 0x03;
inline constexpr std::uint8_t kVersionWithMemo = 0xF5;
inline constexpr std::uint8_t kVersionExtended = 0x30;
inline constexpr char kCodePage866 = 0x26;

inline constexpr std::size_t kDescriptorSize = 32;
inline constexpr std::size_t kNameSize = 11;
inline constexpr std::size_t kTypeAt = 11;
inline constexpr std::size_t kLengthAt = 16;
inline constexpr std::size_t kDecimalsAt = 17;

inline constexpr std::string_view kEndOfDescriptors{"\x0D\0", 2};
// What the header length counts beyond header and descriptors, at least.
inline constexpr int kDescriptorsTail = 1;
inline constexpr int kDescriptorsTailExtended = 233;
inline constexpr char kEndOfTable = 0x1A;
inline constexpr char kDeletedMark = '*';
inline constexpr char kLiveMark = ' ';

inline constexpr std::size_t kMarkSize = 1;        // the deletion mark in a record
inline constexpr std::int64_t kTooSmall = 64;      // a file of so many bytes is no table
inline constexpr std::int64_t kSizeTolerance = 3;  // bytes that may follow the records

[[nodiscard]] inline std::uint16_t ReadU16(const char* from) {
  const auto byte = [from](int i) { return static_cast<unsigned char>(from[i]); };
  return static_cast<std::uint16_t>(byte(0) | byte(1) << 8);
}
[[nodiscard]] inline std::uint32_t ReadU32(const char* from) {
  return ReadU16(from) | static_cast<std::uint32_t>(ReadU16(from + 2)) << 16;
}
inline void WriteU16(char* to, std::uint16_t value) {
  to[0] = static_cast<char>(value & 0xFF);
  to[1] = static_cast<char>(value >> 8);
}
inline void WriteU32(char* to, std::uint32_t value) {
  WriteU16(to, static_cast<std::uint16_t>(value & 0xFFFF));
  WriteU16(to + 2, static_cast<std::uint16_t>(value >> 16));
}

// What the first 32 bytes say.
struct Header {
  std::uint8_t version = kVersionPlain;
  std::uint32_t record_count = 0;
  std::uint16_t header_length = 0;
  std::uint16_t record_length = 0;

  // Number of descriptors that the header length has room for, which may be none.
  [[nodiscard]] int FieldCount() const;
  // The file size that a table of this header has without its end mark.
  [[nodiscard]] std::int64_t SizeOfRecords() const {
    return header_length + static_cast<std::int64_t>(record_count) * record_length;
  }
};

// `bytes` holds at least kHeaderSize bytes.
[[nodiscard]] Header ReadHeader(std::string_view bytes);
// `bytes` holds at least kDescriptorSize bytes; the offset is left to the caller.
[[nodiscard]] FieldDescriptor ReadDescriptor(std::string_view bytes);

// A table without records holds these fields and reads back with the same ones: the
// lengths fit their places in header and descriptors.
[[nodiscard]] bool CanBeWritten(const TDescrs& fields);
// The bytes of a table without records, made on `today`. Gives the fields
// their offsets and pads their names as they are held in memory.
[[nodiscard]] std::string EmptyTable(TDescrs& fields, CalendarDay today);

}  // namespace customsconv::dbf

#endif  // CUSTOMSCONV_DBF_DBF_FORMAT_H_
