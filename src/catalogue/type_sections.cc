#include "catalogue/type_sections.h"

#include <cstdint>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "catalogue/fields_reader.h"
#include "catalogue/files_reader.h"
#include "streams/read_stream.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::string_view kDefaultMainBlock = "BLOCK";
constexpr std::size_t kLongestDosCode = 10;
constexpr CharSet kKeyDelimiters(" =");
constexpr CharSet kPairDelimiter("/");

// The type's catalogue file, to be read from one of the type's sections on.
class SectionFile {
 public:
  // `info` and `files` must outlive the object.
  SectionFile(const TDocInfo& info, const Files& files)
      : stream_(files, info.FileName, kModeRead | kShareDenyNone),
        as_loaded_(files.Stamp(info.FileName) == info.Places.stamp) {}

  // Each goes to the line behind the first such section line of the file; false when there
  // is none. The sections are found as they are read: Fields lines in full length, the others cut.
  [[nodiscard]] bool GoToFields(std::string_view section, std::int64_t place) {
    return GoTo(place, [this, section] {
      stream_.ReadLnLong(long_line_);
      return long_line_ == section;
    });
  }
  [[nodiscard]] bool GoToFiles(std::string_view section, std::int64_t place) {
    return GoTo(place, [this, section] {
      stream_.ReadLnSection(line_);
      return line_ == section;
    });
  }
  [[nodiscard]] bool GoToHeader(std::string_view section, std::int64_t place) {
    return GoTo(place, [this, section] {
      stream_.ReadLnSection(line_);
      return SameTextRu(line_, section);
    });
  }
  [[nodiscard]] TReadStream& stream() { return stream_; }

 private:
  // Reads at the remembered place; from the start of the file when it has changed since, or
  // when the section does not begin there.
  template <typename ReadIsSection>
  bool GoTo(std::int64_t place, ReadIsSection read_is_section) {
    if (as_loaded_ && place != SectionPlaces::kNowhere) {
      stream_.Seek(place, SeekOrigin::kBegin);
      if (!stream_.AtEnd() && read_is_section()) return true;
    }
    stream_.Seek(0, SeekOrigin::kBegin);
    while (!stream_.AtEnd()) {
      if (read_is_section()) return true;
    }
    return false;
  }

  TReadStream stream_;
  bool as_loaded_;
  std::string long_line_;
  ShortText line_;
};

std::unique_ptr<TBasis> ReadFiles(SectionFile& file, const std::string& section,
                                  const TDocInfo& info) {
  if (!file.GoToFiles(section, info.Places.files)) {
    throw Error(std::string("Нет секции "_cp1251) + section);
  }
  auto basis = std::make_unique<TDbfBasis>();
  basis->file_list = ReadFilesSection(file.stream());
  return basis;
}

std::unique_ptr<TBasis> ReadFields(SectionFile& file, const std::string& section,
                                   const TDocInfo& info, Dialogs& dialogs) {
  if (!file.GoToFields(section, info.Places.fields)) {
    throw Error(std::string("Не найдена секция: "_cp1251) + section);
  }
  FieldsOptions options;
  options.name_case = info.XmlType.empty() ? NameCase::kUpper : NameCase::kAsWritten;
  options.main_block = info.MainBlock.empty() ? kDefaultMainBlock : info.MainBlock;
  return ReadFieldsSection(file.stream(), options, dialogs);
}

// Position of the field counted from 1, 0 when there is none.
std::uint16_t FieldNo(const TBasis& basis, std::string_view name) {
  return static_cast<std::uint16_t>(basis.IndexOfName(name) + 1);
}

// `line` is in upper case.
void StoreFieldNumbers(std::string_view line, const TBasis& basis, TDocInfo& info) {
  const std::string_view value = ExtractWord(2, line, kKeyDelimiters);
  if (line.starts_with("CDATEFIELD")) {
    info.DateFieldNo = FieldNo(basis, value);
  } else if (line.starts_with("USDRATEFIELD")) {
    info.UsdRateFieldNo = FieldNo(basis, value);
  } else if (line.starts_with("EURRATEFIELD")) {
    info.EurRateFieldNo = FieldNo(basis, value);
  } else if (line.starts_with("CRATEFIELD")) {
    info.CRateFieldNo1 = FieldNo(basis, ExtractWord(1, value, kPairDelimiter));
    info.CRateFieldNo2 = FieldNo(basis, ExtractWord(2, value, kPairDelimiter));
  }
}

// Second pass over the HEADER section, now that the fields have positions. Unlike in the
// first pass an empty line ends the section.
void ReadFieldNumbers(SectionFile& file, const std::string& section, const TBasis& basis,
                      TDocInfo& info) {
  if (!file.GoToHeader(section, info.Places.header)) return;
  ShortText line;
  while (!file.stream().AtEnd()) {
    file.stream().ReadLnSection(line);
    const bool is_section = line.view().starts_with('[') && Contains(line, ".");
    if (line.empty() || is_section) break;
    StoreFieldNumbers(UpperCaseRu(line), basis, info);
  }
}

}  // namespace

std::string SectionLine(std::string_view code, std::string_view section) {
  if (code.starts_with('_')) code = code.substr(1, kLongestDosCode);
  return std::string("[").append(code).append(section);
}

std::unique_ptr<TBasis> ReadTypeSections(TDocInfo& info, Environment& environment) {
  std::string section = SectionLine(info.Code, info.HasDbfName ? kFilesSection : kFieldsSection);
  try {
    SectionFile file(info, environment.host.files);
    std::unique_ptr<TBasis> basis = info.HasDbfName
                                        ? ReadFiles(file, section, info)
                                        : ReadFields(file, section, info, environment.host.dialogs);
    section = SectionLine(info.Code, kHeaderSection);
    ReadFieldNumbers(file, section, *basis, info);
    return basis;
  } catch (const Error& error) {
    std::string message;
    message.append("Файл: "_cp1251).append(info.FileName);
    message.append("  Раздел: "_cp1251).append(section);
    throw Error(message + "\r\r" + error.text());
  }
}

}  // namespace customsconv
