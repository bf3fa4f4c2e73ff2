#include "catalogue/catalogue_reader.h"

#include <cstdint>
#include <unordered_map>

#include "base/cp1251_literal.h"
#include "base/dos_code_page.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "catalogue/header_keys.h"
#include "catalogue/text_lines.h"
#include "catalogue/type_sections.h"
#include "config/settings.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kCodeDelimiters("[.");
constexpr std::size_t kLongestFileLabel = 5;
constexpr std::string_view kDefaultMainBlock = "BLOCK";

bool IsSectionLine(std::string_view line) {
  return line.starts_with('[') && line.find('.') != std::string_view::npos;
}

bool IsHeaderLine(std::string_view section_line) {
  return ContainsNoCase(section_line, kHeaderSection);
}

// Where the Fields and Files lines of one file stand. The first of equal lines counts.
class SectionMap {
 public:
  // `line` must stay alive. Lines that the second pass would cut are left to its own search.
  void Add(std::string_view line, std::size_t start) {
    if (line.size() > ShortText::kMaxSize) return;
    if (line.ends_with(kFieldsSection) || line.ends_with(kFilesSection)) {
      starts_.emplace(line, static_cast<std::int64_t>(start));
    }
  }
  void Complete(SectionPlaces& places, std::string_view code) const {
    if (starts_.empty()) return;
    places.fields = PlaceOf(SectionLine(code, kFieldsSection));
    places.files = PlaceOf(SectionLine(code, kFilesSection));
  }

 private:
  [[nodiscard]] std::int64_t PlaceOf(std::string_view line) const {
    const auto found = starts_.find(line);
    return found == starts_.end() ? SectionPlaces::kNowhere : found->second;
  }

  std::unordered_map<std::string_view, std::int64_t> starts_;
};

}  // namespace

CatalogueReader::CatalogueReader(TypeCollection& types, Environment& environment)
    : types_(types),
      environment_(environment),
      up_case_docs_(settings::UpCaseDocs(environment.config)) {}

void CatalogueReader::ReadFile(const std::string& file_name, CatalogueKind kind) {
  const Files& files = environment_.host.files;
  if (!files.Exists(file_name)) Abort(std::string("Не найден системный файл "_cp1251) + file_name);
  file_name_ = types_.KeepFileName(file_name);
  kind_ = kind;
  current_ = nullptr;
  const std::size_t types_before = types_.Count();
  const FileStamp stamp = files.Stamp(file_name);  // taken first: a later change shows
  const std::string text = files.Read(file_name);

  auto foreign = ForeignEncodingOf(text);
  if (!foreign) foreign = LoneLineFeedIn(text);
  if (foreign) foreign_files_.push_back({file_name, *foreign});

  SectionMap sections;
  bool stopped = false;
  TextLines lines(text);
  std::string converted;
  for (std::string_view line; !stopped && lines.Next(line);) {
    if (line.empty() || line[0] == ';') continue;
    if (line[0] != '[' && current_ == nullptr) continue;
    if (line[0] == '[') sections.Add(line, lines.start());
    if (kind == CatalogueKind::kDos) line = converted = WinFromDos(line);
    if (!IsSectionLine(line)) {
      if (current_ != nullptr) StoreLine(line);
    } else if (IsHeaderLine(line)) {
      stopped = !StartType(line);
      if (!stopped) current_->Places = {stamp, static_cast<std::int64_t>(lines.start())};
    } else {
      current_ = nullptr;
    }
  }
  for (std::size_t i = types_before; i < types_.Count(); ++i) {
    sections.Complete(types_.Item(i).Places, types_.Item(i).Code);
  }
  if (!stopped && types_.Count() == types_before) {
    Abort(std::string("Неверный формат файла "_cp1251) + file_name);
  }
}

bool CatalogueReader::StartType(std::string_view section_line) {
  std::string code(ExtractWord(1, section_line, kCodeDelimiters));
  if (kind_ == CatalogueKind::kDos) code.insert(0, 1, '_');
  const TDocInfo* const same = types_.Find(code);
  if (same != nullptr && same->Code == code) {
    std::string message;
    message.append("Дважды описан документ "_cp1251).append(code);
    message.append(" : \r\r").append(same->FileName).append("\r").append(file_name_);
    environment_.host.dialogs.Message(message);
    return false;
  }
  auto info = std::make_unique<TDocInfo>();
  info->FileName = file_name_;
  info->AllUpCase = up_case_docs_ == "*" || Contains(up_case_docs_, code);
  info->Code = std::move(code);
  if (same == nullptr) {
    current_ = &types_.Add(std::move(info));
  } else {
    // Its code differs by letter case alone: the catalogue does not take it. Its lines are read,
    // so that a wrong one is an error here, too.
    left_out_ = std::move(info);
    current_ = left_out_.get();
  }
  return true;
}

void CatalogueReader::StoreLine(std::string_view line) {
  TDocInfo& info = *current_;
  const HeaderKey key = StoreHeaderLine(line, info);
  if (key == HeaderKey::kDocFileLabel && info.DocFileLabel.size() > kLongestFileLabel) {
    environment_.host.dialogs.Message(std::string("DocFileLabel длиннее 5! "_cp1251) + info.Code +
                                      ":" + info.DocFileLabel);
  }
  if (key == HeaderKey::kBlocksOnExtraPage && kind_ == CatalogueKind::kDos &&
      info.BlocksOnExtraPage > 0) {
    const TDocInfo* const successor = types_.Find(std::string_view(info.Code).substr(1, 3));
    info.MainBlock = successor != nullptr ? successor->MainBlock : kDefaultMainBlock;
  }
}

void CatalogueReader::Abort(const std::string& message) {
  environment_.host.dialogs.Message(message);
  throw SilentAbort();
}

}  // namespace customsconv
