#include "dbf/dbf_values.h"

#include <algorithm>
#include <cstring>

#include "base/code_pages.h"
#include "base/letter_case.h"
#include "dbf/dbf_format.h"
#include "text/blanks.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace customsconv::dbf {
namespace {

constexpr std::size_t kMemoNumberSize = 4;
constexpr std::size_t kRoundedDecimals = 2;  // more decimals are kept as they are written
constexpr double kWrittenNumberLimit = 1e9;  // below this, that is

bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// ---- as shown

bool IsCompactDate(std::string_view stored) {
  return !Trim(stored).empty() && stored.find_first_of(kDateSeparators) == std::string_view::npos;
}

// yyyymmdd as dd.mm.yy, without blanks around it
ShortText ShownDate(std::string_view stored) {
  std::string shown;
  for (const std::size_t at : {6UL, 4UL, 2UL}) {
    if (at < stored.size()) shown += stored.substr(at, 2);
    if (at > 2) shown += kDateSeparator;
  }
  return WinFromDosShort(Trim(shown));
}

std::string MemoNumber(std::string_view stored) {
  char bytes[kMemoNumberSize] = {};
  stored.copy(bytes, sizeof bytes);
  return std::to_string(ReadU32(bytes));
}

bool IsBinaryMemo(char type, std::uint8_t version) {
  return type == 'M' && version == kVersionExtended;
}

// ---- as stored

// The place of a field in a record.
struct Cell {
  char* to;
  std::size_t width;

  // Values of digits and signs are alike in both code pages. What is too long is cut
  // on the right.
  void Left(std::string_view value) const {
    const std::size_t copied = value.copy(to, width);
    std::memset(to + copied, ' ', width - copied);
  }
  void Right(std::string_view value) const {
    const std::size_t copied = std::min(value.size(), width);
    std::memset(to, ' ', width - copied);
    value.copy(to + width - copied, copied);
  }
};

// Digits without separators, as officers type dates, get them; a year of one
// digit is the nearest one of its decade. Other texts are empty here.
std::string SpreadDate(std::string_view value) {
  if (value.size() != 5 && value.size() != 6 && value.size() != 8) return {};
  if (!AllDigits(value)) return {};
  std::string dotted(value.substr(0, 2));
  (dotted += '.').append(value.substr(2, 2)) += '.';
  if (value.size() == 5) dotted += value[4] >= '5' ? '9' : '0';
  return dotted.append(value.substr(4));
}

void StoreDate(Cell cell, std::string_view value, int this_year) {
  const std::string dotted = SpreadDate(value);
  if (!dotted.empty()) value = dotted;
  const std::size_t start = std::min(value.find_first_not_of(' '), value.size());
  const Date date = TextToDate(value.substr(start, value.find(' ', start) - start), 0, this_year);
  if (date == 0) return cell.Left({});
  const CalendarDay day = DayOf(date);
  char digits[8];
  int rest = day.year * 10000 + day.month * 100 + day.day;
  for (int i = 7; i >= 0; --i, rest /= 10) digits[i] = static_cast<char>('0' + rest % 10);
  cell.Left({digits, sizeof digits});
}

void StoreLogical(Cell cell, std::string_view value) {
  value = Trim(value);
  const char letter = value.size() == 1 ? UpperCaseChar(value[0]) : ' ';
  const bool yes = letter == '1' || letter == 'T';
  const bool no = letter == '0' || letter == 'F';
  cell.Left(yes ? "T" : no ? "F" : "");
}

// A number that only wants zeros behind it: an optional sign, digits without a
// leading zero and not too many decimals. False for all others, which take the long way.
bool StorePlainNumber(Cell cell, std::string_view value, std::size_t decimals) {
  const std::size_t sign = value[0] == '-' ? 1 : 0;
  const std::size_t point = std::min(value.find('.'), value.size());
  const std::string_view whole = value.substr(sign, point - sign);
  const std::string_view fraction = value.substr(std::min(point + 1, value.size()));
  if (whole.empty() || !AllDigits(whole)) return false;
  if (whole[0] == '0' && (sign > 0 || whole.size() > 1)) return false;
  if (fraction.size() > decimals || !AllDigits(fraction)) return false;
  const std::size_t size = point + (decimals > 0 ? 1 + decimals : 0);
  if (size > cell.width || (decimals == 0 && point < value.size())) return false;
  char* const start = cell.to + cell.width - size;
  std::memset(cell.to, ' ', cell.width - size);
  value.copy(start, point);
  if (decimals == 0) return true;
  start[point] = '.';
  std::memset(start + point + 1, '0', decimals);
  fraction.copy(start + point + 1, fraction.size());
  return true;
}

// The digits as they are written, cut or filled up to `decimals`. Too long a number
// loses its head.
void StoreWrittenNumber(Cell cell, std::string_view value, std::size_t decimals) {
  std::string number(value);
  if (number.find('.') == std::string::npos) number += '.';
  number.resize(number.find('.') + 1 + decimals, '0');
  cell.Right(std::string_view(number).substr(number.size() - std::min(number.size(), cell.width)));
}

void StoreNumber(Cell cell, std::string_view value, std::size_t decimals) {
  value = Trim(value);
  if (value.empty()) return cell.Left({});
  if (StorePlainNumber(cell, value, decimals)) return;
  double number = 0;
  if (!TextToFloat(value, number)) return cell.Left("0");
  if (decimals > kRoundedDecimals && number < kWrittenNumberLimit) {
    return StoreWrittenNumber(cell, value, decimals);
  }
  const std::string rounded = RoundDecimalText(value, static_cast<int>(decimals));
  // What is cut from a number that is too wide depends on its decimals; older
  // workstations count on it.
  const bool keep_tail = decimals > kRoundedDecimals && rounded.size() > cell.width;
  cell.Right(std::string_view(rounded).substr(keep_tail ? rounded.size() - cell.width : 0));
}

}  // namespace

ShortText ShownValue(char type, std::uint8_t version, std::string_view stored) {
  stored = CutToShort(stored);
  if (type == 'D' && IsCompactDate(stored)) return ShownDate(stored);
  if (IsBinaryMemo(type, version)) return MemoNumber(stored);
  return WinFromDosShort(Trim(stored));
}

std::string ShownLongValue(char type, std::uint8_t version, std::string_view stored) {
  if (type == 'D' || IsBinaryMemo(type, version)) {
    return ShownValue(type, version, stored).str();
  }
  return WinFromDos(Trim(stored));
}

void StoreValue(char* to, const FieldDescriptor& field, std::string_view value, int this_year) {
  const Cell cell{to, field.length};
  value = TrimRight(CutToShort(value));
  switch (field.type) {
    case 'D':
      return StoreDate(cell, value, this_year);
    case 'L':
      return StoreLogical(cell, value);
    case 'M':
      return StoreText(to, cell.width, PadLeftBlanks(value, cell.width));
    case 'N':
      return StoreNumber(cell, value, field.decimals);
    default:
      return StoreText(to, cell.width, value);
  }
}

void StoreText(char* to, std::size_t width, std::string_view value) {
  value = CutToShort(value.substr(0, width));
  DosFromWinTo(to, value);
  std::memset(to + value.size(), ' ', width - value.size());
}

}  // namespace customsconv::dbf
