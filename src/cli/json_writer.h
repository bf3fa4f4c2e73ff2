#ifndef CUSTOMSCONV_CLI_JSON_WRITER_H_
#define CUSTOMSCONV_CLI_JSON_WRITER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "cli/output.h"

namespace customsconv::cli {

// Writes JSON piece by piece, so that large results need no memory and nesting no stack:
//
//   JsonWriter json(output);
//   json.BeginObject();
//   json.Key("file").WinText(table.file_name());
//   json.Key("rows").BeginArray();
//   for (const std::int64_t row : rows) json.Number(row);
//   json.EndArray();
//   json.EndObject();
//   json.Finish();  // {"file":"C:\\OUT\\DBRHEAD.DBF","rows":[1,2]}
//
// The caller keeps begin and end in step.
class JsonWriter {
 public:
  // `output` must outlive the writer.
  explicit JsonWriter(Output& output) : output_(output) {}
  ~JsonWriter() { Flush(); }
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }
  // Name (UTF-8) of the member whose value comes next.
  JsonWriter& Key(std::string_view name) CUSTOMSCONV_LIFETIME_BOUND;
  void Text(std::string_view utf8);
  // Text in code page 1251.
  void WinText(std::string_view text_1251);
  void Number(std::int64_t number);
  void Bool(bool value);
  // A line end behind the whole result.
  void Finish();
  // Hands on what was written so far.
  void Flush();

 private:
  void Begin(char bracket);
  void End(char bracket);
  void Separate();

  Output& output_;
  std::string buffer_;
  std::vector<bool> filled_;  // of each open bracket: it holds something already
  bool after_key_ = false;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_JSON_WRITER_H_
