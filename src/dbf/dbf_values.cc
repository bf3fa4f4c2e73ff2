#include "dbf/dbf_values.h"

#include <algorithm>
#include <cstring>

#include "base/characters.h"
#include "base/dos_code_page.h"
#include "base/letter_case.h"
#include "dbf/dbf_format.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/decimal_text.h"
#include "text/numbers.h"

namespace customsconv::dbf {
namespace {

constexpr std::size_t kMemoNumberSize = 4;
constexpr std::size_t kRoundedDecimals = 2;  // more decimals are kept as they are written
constexpr double kWrittenNumberLimit = 1e9;  // below this, that is

// ---- as shown

bool IsCompactDate(std::string_view stored) {
  return !Trim(stored).empty() && stored.find_first_of(kDateSeparators) == std::string_view::npos;
}

ShortText ShownDate(std::string_view stored) {
  return WinFromDosShort(Trim(DottedFromTable(stored)));
}

std::string MemoNumber(std::string_view stored) {
  char bytes[kMemoNumberSize] = {};
  stored.copy(bytes, sizeof bytes);
  return std::to_string(ReadU32(bytes));
}

bool IsBinaryMemo(char type, std::uint8_t version) {
  return type == column_type::kMemo && version == kVersionExtended;
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

void StoreDate(Cell cell, std::string_view value, int this_year) {
  value = Trim(value);
  // Digits without separators, as officers type dates, get them; a year of one digit from 5 on
  // belongs to the nineties.
  const char decade = !value.empty() && value.back() >= '5' ? '9' : '0';
  const std::string dotted = AllDigits(value) ? DottedFromDigits(value, decade) : std::string();
  if (!dotted.empty()) value = dotted;
  const auto end = std::find_if(value.begin(), value.end(), IsBlank);  // before a time
  const Date date = TextToDate({value.begin(), end}, 0, this_year);
  cell.Left(date == 0 ? std::string() : TableDigits(date));
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
  if (type == column_type::kDate && IsCompactDate(stored)) return ShownDate(stored);
  if (IsBinaryMemo(type, version)) return ShortText::Cut(MemoNumber(stored));  // ten digits
  return WinFromDosShort(Trim(stored));
}

std::string ShownLongValue(char type, std::uint8_t version, std::string_view stored) {
  if (type == column_type::kDate || IsBinaryMemo(type, version)) {
    return ShownValue(type, version, stored).str();
  }
  return WinFromDos(Trim(stored));
}

void StoreValue(char* to, const FieldDescriptor& field, std::string_view value, int this_year) {
  const Cell cell{to, field.length};
  value = TrimRight(CutToShort(value));
  switch (field.type) {
    case column_type::kDate:
      return StoreDate(cell, value, this_year);
    case column_type::kLogical:
      return StoreLogical(cell, value);
    case column_type::kMemo:
      return StoreText(to, cell.width, PadLeftBlanks(value, cell.width));
    case column_type::kNumber:
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
