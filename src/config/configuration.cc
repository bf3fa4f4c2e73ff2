#include "config/configuration.h"

#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

// Values from this size on are kept in pieces of it.
constexpr std::size_t kPieceSize = 240;

std::string PieceKey(std::string_view key, std::size_t number) {
  return std::string(key) + '(' + std::to_string(number) + ')';
}

}  // namespace

bool TConfiguration::ReadBool(std::string_view section, std::string_view key,
                              bool default_value) const {
  const std::string text = ReadString(section, key, "");
  return text.empty() ? default_value : StrToBoolRu(text);
}

std::string TConfiguration::GetString(std::string_view section, std::string_view key,
                                      std::string_view default_value) const {
  return ReadString(section, key, default_value);
}

std::int32_t TConfiguration::GetInteger(std::string_view section, std::string_view key,
                                        std::int32_t default_value) const {
  return ReadInteger(section, key, default_value);
}

bool TConfiguration::GetBool(std::string_view section, std::string_view key,
                             bool default_value) const {
  return ReadBool(section, key, default_value);
}

std::string TConfiguration::GetWord(std::string_view section, std::string_view key,
                                    std::size_t number) const {
  const std::string value = ReadString(section, key, "");
  return std::string(ExtractWord(number, value, ",;"));
}

void TConfiguration::SetString(std::string_view section, std::string_view key,
                               std::string_view value) {
  WriteString(section, key, value);
}

void TConfiguration::SetInteger(std::string_view section, std::string_view key,
                                std::int32_t value) {
  WriteInteger(section, key, value);
}

void TConfiguration::SetBool(std::string_view section, std::string_view key, bool value) {
  WriteBool(section, key, value);
}

void TConfiguration::AppendValue(std::string_view section, std::string_view key,
                                 std::string_view value) {
  // An absent key becomes ",<value>": the readers split at "," and skip empty words.
  WriteString(section, key, ReadString(section, key, "") + ',' + std::string(value));
}

std::string TConfiguration::GetLongString(std::string_view section, std::string_view key,
                                          std::string_view default_value) const {
  std::string result;
  for (std::size_t number = 1;; ++number) {
    const std::string piece = ReadString(section, PieceKey(key, number), "");
    if (piece.empty()) break;
    result += piece;
  }
  return result.empty() ? ReadString(section, key, default_value) : result;
}

// All lines change in memory first and the file is written once, so that a reader
// never sees some of the pieces only.
void TConfiguration::SetLongString(std::string_view section, std::string_view key,
                                   std::string_view value) {
  std::size_t number = 1;
  if (value.size() < kPieceSize) {
    CheckValue(section, key, value);
    SetLine(section, key, value);
  } else {
    for (std::size_t i = 0; i * kPieceSize < value.size(); ++i) {
      CheckValue(section, PieceKey(key, i + 1), value.substr(i * kPieceSize, kPieceSize));
    }
    DeleteLine(section, key);
    for (; !value.empty(); ++number) {
      const std::string_view piece = value.substr(0, kPieceSize);
      SetLine(section, PieceKey(key, number), piece);
      value.remove_prefix(piece.size());
    }
  }
  while (!ReadString(section, PieceKey(key, number), "").empty()) {
    DeleteLine(section, PieceKey(key, number));
    ++number;
  }
  BuildIndex();
  FlushIfModified();
}

TConfiguration& SharedConfigurations::Get(std::string_view file_name, CodePage code_page) {
  std::string name = UpperCaseRu(file_name);
  if (const auto found = configurations_.find(name); found != configurations_.end()) {
    if (host_.files.Stamp(file_name) == found->second->file_age()) return *found->second;
    configurations_.erase(found);
  }
  auto configuration =
      std::make_unique<TConfiguration>(host_, file_name, CreateMode::kMustExist, code_page);
  return *configurations_.emplace(std::move(name), std::move(configuration)).first->second;
}

}  // namespace customsconv
