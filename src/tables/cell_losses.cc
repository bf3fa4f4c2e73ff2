#include "tables/cell_losses.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/dos_code_page.h"
#include "text/blanks.h"
#include "text/decimal_text.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

enum class InDos : std::uint8_t { kSame, kLookAlike, kNone };

const std::array<InDos, 256>& CharactersInDos() {
  static const auto table = [] {
    std::array<InDos, 256> characters{};
    for (std::size_t i = 0; i < characters.size(); ++i) {
      const char win = static_cast<char>(static_cast<unsigned char>(i));
      const char dos = DosFromWin(win);
      if (WinFromDos(dos) != win) characters[i] = dos == '?' ? InDos::kNone : InDos::kLookAlike;
    }
    return characters;
  }();
  return table;
}

}  // namespace

CellLosses& CellLosses::operator+=(const CellLosses& other) {
  cut += other.cut;
  number_cut += other.number_cut;
  rounded += other.rounded;
  no_number += other.no_number;
  no_date += other.no_date;
  replaced += other.replaced;
  look_alike += other.look_alike;
  return *this;
}

void CellLosses::Count(const FieldDescriptor& field, std::string_view value,
                       std::string_view stored) {
  value = TrimRight(value);
  if (value.empty()) return;
  switch (field.type) {
    case column_type::kMemo:
      return;
    case column_type::kNumber:
      return CountNumber(Trim(value), Trim(stored));
    case column_type::kDate:
    case column_type::kLogical:
      if (Trim(stored).empty()) ++no_date;
      return;
    default:
      if (value.size() > stored.size()) ++cut;
      CountCharacters(value.substr(0, stored.size()));
  }
}

void CellLosses::CountLong(std::string_view value, std::size_t width) {
  value = TrimRight(value);
  if (value.size() > width) ++cut;
  CountCharacters(value.substr(0, width));
}

void CellLosses::CountCharacters(std::string_view text) {
  const std::array<InDos, 256>& characters = CharactersInDos();
  auto worst = InDos::kSame;
  for (const char c : text) worst = std::max(worst, characters[static_cast<unsigned char>(c)]);
  if (worst == InDos::kNone) ++replaced;
  if (worst == InDos::kLookAlike) ++look_alike;
}

void CellLosses::CountNumber(std::string_view value, std::string_view stored) {
  if (value.empty() || value == stored) return;
  double wanted = 0;
  double kept = 0;
  if (!TextToFloat(value, wanted)) {
    ++no_number;
  } else if (UpToSixDecimals(value) != UpToSixDecimals(stored)) {
    ++(TextToFloat(stored, kept) && std::abs(wanted - kept) < 1 ? rounded : number_cut);
  }
}

}  // namespace customsconv
