#ifndef CUSTOMSCONV_CONFIG_INI_FILE_H_
#define CUSTOMSCONV_CONFIG_INI_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/code_pages.h"
#include "base/lifetime.h"
#include "config/ini_lines.h"
#include "platform/host.h"
#include "text/key_index.h"

namespace customsconv {

// What a missing file means when a configuration is opened.
enum class CreateMode : std::uint8_t {
  kMustExist = 0,  // an error
  kInMemory = 1,   // an empty configuration, nothing on disk
  kCreate = 2,     // an empty file is made at once
};

// An ini file in memory: every line is kept (comments, blank lines and order
// included), lookups go through indexes over the lines, and each change is
// written back at once, touching only the lines concerned.
//
// Section and key names are matched without regard to letter case. All texts
// are code page 1251, whatever the file is in. Reads take constant time, a change
// costs writing the file.
class TVeltIni {
 public:
  // `host` must outlive the object. Throws Error for a missing file with
  // kMustExist; a file that cannot be read goes to the exception display and the
  // configuration is empty.
  TVeltIni(Host& host, std::string_view file_name, CreateMode mode, CodePage code_page);
  // A change whose writing failed is tried once more, unless somebody else has written the file
  // since it was read or is about to. What is lost so goes to the exception display.
  virtual ~TVeltIni();
  TVeltIni(const TVeltIni&) = delete;
  TVeltIni& operator=(const TVeltIni&) = delete;

  [[nodiscard]] std::string ReadString(std::string_view section, std::string_view key,
                                       std::string_view default_value) const;
  // Throws Error for a value with a character below 32 (nothing changes), for a
  // file in UTF-8, and FileError when the file cannot be written: the file is
  // then as it was and the lines in memory keep the change.
  void WriteString(std::string_view section, std::string_view key, std::string_view value);

  [[nodiscard]] std::int32_t ReadInteger(std::string_view section, std::string_view key,
                                         std::int32_t default_value) const;
  void WriteInteger(std::string_view section, std::string_view key, std::int32_t value);
  [[nodiscard]] virtual bool ReadBool(std::string_view section, std::string_view key,
                                      bool default_value) const;
  void WriteBool(std::string_view section, std::string_view key, bool value);

  // Keys of the section's key lines.
  [[nodiscard]] std::vector<std::string> ReadSection(std::string_view section) const;
  // Names as they stand in the header lines, not trimmed, doubles included.
  [[nodiscard]] std::vector<std::string> ReadSections() const;
  // Lines of the section as they stand, without empty lines and comments.
  [[nodiscard]] std::vector<std::string> ReadSectionValues(std::string_view section) const;
  // The section with its comments and blank lines; errors as in WriteString.
  void EraseSection(std::string_view section);
  void DeleteKey(std::string_view section, std::string_view key);
  [[nodiscard]] bool SectionExists(std::string_view section) const;

  // Reads the file again. A change whose writing failed is written first or lost, as on
  // destruction; a file that cannot be read goes to the exception display and the lines stay.
  void UpdateFile();
  // Reads the file again; a change whose writing failed is forgotten: what others
  // wrote since would be lost with it.
  void Reload();
  // UpdateFile when the file's stamp differs from the one at construction.
  void Refresh();
  // Writes all lines, each with CR LF, in the file's code page. A file that could
  // not be read when it was loaded is never written over: that is a FileError.
  void Flush();

  [[nodiscard]] const std::string& file_name() const CUSTOMSCONV_LIFETIME_BOUND {
    return file_name_;
  }
  // The file's stamp when the object was constructed.
  [[nodiscard]] FileStamp file_age() const { return file_age_; }

 protected:
  // The steps of a change, in memory only; Flush makes them last. A caller that
  // deleted keys calls BuildIndex before it sets one of them again and at the end,
  // which lets second lines of the same key come to light.
  void CheckValue(std::string_view section, std::string_view key, std::string_view value) const;
  // Both return whether a line changed.
  bool SetLine(std::string_view section, std::string_view key, std::string_view value);
  bool DeleteLine(std::string_view section, std::string_view key);
  void BuildIndex();
  void FlushIfModified();

 private:
  struct LineRange {
    IniLines::Number begin;
    IniLines::Number end;
  };
  void LoadLines();
  // Throws Error when there is a change and it must not or cannot be written.
  void WritePending();
  void AddSection(std::string_view name, IniLines::Number header);
  IniLines::Number InsertIntoSection(std::size_t index, std::string_view line);
  IniLines::Number AppendSection(std::string_view section, std::string_view line);
  // Where the section at `index` ends: the next header or the end of the lines.
  [[nodiscard]] IniLines::Number SectionEnd(std::size_t index) const;
  // The lines behind the section's header; an empty range when there is no such section.
  [[nodiscard]] LineRange LinesOf(std::string_view section) const;

  Host& host_;
  std::string file_name_;
  CodePage code_page_;
  IniLines lines_;
  std::vector<IniLines::Number> sections_;  // their header lines, in file order
  KeyIndex first_sections_;                 // by name, to the index in sections_
  KeyIndex keys_;                           // by "<section>_<key>", to the first line's number
  // The same for keys that are switched off; those that were switched on are found in keys_ first.
  KeyIndex commented_keys_;
  bool modified_ = false;
  bool unread_ = false;               // the file is there, but the last reading of it failed
  FileStamp known_stamp_ = kNoStamp;  // of the file when it was read or written last
  FileStamp file_age_ = kNoStamp;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_INI_FILE_H_
