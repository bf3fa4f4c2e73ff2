#include "common/ini_file.h"

#include <algorithm>
#include <utility>

#include "base/cp1251_literal.h"
#include "common/ini_line.h"
#include "common/numbers.h"

namespace customsconv {
namespace {

// Section and key are joined without escaping, so "A_B" with "C" and "A" with
// "B_C" are one entry; the first line of the file wins.
std::string FullKey(std::string_view section, std::string_view key) {
  std::string full_key;
  full_key.reserve(section.size() + 1 + key.size());
  return full_key.append(section).append(1, '_').append(key);
}

std::string KeyLine(std::string_view key, std::string_view value) {
  std::string line;
  line.reserve(key.size() + 1 + value.size());
  return line.append(key).append(1, '=').append(value);
}

}  // namespace

TVeltIni::TVeltIni(Host& host, std::string_view file_name, CreateMode mode, CodePage code_page)
    : host_(host), file_name_(file_name), code_page_(code_page) {
  if (host_.files.Exists(file_name_)) {
    LoadLines();
  } else if (mode == CreateMode::kMustExist) {
    throw Error(std::string("Не могу открыть ini-файл"_cp1251) + " \"" + file_name_ + '"');
  } else if (mode == CreateMode::kCreate) {
    host_.files.Replace(file_name_, "");
  }
  file_age_ = host_.files.Stamp(file_name_);
  BuildIndex();
}

TVeltIni::~TVeltIni() {
  try {
    FlushIfModified();
  } catch (const Error& error) {
    host_.dialogs.Exception(error.text());
  }
}

void TVeltIni::LoadLines() {
  try {
    std::string text = host_.files.Read(file_name_);
    unread_ = false;
    if (code_page_ == CodePage::kUnknown) code_page_ = DetectCodePage(text);
    if (code_page_ != CodePage::kWindows) text = ToWindows(text, code_page_);
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    lines_.Assign(std::move(text));
  } catch (const FileError& error) {
    unread_ = error.kind() != FileError::Kind::kMissing;
    host_.dialogs.Exception(error.text());
  }
}

void TVeltIni::BuildIndex() {
  sections_.clear();
  first_sections_.clear();
  keys_.clear();
  commented_keys_.clear();
  keys_.reserve(lines_.Count());
  std::string section;
  for (IniLines::Number number = lines_.Next(IniLines::kEnd); number != IniLines::kEnd;
       number = lines_.Next(number)) {
    const std::string_view line = lines_.Text(number);
    if (const auto header = ParseSectionHeader(line)) {
      section = *header;
      AddSection(section, number);
    } else if (const auto key_line = ParseKeyLine(line)) {
      keys_.try_emplace(FullKey(section, key_line->key), number);
    } else if (const auto commented = ParseCommentedKey(line)) {
      commented_keys_.try_emplace(FullKey(section, *commented), number);
    }
  }
}

void TVeltIni::AddSection(std::string_view name, IniLines::Number header) {
  first_sections_.try_emplace(std::string(name), sections_.size());
  sections_.push_back({std::string(name), header});
}

// ---- reading

std::string TVeltIni::ReadString(std::string_view section, std::string_view key,
                                 std::string_view default_value) const {
  const auto found = keys_.find(FullKey(section, key));
  if (found != keys_.end()) {
    if (const auto key_line = ParseKeyLine(lines_.Text(found->second)))
      return std::string(key_line->value);
  }
  return std::string(default_value);
}

std::int32_t TVeltIni::ReadInteger(std::string_view section, std::string_view key,
                                   std::int32_t default_value) const {
  return IntOr(ReadString(section, key, ""), default_value);
}

bool TVeltIni::ReadBool(std::string_view section, std::string_view key, bool default_value) const {
  return ReadInteger(section, key, default_value ? 1 : 0) != 0;
}

IniLines::Number TVeltIni::SectionEnd(std::size_t index) const {
  return index + 1 < sections_.size() ? sections_[index + 1].header : IniLines::kEnd;
}

TVeltIni::LineRange TVeltIni::LinesOf(std::string_view section) const {
  const auto found = first_sections_.find(section);
  if (found == first_sections_.end()) return {IniLines::kEnd, IniLines::kEnd};
  return {lines_.Next(sections_[found->second].header), SectionEnd(found->second)};
}

std::vector<std::string> TVeltIni::ReadSection(std::string_view section) const {
  std::vector<std::string> result;
  const LineRange range = LinesOf(section);
  for (auto number = range.begin; number != range.end; number = lines_.Next(number)) {
    if (const auto key_line = ParseKeyLine(lines_.Text(number))) {
      result.emplace_back(key_line->key);
    }
  }
  return result;
}

std::vector<std::string> TVeltIni::ReadSections() const {
  std::vector<std::string> result;
  result.reserve(sections_.size());
  for (const Section& section : sections_) {
    const std::string_view header = lines_.Text(section.header);
    const std::size_t end = header.find(']');
    result.emplace_back(end == header.npos ? std::string_view() : header.substr(1, end - 1));
  }
  return result;
}

std::vector<std::string> TVeltIni::ReadSectionValues(std::string_view section) const {
  std::vector<std::string> result;
  const LineRange range = LinesOf(section);
  for (auto number = range.begin; number != range.end; number = lines_.Next(number)) {
    const std::string_view line = lines_.Text(number);
    if (!line.empty() && line.front() != ';') result.emplace_back(line);
  }
  return result;
}

bool TVeltIni::SectionExists(std::string_view section) const {
  return first_sections_.find(section) != first_sections_.end();
}

// ---- changing

void TVeltIni::CheckValue(std::string_view section, std::string_view key,
                          std::string_view value) const {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 32; };
  if (std::none_of(value.begin(), value.end(), is_control)) return;
  throw Error(std::string("TVeltIni: Недопустимое значение "_cp1251) + FullKey(section, key) + '=' +
              std::string(value));
}

