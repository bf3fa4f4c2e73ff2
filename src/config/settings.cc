// Section, key and default of every setting, once.

#include "config/settings.h"

namespace customsconv::settings {
namespace {

struct Flag {
  std::string_view section;
  std::string_view key;
  bool default_value;
};
struct Text {
  std::string_view section;
  std::string_view key;
  std::string_view default_value;
};
struct Number {
  std::string_view section;
  std::string_view key;
  std::int32_t default_value;
};

constexpr Flag kNdsp{"ED", "NDSp", true};
constexpr Flag kCheckXsd{"ED", "CheckXSD", true};
constexpr Flag kNewYearNumber{"Kord.ArmTI", "NewYearNumber", true};
constexpr Flag kRegNumsYear2Digit{"System", "RegNumsYear2Digit", true};
constexpr Flag kSqlLastNum{"Kord", "SQLLastNum", false};

constexpr Text kCustomHouseCode{"Kord.ArmTI", "CustomHouseCode", "00000000"};
constexpr Text kRegNumStructure{"Kord.ArmTI", "RegNumStructure", "%CODE/%DATE/%GNUM"};
constexpr Text kLastNumsFile{"System", "LastNumsFile", ""};
constexpr Text kTmrId{"Tmr", "Id", "1"};
constexpr Text kUpCaseDocs{"Common", "UpCaseDocs", "Kord,DS1,DS2,KTS,KTD,OPN,KUT,NGA,"};
constexpr Text kCheckedDocs{"Common", "CheckedDocs", ""};

constexpr Number kArcNum{"Tmr", "ArcNum", 1};
constexpr Number kMinOrdNumber{"Kord.ArmTI", "MinOrdNumber", 1};

bool Read(const TConfiguration& config, const Flag& flag) {
  return config.GetBool(flag.section, flag.key, flag.default_value);
}
std::string Read(const TConfiguration& config, const Text& text) {
  return config.GetString(text.section, text.key, text.default_value);
}
std::int32_t Read(const TConfiguration& config, const Number& number) {
  return config.GetInteger(number.section, number.key, number.default_value);
}

}  // namespace

bool CollapsePatternBlanks(const TConfiguration& config) { return Read(config, kNdsp); }
bool CheckXsd(const TConfiguration& config) { return Read(config, kCheckXsd); }
std::string CustomHouseCode(const TConfiguration& config) { return Read(config, kCustomHouseCode); }
std::string RegNumStructure(const TConfiguration& config) { return Read(config, kRegNumStructure); }
bool NewYearNumber(const TConfiguration& config) { return Read(config, kNewYearNumber); }
bool RegNumsYear2Digit(const TConfiguration& config) { return Read(config, kRegNumsYear2Digit); }
std::string LastNumsFile(const TConfiguration& config) { return Read(config, kLastNumsFile); }
bool SqlLastNum(const TConfiguration& config) { return Read(config, kSqlLastNum); }
std::int32_t ArcNum(const TConfiguration& config) { return Read(config, kArcNum); }
void SetArcNum(TConfiguration& config, std::int32_t number) {
  config.SetInteger(kArcNum.section, kArcNum.key, number);
}
std::string ArchiveId(const TConfiguration& config) { return Read(config, kTmrId); }
std::string UpCaseDocs(const TConfiguration* config) {
  return config != nullptr ? Read(*config, kUpCaseDocs) : std::string(kUpCaseDocs.default_value);
}
bool HasEditorSetting(const TConfiguration& config, std::string_view type_code) {
  return !Read(config, Text{type_code, "AG", ""}).empty();
}
std::string CheckedDocs(const TConfiguration& doc_check) { return Read(doc_check, kCheckedDocs); }
std::int32_t MinOrdNumber(const TConfiguration& store) { return Read(store, kMinOrdNumber); }

}  // namespace customsconv::settings
