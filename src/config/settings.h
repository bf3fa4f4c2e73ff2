#ifndef CUSTOMSCONV_CONFIG_SETTINGS_H_
#define CUSTOMSCONV_CONFIG_SETTINGS_H_

#include <cstdint>
#include <string>

#include "config/configuration.h"

namespace customsconv {

// Every setting that the system reads from kord.ini, with its default in one
// place: section, key, default and kind are in settings.cc.
namespace settings {

[[nodiscard]] bool CollapsePatternBlanks(const TConfiguration& config);   // [ED] NDSp
[[nodiscard]] bool CheckXsd(const TConfiguration& config);                // [ED] CheckXSD
[[nodiscard]] std::string CustomHouseCode(const TConfiguration& config);  // [Kord.ArmTI]
[[nodiscard]] std::string RegNumStructure(const TConfiguration& config);
[[nodiscard]] bool NewYearNumber(const TConfiguration& config);
[[nodiscard]] bool RegNumsYear2Digit(const TConfiguration& config);  // [System]
[[nodiscard]] std::string LastNumsFile(const TConfiguration& config);
[[nodiscard]] bool SqlLastNum(const TConfiguration& config);         // [Kord]
[[nodiscard]] bool ResetPrinterIndex(const TConfiguration& config);  // [Print]
[[nodiscard]] bool Country31(const TConfiguration& config, bool fitter_mode);
[[nodiscard]] std::int32_t ArcNum(const TConfiguration& config);  // [Tmr]
[[nodiscard]] std::string ArchiveId(const TConfiguration& config);
// [Common] UpCaseDocs; a null configuration gives the default.
[[nodiscard]] std::string UpCaseDocs(const TConfiguration* config);
// [Kord.ArmTI] MinOrdNumber of the numbering store.
[[nodiscard]] std::int32_t MinOrdNumber(const TConfiguration& store);

}  // namespace settings
}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_SETTINGS_H_