void TVeltIni::WriteString(std::string_view section, std::string_view key, std::string_view value) {
  CheckValue(section, key, value);
  if (SetLine(section, key, value)) Flush();
}

void TVeltIni::WriteInteger(std::string_view section, std::string_view key, std::int32_t value) {
  WriteString(section, key, std::to_string(value));
}

void TVeltIni::WriteBool(std::string_view section, std::string_view key, bool value) {
  WriteString(section, key, value ? "1" : "0");
}

bool TVeltIni::SetLine(std::string_view section, std::string_view key, std::string_view value) {
  std::string full_key = FullKey(section, key);
  const std::string line = KeyLine(key, value);
  if (const auto found = keys_.find(full_key); found != keys_.end()) {
    if (lines_.Text(found->second) == line) return false;
    lines_.Set(found->second, line);
  } else if (const auto commented = commented_keys_.find(full_key);
             commented != commented_keys_.end()) {
    lines_.Set(commented->second, line);
    keys_.insert(commented_keys_.extract(commented));
  } else {
    const auto existing = first_sections_.find(section);
    const IniLines::Number number = existing != first_sections_.end()
                                        ? InsertIntoSection(existing->second, line)
                                        : AppendSection(section, line);
    keys_.emplace(std::move(full_key), number);
  }
  modified_ = true;
  return true;
}

IniLines::Number TVeltIni::InsertIntoSection(std::size_t index, std::string_view line) {
  IniLines::Number next = SectionEnd(index);
  // The blank line that separates two sections stays below the new key.
  if (lines_.Text(lines_.Previous(next)).empty()) next = lines_.Previous(next);
  return lines_.Insert(next, line);
}

IniLines::Number TVeltIni::AppendSection(std::string_view section, std::string_view line) {
  if (!lines_.Text(lines_.Previous(IniLines::kEnd)).empty()) lines_.Insert(IniLines::kEnd, "");
  AddSection(section, lines_.Insert(IniLines::kEnd, '[' + std::string(section) + ']'));
  return lines_.Insert(IniLines::kEnd, line);
}

bool TVeltIni::DeleteLine(std::string_view section, std::string_view key) {
  const auto found = keys_.find(FullKey(section, key));
  if (found == keys_.end()) return false;
  lines_.Remove(found->second);
  keys_.erase(found);
  modified_ = true;
  return true;
}

void TVeltIni::DeleteKey(std::string_view section, std::string_view key) {
  if (!DeleteLine(section, key)) return;
  BuildIndex();
  Flush();
}

void TVeltIni::EraseSection(std::string_view section) {
  const auto found = first_sections_.find(section);
  if (found == first_sections_.end()) return;
  const IniLines::Number end = SectionEnd(found->second);
  for (IniLines::Number number = sections_[found->second].header; number != end;) {
    const IniLines::Number next = lines_.Next(number);
    lines_.Remove(number);
    number = next;
  }
  modified_ = true;
  BuildIndex();
  Flush();
}

// ---- the file

void TVeltIni::Flush() {
  if (code_page_ == CodePage::kUtf8) {
    throw Error(std::string("Ini-файл в UTF-8 кодировке сохранять не умею : "_cp1251) + file_name_);
  }
  if (unread_) {
    throw FileError(FileError::Kind::kWrite, file_name_, "его содержимое не прочитано"_cp1251);
  }
  const std::string& text = lines_.Joined();
  if (code_page_ == CodePage::kDos) {
    host_.files.Replace(file_name_, DosFromWin(text));
  } else {
    host_.files.Replace(file_name_, text);
  }
  modified_ = false;
}

void TVeltIni::FlushIfModified() {
  if (modified_) Flush();
}

void TVeltIni::UpdateFile() {
  FlushIfModified();
  LoadLines();
  BuildIndex();
}

void TVeltIni::Reload() {
  modified_ = false;
  UpdateFile();
}

void TVeltIni::Refresh() {
  if (file_name_.empty() || !host_.files.Exists(file_name_)) return;
  if (host_.files.Stamp(file_name_) != file_age_) UpdateFile();
}

}  // namespace customsconv
