#ifndef CUSTOMSCONV_DBF_JOURNAL_H_
#define CUSTOMSCONV_DBF_JOURNAL_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The rollback journal of a table folder as bytes; docs/journal.md draws them.
namespace customsconv::journal {

inline constexpr std::string_view kFileName = "~ccsave.jnl";
inline constexpr std::int64_t kAbsent = -1;  // the size of a table that is not there
// Disks write so many bytes as a whole.
inline constexpr std::int64_t kSector = 512;

// A place in a table that a save changes. Where it reaches beyond the old table or the new
// one, there is nothing to tell of that one.
struct Range {
  std::int64_t at = 0;
  std::string old_bytes;
  std::int64_t new_length = 0;
  // Of the new bytes, sector by sector of the file; what the new table lacks counts as zeros.
  std::vector<std::uint32_t> new_sums;

  // Of the longer of both.
  [[nodiscard]] std::int64_t length() const;
};

struct Table {
  std::string name;  // in the folder, code page 1251
  std::int64_t old_size = kAbsent;
  std::int64_t new_size = 0;
  std::vector<Range> ranges;
};

struct Journal {
  std::string moment;  // when the save began, "yyyy-mm-dd hh:nn:ss"
  std::string note;    // what is saved, code page 1251
  std::vector<Table> tables;
};

// The checksum of Ethernet and ZIP (CRC-32).
[[nodiscard]] std::uint32_t Checksum(std::string_view bytes);
// The sums of the sectors that a range of `length` from `at` on touches, when `bytes` stand there
// and zeros behind them.
[[nodiscard]] std::vector<std::uint32_t> SectorSums(std::int64_t at, std::int64_t length,
                                                    std::string_view bytes);

// The length of a sector's part that begins at `at` and ends at `end` at the latest.
[[nodiscard]] inline std::int64_t SectorPart(std::int64_t at, std::int64_t end) {
  return std::min(end - at, kSector - at % kSector);
}

[[nodiscard]] std::string Bytes(const Journal& journal);

enum class Form : std::uint8_t {
  kWhole,
  kTorn,     // never finished: no table was touched
  kUnknown,  // whole, but of a version that this program does not know
};
struct Reading {
  Form form = Form::kTorn;
  Journal journal;
};
[[nodiscard]] Reading Read(std::string_view bytes);

}  // namespace customsconv::journal

#endif  // CUSTOMSCONV_DBF_JOURNAL_H_
