#include "catalogue/header_keys.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "base/letter_case.h"
#include "text/char_set.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kDelimiters(" =");

template <std::string TDocInfo::*kMember>
void StoreText(TDocInfo& info, std::string_view value) {
  (info.*kMember).assign(value);
}

// Integers beyond 8 bits keep the low ones.
template <std::uint8_t TDocInfo::*kMember>
void StoreByte(TDocInfo& info, std::string_view value) {
  info.*kMember = static_cast<std::uint8_t>(StrictInt(value));
}

bool BeginsWithTrue(std::string_view value) {
  if (value.empty()) return false;
  const char first = UpperCaseChar(value[0]);
  return first == '1' || first == 'T' || first == 'Y';
}

template <bool TDocInfo::*kMember>
void StoreFlag(TDocInfo& info, std::string_view value) {
  info.*kMember = BeginsWithTrue(value);
}

void StoreDbfName(TDocInfo& info, std::string_view value) {
  info.DbfName.assign(value);
  info.HasDbfName = true;
}

void StoreBlankColor(TDocInfo& info, std::string_view value) { info.BlankColor = HexToInt(value); }

void StoreGrouping(TDocInfo& info, std::string_view value) { info.Grouping = IntOr(value, 0); }

void StoreHasBackSide(TDocInfo& info, std::string_view value) {
  info.HasBackSide = BeginsWithTrue(value) ? 1 : IntOr(value.substr(0, 1), 0);
}

void StoreAllUpCase(TDocInfo& info, std::string_view value) { info.AllUpCase = StrToBoolRu(value); }

void StorePrnLineWidth(TDocInfo& info, std::string_view value) {
  if (!TextToFloat(value, info.PrnLineWidth)) info.PrnLineWidth = 0;
}

struct KeyEntry {
  std::string_view name;
  void (*store)(TDocInfo& info, std::string_view value);
  HeaderKey key = HeaderKey::kPlain;
};

// Tried from the top: a key is whatever the line begins with.
constexpr KeyEntry kKeys[] = {
    {"DocFileLabel", StoreText<&TDocInfo::DocFileLabel>, HeaderKey::kDocFileLabel},
    {"DocFileExt", StoreText<&TDocInfo::DocFileExt>},
    {"FullName", StoreText<&TDocInfo::FullName>},
    {"ShortName", StoreText<&TDocInfo::ShortName>},
    {"MainKey", StoreText<&TDocInfo::MainKey>},
    {"MainBlock", StoreText<&TDocInfo::MainBlock>},
    {"MainQty", StoreText<&TDocInfo::MainQty>},
    {"GoodsBlock", StoreText<&TDocInfo::GoodsBlock>},
    {"KeyField", StoreText<&TDocInfo::KeyField>},
    {"GCodeField", StoreText<&TDocInfo::GCodeField>},
    {"ConstrMain", StoreText<&TDocInfo::ConstrMain>},
    {"ConstrBlock", StoreText<&TDocInfo::ConstrBlock>},
    {"XmlType", StoreText<&TDocInfo::XmlType>},
    {"BlankColor", StoreBlankColor},
    {"BlankTypList", StoreText<&TDocInfo::BlankTypList>},
    {"BlocksOnExtraPage", StoreByte<&TDocInfo::BlocksOnExtraPage>, HeaderKey::kBlocksOnExtraPage},
    {"BlocksOnMainPage", StoreByte<&TDocInfo::BlocksOnMainPage>},
    {"DefNoPrintFlag", StoreByte<&TDocInfo::DefNoPrintFlag>},
    {"Grouping", StoreGrouping},
    {"DbfName", StoreDbfName},
    {"HasBackSide", StoreHasBackSide},
    {"ScriptRevise", StoreFlag<&TDocInfo::ScriptRevise>},
    {"TablePrint", StoreFlag<&TDocInfo::TablePrint>},
    {"AllUpCase", StoreAllUpCase},
    {"DoubleSided", StoreFlag<&TDocInfo::DoubleSided>},
    {"PrnLineWidth", StorePrnLineWidth},
};

// The first letter decides for most keys without a call.
bool BeginsWithKey(std::string_view line, std::string_view key) {
  return UpperCaseChar(line[0]) == key[0] && StartsWithRu(line, key);
}

}  // namespace

HeaderKey StoreHeaderLine(std::string_view line, TDocInfo& info) {
  const auto* const entry =
      line.empty() ? std::end(kKeys)
                   : std::find_if(std::begin(kKeys), std::end(kKeys), [line](const KeyEntry& key) {
                       return BeginsWithKey(line, key.name);
                     });
  if (entry == std::end(kKeys)) {
    info.ExtraLines.emplace_back(line);
    return HeaderKey::kPlain;
  }
  entry->store(info, TextFromWord(1, line, kDelimiters));
  return entry->key;
}

}  // namespace customsconv
