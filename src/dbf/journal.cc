#include "dbf/journal.h"

#include <algorithm>
#include <array>

namespace customsconv::journal {
namespace {

constexpr std::string_view kMark{"CCSAVE\r\n"};
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kMomentSize = 19;
constexpr std::size_t kLengthAt = 16;
constexpr std::size_t kSumSize = 4;
constexpr std::int64_t kLargest = std::int64_t{1} << 60;  // more than any file system's file

// What a byte adds to a sum, with so many bytes behind it.
constexpr std::size_t kStep = 8;  // bytes that are summed up at once
constexpr std::array<std::array<std::uint32_t, 256>, kStep> kSums = [] {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::array<std::array<std::uint32_t, 256>, kStep> sums{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t sum = i;
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
    sums[0][i] = sum;
  }
  for (std::size_t behind = 1; behind < kStep; ++behind) {
    for (std::size_t i = 0; i < 256; ++i) {
      const std::uint32_t sum = sums[behind - 1][i];
      sums[behind][i] = sums[0][sum & 0xFF] ^ sum >> 8;
    }
  }
  return sums;
}();

std::uint32_t FourBytes(const char* bytes) {
  const auto byte = [bytes](int i) {
    return std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
  };
  return byte(0) | byte(1) | byte(2) | byte(3);
}

void Add(std::string& bytes, std::uint64_t number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

void AddSum(std::string& bytes, std::size_t from) {
  Add(bytes, Checksum(std::string_view(bytes).substr(from)), kSumSize);
}

// Takes a journal's bytes apart; what is asked for beyond its end is missing from then on.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::string_view Text(std::uint64_t size) {
    if (size > bytes_.size() - at_) whole_ = false;
    if (!whole_) return {};
    const auto length = static_cast<std::size_t>(size);  // of what is there
    at_ += length;
    return bytes_.substr(at_ - length, length);
  }
  std::uint64_t Number(int size) {
    std::uint64_t number = 0;
    const std::string_view text = Text(static_cast<std::uint64_t>(size));
    for (std::size_t i = text.size(); i-- > 0;) {
      number = number << 8 | static_cast<unsigned char>(text[i]);
    }
    return number;
  }
  std::int64_t Position() { return static_cast<std::int64_t>(Number(8)); }
  // The sum of what was read since the last one stands here.
  void TakeSum() {
    const std::uint32_t sum = Checksum(bytes_.substr(summed_, at_ - summed_));
    if (Number(kSumSize) != sum) whole_ = false;
    summed_ = at_;
  }
  void Refuse() { whole_ = false; }
  [[nodiscard]] bool whole() const { return whole_; }
  [[nodiscard]] bool at_end() const { return at_ == bytes_.size(); }
  // What is left could hold so many things of that size.
  bool CanHold(std::uint64_t count, std::uint64_t size) {
    if (count > (bytes_.size() - at_) / size) whole_ = false;
    return whole_;
  }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
  std::size_t summed_ = 0;
  bool whole_ = true;
};

std::int64_t SectorCount(std::int64_t at, std::int64_t length) {
  return length == 0 ? 0 : (at + length - 1) / kSector - at / kSector + 1;
}

Range ReadRange(Reader& reader) {
  Range range;
  range.at = reader.Position();
  const auto old_length = reader.Number(8);
  range.new_length = reader.Position();
  range.old_bytes = reader.Text(old_length);
  const auto possible = [](std::int64_t number) { return number >= 0 && number <= kLargest; };
  if (!possible(range.at) || !possible(range.new_length)) reader.Refuse();
  if (!reader.whole()) return range;
  const auto sums = static_cast<std::uint64_t>(SectorCount(range.at, range.length()));
  for (std::uint64_t i = 0; reader.CanHold(sums - i, kSumSize) && i < sums; ++i) {
    range.new_sums.push_back(static_cast<std::uint32_t>(reader.Number(kSumSize)));
  }
  return range;
}

Table ReadTable(Reader& reader) {
  Table table;
  table.name = reader.Text(reader.Number(2));
  // A file of this folder and of no other.
  if (table.name.empty() || table.name.find_first_of("\\/:") != std::string::npos) reader.Refuse();
  table.old_size = reader.Position();
  table.new_size = reader.Position();
  if (table.old_size < kAbsent || table.new_size < 0) reader.Refuse();
  const std::uint64_t ranges = reader.Number(4);
  for (std::uint64_t i = 0; reader.CanHold(ranges - i, 24) && i < ranges; ++i) {
    table.ranges.push_back(ReadRange(reader));
  }
  reader.TakeSum();
  return table;
}

}  // namespace

