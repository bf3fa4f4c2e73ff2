#include "common/ini_file.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/cp1251_literal.h"
#include "common/ini_line.h"
#include "common/numbers.h"

namespace customsconv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

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
    lines_ = SplitIniLines(text);
    likely_size_ = text.size() + text.size() / 16;
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
  keys_.reserve(lines_.size());
  std::string section;
  for (auto line = lines_.begin(); line != lines_.end(); ++line) {
    if (const auto header = ParseSectionHeader(*line)) {
      section = *header;
      AddSection(section, line);
    } else if (const auto key_line = ParseKeyLine(*line)) {
      keys_.try_emplace(FullKey(section, key_line->key), line);
    } else if (const auto commented = ParseCommentedKey(*line)) {
      commented_keys_.try_emplace(FullKey(section, *commented), line);
    }
  }
}

void TVeltIni::AddSection(std::string_view name, Lines::iterator header) {
  first_sections_.try_emplace(std::string(name), sections_.size());
  sections_.push_back({std::string(name), header});
}

// ---- reading

std::string TVeltIni::ReadString(std::string_view section, std::string_view key,
                                 std::string_view default_value) const {
  const auto found = keys_.find(FullKey(section, key));
  if (found != keys_.end()) {
    if (const auto key_line = ParseKeyLine(*found->second)) return std::string(key_line->value);
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

TVeltIni::LineRange TVeltIni::LinesOf(std::string_view section) const {
  const auto found = first_sections_.find(section);
  if (found == first_sections_.end()) return {lines_.end(), lines_.end()};
  const std::size_t next = found->second + 1;
  return {std::next(sections_[found->second].header),
          next < sections_.size() ? Lines::const_iterator(sections_[next].header) : lines_.end()};
}

std::vector<std::string> TVeltIni::ReadSection(std::string_view section) const {
  std::vector<std::string> result;
  const LineRange range = LinesOf(section);
  for (auto line = range.begin; line != range.end; ++line) {
    if (const auto key_line = ParseKeyLine(*line)) result.emplace_back(key_line->key);
  }
  return result;
}

std::vector<std::string> TVeltIni::ReadSections() const {
  std::vector<std::string> result;
  result.reserve(sections_.size());
  for (const Section& section : sections_) {
    const std::string& header = *section.header;
    const std::size_t end = header.find(']');
    result.push_back(end == std::string::npos ? std::string() : header.substr(1, end - 1));
  }
  return result;
}

std::vector<std::string> TVeltIni::ReadSectionValues(std::string_view section) const {
  std::vector<std::string> result;
  const LineRange range = LinesOf(section);
  std::copy_if(range.begin, range.end, std::back_inserter(result),
               [](const std::string& line) { return !line.empty() && line.front() != ';'; });
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
  const std::string full_key = FullKey(section, key);
  std::string line = KeyLine(key, value);
  if (const auto found = keys_.find(full_key); found != keys_.end()) {
    if (*found->second == line) return false;
    *found->second = std::move(line);
  } else if (const auto commented = commented_keys_.find(full_key);
             commented != commented_keys_.end()) {
    *commented->second = std::move(line);
    keys_.insert(commented_keys_.extract(commented));
  } else if (const auto existing = first_sections_.find(section);
             existing != first_sections_.end()) {
    InsertIntoSection(existing->second, full_key, std::move(line));
  } else {
    AppendSection(section, full_key, std::move(line));
  }
  modified_ = true;
  return true;
}

TVeltIni::Lines::iterator TVeltIni::SectionEnd(std::size_t index) {
  return index + 1 < sections_.size() ? sections_[index + 1].header : lines_.end();
}

void TVeltIni::InsertIntoSection(std::size_t index, std::string_view full_key, std::string line) {
  auto place = SectionEnd(index);
  // The blank line that separates two sections stays below the new key.
  if (std::prev(place)->empty()) --place;
  keys_.insert_or_assign(std::string(full_key), lines_.insert(place, std::move(line)));
}

void TVeltIni::AppendSection(std::string_view section, std::string_view full_key,
                             std::string line) {
  if (!lines_.empty() && !lines_.back().empty()) lines_.emplace_back();
  const auto header = lines_.insert(lines_.end(), '[' + std::string(section) + ']');
  AddSection(section, header);
  keys_.insert_or_assign(std::string(full_key), lines_.insert(lines_.end(), std::move(line)));
}

bool TVeltIni::DeleteLine(std::string_view section, std::string_view key) {
  const auto found = keys_.find(FullKey(section, key));
  if (found == keys_.end()) return false;
  lines_.erase(found->second);
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
  lines_.erase(sections_[found->second].header, SectionEnd(found->second));
  modified_ = true;
  BuildIndex();
  Flush();
}

// ---- the file

std::string TVeltIni::JoinedLines() const {
  std::string text;
  text.reserve(likely_size_);
  for (const std::string& line : lines_) text.append(line).append(kLineEnd);
  return text;
}

void TVeltIni::Flush() {
  if (code_page_ == CodePage::kUtf8) {
    throw Error(std::string("Ini-файл в UTF-8 кодировке сохранять не умею : "_cp1251) + file_name_);
  }
  if (unread_) {
    throw FileError(FileError::Kind::kWrite, file_name_, "его содержимое не прочитано"_cp1251);
  }
  std::string text = JoinedLines();
  if (code_page_ == CodePage::kDos) DosFromWinInPlace(text);
  host_.files.Replace(file_name_, text);
  likely_size_ = text.size() + text.size() / 16;
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
