#include "storage/dbf_values.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/code_pages.h"
#include "base/letter_case.h"
#include "common/blanks.h"
#include "common/char_set.h"
#include "common/dates.h"
#include "common/numbers.h"
#include "common/words.h"
#include "storage/dbf_format.h"

namespace customsconv::dbf {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kMemoNumberSize = 4;
constexpr int kRoundedDecimals = 2;          // more decimals are kept as they are written
constexpr double kWrittenNumberLimit = 1e9;  // below this, that is

bool AllDigits(std::string_view text) {
  return text.find_first_not_of(kDigits) == std::string_view::npos;
}

// ---- as shown

bool IsCompactDate(std::string_view stored) {
  return !Trim(stored).empty() && stored.find_first_of(kDateSeparators) == std::string_view::npos;
}

// yyyymmdd as dd.mm.yy
ShortText ShownDate(std::string_view stored) {
  const auto two_from = [stored](std::size_t at) {
    return stored.substr(std::min(at, stored.size()), 2);
  };
  ShortText shown(two_from(6));
  shown += kDateSeparator;
  shown += two_from(4);
  shown += kDateSeparator;
  shown += two_from(2);
  return shown;
}

std::string MemoNumber(std::string_view stored) {
  char bytes[kMemoNumberSize] = {};
  std::memcpy(bytes, stored.data(), std::min(stored.size(), kMemoNumberSize));
  return std::to_string(ReadU32(bytes));
}

bool IsBinaryMemo(char type, std::uint8_t version) {
  return type == 'M' && version == kVersionExtended;
}

// ---- as stored

// Digits without separators, as officers type dates; a year of one digit is the
// nearest one of its decade.
ShortText SpreadDate(std::string_view value) {
  if (!AllDigits(value)) return value;
  if (value.size() != 5 && value.size() != 6 && value.size() != 8) return value;
  ShortText dotted(value.substr(0, 2));
  dotted += '.';
  dotted += value.substr(2, 2);
  dotted += '.';
  if (value.size() == 5) dotted += value[4] >= '5' ? '9' : '0';
  dotted += value.substr(4);
  return dotted;
}

ShortText FormattedDate(std::string_view value, int this_year) {
  const ShortText dotted = SpreadDate(value);
  static constexpr CharSet kBlank(" ");
  const Date date = TextToDate(ExtractWord(1, dotted, kBlank), 0, this_year);
  if (date == 0) return {};
  const CalendarDay day = DayOf(date);
  char text[8];
  const int digits = day.year * 10000 + day.month * 100 + day.day;
  for (int i = 7, rest = digits; i >= 0; --i, rest /= 10) {
    text[i] = static_cast<char>('0' + rest % 10);
  }
  return std::string_view(text, sizeof text);
}

ShortText FormattedLogical(std::string_view value) {
  value = Trim(value);
  if (value == "1") return "T";
  if (value == "0") return "F";
  if (value.size() != 1) return {};
  const char letter = UpperCaseChar(value[0]);
  return letter == 'T' || letter == 'F' ? ShortText(std::string_view(&letter, 1)) : ShortText();
}

ShortText RightAligned(std::string_view text, std::size_t width) {
  if (text.size() >= width) return text;
  char aligned[ShortText::kMaxSize];
  width = std::min(width, sizeof aligned);
  std::memset(aligned, ' ', width - text.size());
  std::memcpy(aligned + width - text.size(), text.data(), text.size());
  return std::string_view(aligned, width);
}

// The digits as they are written, cut or filled up to `decimals`. Too long a number
// loses its head.
ShortText WrittenNumber(std::string_view value, std::size_t width, std::size_t decimals) {
  std::string number(value);
  if (number.find('.') == std::string::npos) number += '.';
  number.resize(number.find('.') + 1 + decimals, '0');
  if (number.size() > width) number.erase(0, number.size() - width);
  return RightAligned(number, width);
}

ShortText FormattedNumber(const FieldDescriptor& field, std::string_view value) {
  value = Trim(value);
  if (value.empty()) return {};
  double number = 0;
  if (!TextToFloat(value, number) || !std::isfinite(number)) return "0";
  if (field.decimals > kRoundedDecimals && number < kWrittenNumberLimit) {
    return WrittenNumber(value, field.length, field.decimals);
  }
  const std::string rounded = RoundDecimalText(value, field.decimals);
  if (rounded.size() <= field.length) return RightAligned(rounded, field.length);
  // What is cut from a number that is too wide depends on its decimals; older
  // workstations count on it.
  const std::string_view text = rounded;
  return field.decimals > kRoundedDecimals ? text.substr(text.size() - field.length)
                                           : text.substr(0, field.length);
}

}  // namespace

ShortText ShownValue(char type, std::uint8_t version, std::string_view stored) {
  stored = CutToShort(stored);
  if (type == 'D' && IsCompactDate(stored)) {
    const ShortText date = ShownDate(stored);
    return WinFromDosShort(Trim(date));
  }
  if (IsBinaryMemo(type, version)) return MemoNumber(stored);
  return WinFromDosShort(Trim(stored));
}

std::string ShownLongValue(char type, std::uint8_t version, std::string_view stored) {
  if (type == 'D' || IsBinaryMemo(type, version)) {
    return ShownValue(type, version, stored).str();
  }
  return WinFromDos(Trim(stored));
}

ShortText FormattedValue(const FieldDescriptor& field, std::string_view value, int this_year) {
  value = TrimRight(CutToShort(value));
  switch (field.type) {
    case 'D':
      return FormattedDate(value, this_year);
    case 'L':
      return FormattedLogical(value);
    case 'M':
      return RightAligned(value, field.length);
    case 'N':
      return FormattedNumber(field, value);
    default:
      return value;
  }
}

void StoreText(char* to, std::size_t width, std::string_view value) {
  const ShortText dos = DosFromWinShort(value.substr(0, width));
  std::memcpy(to, dos.data(), dos.size());
  std::memset(to + dos.size(), ' ', width - dos.size());
}

}  // namespace customsconv::dbf
