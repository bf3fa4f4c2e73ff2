// Where the number of a declaration may stand, most trusted place first.

#include "entry/registration_number.h"

#include "dbf/dbf_file.h"
#include "services/file_services.h"
#include "services/numbering.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/file_names.h"
#include "text/words.h"
#include "xml/read/xml_value_lookup.h"

namespace customsconv {
namespace {

constexpr CharSet kNameSeparator{"_"};
constexpr CharSet kNumberSeparator{"/"};
constexpr std::size_t kNumberSize = 23;
constexpr std::string_view kNumberSeries = "Kord.ArmTi";

// Code, date and number, whatever blanks stand around them, as one; empty when a part is missing.
ShortText NumberFromParts(std::string_view code, std::string_view date, std::string_view number) {
  code = Trim(code);
  number = Trim(number);
  const std::string compact = CompactDate(Trim(date), false);
  if (code.empty() || compact.empty() || number.empty()) return {};
  return JoinShort({code, "/", compact, "/", number});
}

// Code, date YYYYMMDD and number without separators, as files of the customs
// gateway are named.
ShortText FromGatewayName(std::string_view name) {
  return JoinShort(
      {name.substr(0, 8), "/", SixDigitsFromTable(name.substr(8, 8)), "/", name.substr(16)});
}

ShortText FromXmlText(std::string_view text) {
  return NumberFromParts(GetXmlValue(text, "GTDNumber\\CustomsCode"),
                         GetXmlValue(text, "GTDNumber\\RegistrationDate"),
                         GetXmlValue(text, "GTDNumber\\GTDNumber"));
}

// The register beside the file maps file names to numbers.
ShortText FromRegister(std::string_view folder, std::string_view base_name, TDbfCache& tables) {
  const Files& files = tables.host().files;
  const std::string name = std::string(folder) + "g07esad.dbf";
  if (!files.Exists(name)) return {};
  TFileDbfFile table(tables);
  if (table.Open(ShortPathName(files, name), kModeRead, OnError::kReturn) != DbfStatus::kOk) {
    return {};
  }
  ShortText number;
  if (table.FindFirst("FldName", base_name)) {
    number = NumberFromParts(table.GetFieldByName("G071"), table.GetFieldByName("G072"),
                             table.GetFieldByName("G073"));
  }
  table.Close();
  return number;
}

// Longer than a number is wide, it is none: a cut changes nothing.
ShortText FromName(std::string_view base_name, std::size_t words) {
  if (words == 3) {
    const std::size_t blank = base_name.substr(0, base_name.find('_')).find(' ');
    if (blank != std::string_view::npos) base_name.remove_prefix(blank + 1);
    return ShortText::Cut(ReplaceChar(base_name, '_', '/'));
  }
  const std::string_view rest = TextFromWord(1, base_name, "_");
  if (words == 4) return ShortText::Cut(ReplaceChar(rest, '_', '/'));
  return rest.size() == kNumberSize ? FromGatewayName(rest) : ShortText::Cut(rest);
}

bool IsComplete(std::string_view number) {
  return number.size() == kNumberSize && WordCount(number, kNumberSeparator) == 3;
}

}  // namespace

RegistrationNumber RegistrationNumberOf(std::string_view xml_file, std::string_view text,
                                        TDbfCache& tables, Environment& environment) {
  const std::string_view base_name = ExtractFileBaseName(xml_file);
  const std::size_t words = WordCount(base_name, kNameSeparator);
  ShortText number;
  if (words >= 2 && words <= 4) {
    number = FromName(base_name, words);
  } else {
    number = FromXmlText(text);
    if (number.empty()) number = FromRegister(FolderPart(xml_file), base_name, tables);
  }
  if (IsComplete(number)) return {number};
  return {NextRegNumber(kNumberSeries, false, environment), true};
}

}  // namespace customsconv
