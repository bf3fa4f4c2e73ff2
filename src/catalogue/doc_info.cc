#include "catalogue/doc_info.h"

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "catalogue/type_sections.h"
#include "config/settings.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kRootNameDelimiters(" <");

// The settings themselves steer the editor alone; a type without any must fail here, though.
void ReadFillSettings(const std::string& code, Environment& environment) {
  const auto is_set = [&code](const TConfiguration& config) {
    return settings::HasEditorSetting(config, code);
  };
  if (environment.config != nullptr && is_set(*environment.config)) return;
  const std::string file = environment.base_path + "DOCUMENT.INI";
  try {
    (void)is_set(environment.shared.Get(file, CodePage::kDos));
  } catch (const Error& error) {
    throw Error(error.text(),
                Join({error.told(), ": в kord.ini нет ключа AG раздела ["_cp1251, code, "]"}));
  }
}

}  // namespace

TDocProtect::TDocProtect(const TDocInfo& info, const TBasis& basis, Environment& environment)
    : info_(info), basis_(basis) {
  if (!info.HasDbfName) ReadFillSettings(info.Code, environment);
  FindMainBasis();
}

void TDocProtect::FindMainBasis() { main_basis_ = &basis_.FindSubBasis(info_.MainBlock); }

std::uint16_t TDocProtect::FieldIdByName(std::string_view name) const {
  const int at_top = basis_.IndexOfName(name);
  if (at_top >= 0) return static_cast<std::uint16_t>(at_top + 1);
  const int in_main_block = main_basis_->IndexOfName(name);
  return in_main_block < 0 ? std::uint16_t{0}
                           : static_cast<std::uint16_t>(kFirstMainBlockId + in_main_block);
}

TBasis& TDocInfo::GetBasis(Environment& environment) {
  if (basis_ == nullptr) basis_ = ReadTypeSections(*this, environment);
  return *basis_;
}

void TDocInfo::LevelsChanged() {
  if (numbering_ != nullptr) numbering_->FindMainBasis();
}

const TDocProtect& TDocInfo::Numbering(Environment& environment) {
  if (numbering_ == nullptr) {
    numbering_ = std::make_unique<TDocProtect>(*this, GetBasis(environment), environment);
  }
  return *numbering_;
}

std::string_view TDocInfo::GetHeaderValue(std::string_view key) const {
  for (const std::string& line : ExtraLines) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    if (SameTextRu(std::string_view(line).substr(0, equals), key)) {
      return Trim(std::string_view(line).substr(equals + 1));
    }
  }
  return {};
}

std::string TDocInfo::XmlDocName() const {
  // The corrections of this type's root element share its name.
  if (Code == "TD1") return "ESADout_CU";
  return std::string(ExtractWord(1, GetHeaderValue("Prefix"), kRootNameDelimiters));
}

}  // namespace customsconv
