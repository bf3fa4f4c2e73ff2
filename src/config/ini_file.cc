#include "config/ini_file.h"

#include <algorithm>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/dos_code_page.h"
#include "config/ini_line.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

// Editors put it at the start of files that are in another code page, too.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Section and key are joined without escaping, so "A_B" with "C" and "A" with
// "B_C" are one entry; the first line of the file wins. The result stands in `buffer`.
const std::string& FullKey(std::string_view section, std::string_view key, std::string& buffer) {
  return buffer.assign(section).append(1, '_').append(key);
}

std::string FullKey(std::string_view section, std::string_view key) {
  std::string full_key;
  return FullKey(section, key, full_key);
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
    known_stamp_ = host_.files.Stamp(file_name_);
  }
  file_age_ = host_.files.Stamp(file_name_);
  BuildIndex();
}

TVeltIni::~TVeltIni() {
  try {
    WritePending();
  } catch (const Error& error) {
    host_.dialogs.Exception(error.text());
  }
}

void TVeltIni::LoadLines() {
  known_stamp_ = host_.files.Stamp(file_name_);
  try {
    std::string text = host_.files.Read(file_name_);
    unread_ = false;
    if (code_page_ == CodePage::kUnknown) code_page_ = DetectCodePage(text);
    if (code_page_ != CodePage::kUtf8 && text.starts_with(kUtf8Mark)) {
      text.erase(0, kUtf8Mark.size());
    }
    if (code_page_ != CodePage::kWindows) text = ToWindows(text, code_page_);
    if (text.find('\0') != std::string::npos) std::erase(text, '\0');
    lines_.Assign(std::move(text));
  } catch (const FileError& error) {
    unread_ = error.kind() != FileError::Kind::kMissing;
    host_.dialogs.Exception(error.text());
  }
}

void TVeltIni::BuildIndex() {
  sections_.clear();
  first_sections_.Clear();
  keys_.Clear();
  commented_keys_.Clear();
  keys_.Reserve(lines_.Count(), lines_.Size());
  std::string_view section;
  std::string full_key;
  for (IniLines::Number number = lines_.Next(IniLines::kEnd); number != IniLines::kEnd;
       number = lines_.Next(number)) {
    const std::string_view line = lines_.Text(number);
    if (const auto header = ParseSectionHeader(line)) {
      section = *header;
      AddSection(section, number);
    } else if (const auto key_line = ParseKeyLine(line)) {
      keys_.Add(FullKey(section, key_line->key, full_key), number);
    } else if (const auto commented = ParseCommentedKey(line)) {
      commented_keys_.Add(FullKey(section, *commented, full_key), number);
    }
  }
}

void TVeltIni::AddSection(std::string_view name, IniLines::Number header) {
  first_sections_.Add(name, static_cast<int>(sections_.size()));
  sections_.push_back(header);
}

// ---- reading

std::string TVeltIni::ReadString(std::string_view section, std::string_view key,
                                 std::string_view default_value) const {
  const int found = keys_.Find(FullKey(section, key));
  if (found >= 0) {
    if (const auto key_line = ParseKeyLine(lines_.Text(found))) return std::string(key_line->value);
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
  return index + 1 < sections_.size() ? sections_[index + 1] : IniLines::kEnd;
}

TVeltIni::LineRange TVeltIni::LinesOf(std::string_view section) const {
  const int found = first_sections_.Find(section);
  if (found < 0) return {IniLines::kEnd, IniLines::kEnd};
  const auto index = static_cast<std::size_t>(found);
  return {lines_.Next(sections_[index]), SectionEnd(index)};
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
  for (const IniLines::Number section : sections_) {
    const std::string_view header = lines_.Text(section);
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
  return first_sections_.Find(section) >= 0;
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
  SetLine(section, key, value);
  FlushIfModified();
}

void TVeltIni::WriteInteger(std::string_view section, std::string_view key, std::int32_t value) {
  WriteString(section, key, std::to_string(value));
}

void TVeltIni::WriteBool(std::string_view section, std::string_view key, bool value) {
  WriteString(section, key, value ? "1" : "0");
}

bool TVeltIni::SetLine(std::string_view section, std::string_view key, std::string_view value) {
  const std::string full_key = FullKey(section, key);
  const std::string line = KeyLine(key, value);
  if (const int found = keys_.Find(full_key); found >= 0) {
    if (lines_.Text(found) == line) return false;
    lines_.Set(found, line);
  } else if (const int commented = commented_keys_.Find(full_key); commented >= 0) {
    lines_.Set(commented, line);
    keys_.Add(full_key, commented);
  } else {
    const int existing = first_sections_.Find(section);
    keys_.Add(full_key, existing >= 0 ? InsertIntoSection(static_cast<std::size_t>(existing), line)
                                      : AppendSection(section, line));
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
  const std::string full_key = FullKey(section, key);
  const int found = keys_.Find(full_key);
  if (found < 0) return false;
  lines_.Remove(found);
  keys_.Remove(full_key);
  modified_ = true;
  return true;
}

void TVeltIni::DeleteKey(std::string_view section, std::string_view key) {
  if (!DeleteLine(section, key)) return;
  BuildIndex();
  Flush();
}

void TVeltIni::EraseSection(std::string_view section) {
  const int found = first_sections_.Find(section);
  if (found < 0) return;
  const auto index = static_cast<std::size_t>(found);
  const IniLines::Number end = SectionEnd(index);
  for (IniLines::Number number = sections_[index]; number != end;) {
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
  std::vector<std::string_view> content = lines_.Content();
  std::string dos;
  if (code_page_ == CodePage::kDos) {
    for (const std::string_view piece : content) dos += DosFromWin(piece);
    content.assign(1, dos);
  }
  host_.files.Replace(file_name_, content);
  modified_ = false;
  known_stamp_ = host_.files.Stamp(file_name_);
}

void TVeltIni::FlushIfModified() {
  if (modified_) Flush();
}

// Others may have written since the change failed, counters among it: what they wrote counts.
void TVeltIni::WritePending() {
  if (!modified_) return;
  const auto give_up = [this] {
    throw FileError(FileError::Kind::kWrite, file_name_, "файл занят"_cp1251);
  };
  const std::unique_ptr<FileLock> lock = host_.files.Lock(file_name_, give_up);
  if (host_.files.Stamp(file_name_) != known_stamp_) {
    throw FileError(FileError::Kind::kWrite, file_name_,
                    "файл изменен другой программой, изменения потеряны"_cp1251);
  }
  Flush();
}

void TVeltIni::UpdateFile() {
  try {
    WritePending();
  } catch (const Error& error) {
    host_.dialogs.Exception(error.text());
  }
  modified_ = false;
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
