#ifndef CUSTOMSCONV_CONFIG_SETTINGS_H_
#define CUSTOMSCONV_CONFIG_SETTINGS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "config/configuration.h"

namespace customsconv {

// Every setting that the system reads, with its default in one place: section, key, default and
// kind are in settings.cc. They stand in kord.ini unless the line says otherwise.
namespace settings {

[[nodiscard]] bool CollapsePatternBlanks(const TConfiguration& config);   // [ED] NDSp
[[nodiscard]] bool CheckXsd(const TConfiguration& config);                // [ED] CheckXSD
[[nodiscard]] std::string CustomHouseCode(const TConfiguration& config);  // [Kord.ArmTI]
[[nodiscard]] std::string RegNumStructure(const TConfiguration& config);
[[nodiscard]] bool NewYearNumber(const TConfiguration& config);
[[nodiscard]] bool RegNumsYear2Digit(const TConfiguration& config);  // [System]
[[nodiscard]] std::string LastNumsFile(const TConfiguration& config);
[[nodiscard]] bool SqlLastNum(const TConfiguration& config);      // [Kord]
[[nodiscard]] std::int32_t ArcNum(const TConfiguration& config);  // [Tmr]
void SetArcNum(TConfiguration& config, std::int32_t number);
[[nodiscard]] std::string ArchiveId(const TConfiguration& config);
// [Common] UpCaseDocs; a null configuration gives the default.
[[nodiscard]] std::string UpCaseDocs(const TConfiguration* config);
// [<type code>] AG, in kord.ini or DOCUMENT.INI.
[[nodiscard]] bool HasEditorSetting(const TConfiguration& config, std::string_view type_code);
// [Common] CheckedDocs of DOCCHECK.INI.
[[nodiscard]] std::string CheckedDocs(const TConfiguration& doc_check);
// [Kord.ArmTI] MinOrdNumber of the numbering store.
[[nodiscard]] std::int32_t MinOrdNumber(const TConfiguration& store);

}  // namespace settings
}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_SETTINGS_H_