std::int64_t Range::length() const {
  return std::max(new_length, static_cast<std::int64_t>(old_bytes.size()));
}

std::uint32_t Checksum(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (; bytes.size() >= kStep; bytes.remove_prefix(kStep)) {
    const std::uint32_t low = sum ^ FourBytes(bytes.data());
    const std::uint32_t high = FourBytes(bytes.data() + 4);
    sum = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      sum ^= kSums[7 - i][low >> (8 * i) & 0xFF] ^ kSums[3 - i][high >> (8 * i) & 0xFF];
    }
  }
  for (const char c : bytes) sum = kSums[0][(sum ^ static_cast<unsigned char>(c)) & 0xFF] ^ sum >> 8;
  return ~sum;
}

std::vector<std::uint32_t> SectorSums(std::int64_t at, std::int64_t length,
                                      std::string_view bytes) {
  std::vector<std::uint32_t> sums;
  sums.reserve(static_cast<std::size_t>(SectorCount(at, length)));
  std::string filled;
  const std::int64_t end = at + length;
  while (at < end) {
    const auto part = static_cast<std::size_t>(SectorPart(at, end));
    if (bytes.size() >= part) {
      sums.push_back(Checksum(bytes.substr(0, part)));
    } else {
      filled.assign(bytes).resize(part, '\0');
      sums.push_back(Checksum(filled));
    }
    bytes.remove_prefix(std::min(part, bytes.size()));
    at += static_cast<std::int64_t>(part);
  }
  return sums;
}

std::string Bytes(const Journal& journal) {
  std::string bytes(kMark);
  Add(bytes, kVersion, 4);
  Add(bytes, journal.tables.size(), 4);
  Add(bytes, 0, 8);  // the length, known in the end
  bytes += journal.moment;
  bytes.resize(kLengthAt + 8 + kMomentSize, ' ');
  Add(bytes, journal.note.size(), 4);
  bytes += journal.note;
  const std::size_t head_end = bytes.size();
  Add(bytes, 0, kSumSize);
  for (const Table& table : journal.tables) {
    const std::size_t start = bytes.size();
    Add(bytes, table.name.size(), 2);
    bytes += table.name;
    Add(bytes, static_cast<std::uint64_t>(table.old_size), 8);
    Add(bytes, static_cast<std::uint64_t>(table.new_size), 8);
    Add(bytes, table.ranges.size(), 4);
    for (const Range& range : table.ranges) {
      Add(bytes, static_cast<std::uint64_t>(range.at), 8);
      Add(bytes, range.old_bytes.size(), 8);
      Add(bytes, static_cast<std::uint64_t>(range.new_length), 8);
      bytes += range.old_bytes;
      for (const std::uint32_t sum : range.new_sums) Add(bytes, sum, kSumSize);
    }
    AddSum(bytes, start);
  }
  std::string number;
  Add(number, bytes.size(), 8);
  bytes.replace(kLengthAt, number.size(), number);
  number.clear();
  Add(number, Checksum(std::string_view(bytes).substr(0, head_end)), kSumSize);
  bytes.replace(head_end, number.size(), number);
  return bytes;
}

Reading Read(std::string_view bytes) {
  Reader reader(bytes);
  Reading reading;
  const bool marked = reader.Text(kMark.size()) == kMark;
  const auto version = static_cast<std::uint32_t>(reader.Number(4));
  const std::uint64_t tables = reader.Number(4);
  const std::uint64_t length = reader.Number(8);
  reading.journal.moment = reader.Text(kMomentSize);
  reading.journal.note = reader.Text(reader.Number(4));
  reader.TakeSum();
  if (!marked || !reader.whole() || length != bytes.size()) return reading;
  if (version != kVersion) {
    reading.form = Form::kUnknown;
    return reading;
  }
  for (std::uint64_t i = 0; reader.CanHold(tables - i, 24) && i < tables; ++i) {
    reading.journal.tables.push_back(ReadTable(reader));
  }
  if (reader.whole() && reader.at_end()) reading.form = Form::kWhole;
  return reading;
}

}  // namespace customsconv::journal
