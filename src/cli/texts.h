#ifndef CUSTOMSCONV_CLI_TEXTS_H_
#define CUSTOMSCONV_CLI_TEXTS_H_

#include <initializer_list>
#include <string>
#include <string_view>

namespace customsconv::cli {

// The program's own words, all in this file, so that they can be given in another language.
// Messages that come from the library are Russian, as host programs show them.
//
//   Say(texts::kNoSuchFolder, {folder})   "no such folder: /tmp/out"
struct Text {
  std::string_view english;  // "%1" to "%9" stand for what is put in
};

// The text with `values` (UTF-8) at their places.
[[nodiscard]] std::string Say(Text text, std::initializer_list<std::string_view> values = {});

namespace texts {

// ---- all commands
inline constexpr Text kError{"error: %1"};
inline constexpr Text kInterrupted{"interrupted"};
inline constexpr Text kHelpTellsMore{"customsconv --help tells more"};
inline constexpr Text kUnknownCommand{"there is no command '%1'"};
inline constexpr Text kUnknownCommandNearest{"there is no command '%1'; did you mean '%2'?"};
inline constexpr Text kUnknownOption{"there is no option '%1' here"};
inline constexpr Text kUnknownOptionNearest{"there is no option '%1' here; did you mean '%2'?"};
inline constexpr Text kResultNotWritten{"error: the result could not be written"};
inline constexpr Text kNoSuchFolder{"no such folder: %1"};
inline constexpr Text kPathTooLong{"path is longer than 255 bytes: %1"};
inline constexpr Text kNoCatalogue{"the catalogue could not be loaded"};
inline constexpr Text kNotInCodePage{"code page 1251 cannot hold this text: %1"};

inline constexpr Text kPartOf{"==> %1 <=="};  // above what follows of one of several files

// ---- validate
inline constexpr Text kLineOfFile{"%1: %2"};
inline constexpr Text kLineAtPlace{"%1: %2 (%3, line %4 of the file)"};
inline constexpr Text kNoSchema{"%1: %2 is not checked: there is no schema %3"};
inline constexpr Text kSwitchedOff{"%1: %2 is not checked: [ED] CheckXSD=0 in kord.ini"};
inline constexpr Text kDocumentsChecked{"%1 documents"};
inline constexpr Text kCheckSummary{"%1 documents, %2, %3 failing"};
inline constexpr Text kCountWithoutSchema{"%1 without a schema"};
inline constexpr Text kCountSwitchedOff{"%1 not checked ([ED] CheckXSD=0 in kord.ini)"};

// ---- export
inline constexpr Text kNoSuchDocument{"%1 holds %2 documents, there is no document %3"};

// ---- tables
inline constexpr Text kTableRows{"%1  %2 rows"};
inline constexpr Text kRowsOption{"--rows takes N, N- or N-M, not %1"};

// ---- convert
inline constexpr Text kConverted{"converted:"};
inline constexpr Text kConvertedNothing{"converted: nothing"};
inline constexpr Text kSkipped{"skipped: %1 (%2)"};
inline constexpr Text kRows{"rows:"};
inline constexpr Text kRowsNone{"rows: none"};
inline constexpr Text kFailed{"failed: %1"};
inline constexpr Text kProgress{"%1/%2 %3: %4 records"};
// why a document is skipped
inline constexpr Text kNotFirstDeclaration{"a file's first declaration is converted only"};
inline constexpr Text kKindNotConverted{"documents of this kind are not converted"};
inline constexpr Text kNoSection{"no section of the rules names this kind"};
inline constexpr Text kNotFirstOfKind{
    "the section's table takes the first document of a kind only"};
inline constexpr Text kNoTableSet{"the catalogue has no table set with the section's table"};
inline constexpr Text kUnknownRoot{"the catalogue has no type for this root"};
inline constexpr Text kCutRoot{"a line end instead of a blank stands behind its name"};
// why a file is not whole in the tables
inline constexpr Text kEmptyFile{"the file is empty"};
inline constexpr Text kNoXml{"the file holds no XML"};
inline constexpr Text kNoDeclaration{
    "no XML declaration (<?xml version=\"1.0\"...) and no <DocBody>"};
inline constexpr Text kNoKnownDocument{"no document of a known kind: root %1"};
inline constexpr Text kNothingConverted{"no document was converted"};
inline constexpr Text kNumberWasted{"its number was drawn for nothing"};
inline constexpr Text kAbandoned{"%1 abandoned: the folder is locked by another station (%2)"};
inline constexpr Text kEmptyDocument{
    "%1 is empty: its start was not found, other than the catalogue's Prefix says"};
inline constexpr Text kSectionEnded{"%1 is not complete: %2"};
inline constexpr Text kRowsMissing{"%1 lacks its rows of %2: %3"};
inline constexpr Text kStrict{"not everything is in the tables as it was in the file (--strict)"};
inline constexpr Text kForeignEncoding{"%1:%2: %3 text, where one of single bytes is read"};
inline constexpr Text kLineEnds{"%1:%2: this line ends with LF, where only CR LF or CR ends one"};
// counts of losses
inline constexpr Text kCountCut{"cut: %1"};
inline constexpr Text kCountNumberCut{"number cut: %1"};
inline constexpr Text kCountRounded{"rounded: %1"};
inline constexpr Text kCountNoNumber{"no number: %1"};
inline constexpr Text kCountNoDate{"no date: %1"};
inline constexpr Text kCountNoColumn{"no column: %1"};
inline constexpr Text kCountReplaced{"replaced: %1"};
inline constexpr Text kCountLookAlike{"look-alike: %1"};
inline constexpr Text kCountNotKnown{"not known: %1"};
inline constexpr Text kCountRepeated{"repeated: %1"};
inline constexpr Text kCountNotApplied{"not applied: %1"};
// what became of a value
inline constexpr Text kWritten{"written"};
inline constexpr Text kEmpty{"empty"};
inline constexpr Text kNoSuchField{"no such field"};
inline constexpr Text kNoSuchSource{"no such source"};
inline constexpr Text kCut{"cut"};
inline constexpr Text kKeyOfParent{"key of the parent record"};
inline constexpr Text kNotAsked{"skipped"};
inline constexpr Text kFromTo{" from %1 to %2"};

}  // namespace texts
}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_TEXTS_H_
