#include "cli/json_writer.h"

#include <nlohmann/json.hpp>

#include "base/unicode.h"

namespace customsconv::cli {
namespace {

// What is written so far goes out in pieces of this size, so that the length of the output does
// not matter.
constexpr std::size_t kFlushSize = 1 << 16;

}  // namespace

JsonWriter& JsonWriter::Key(std::string_view name) {
  Text(name);
  buffer_ += ':';
  after_key_ = true;
  return *this;
}

void JsonWriter::Text(std::string_view utf8) {
  Separate();
  buffer_ += nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  if (buffer_.size() > kFlushSize) Flush();
}

void JsonWriter::WinText(std::string_view text_1251) { Text(Utf8FromWin(text_1251)); }

void JsonWriter::Number(std::int64_t number) {
  Separate();
  buffer_ += std::to_string(number);
}

void JsonWriter::Bool(bool value) {
  Separate();
  buffer_ += value ? "true" : "false";
}

void JsonWriter::Finish() {
  buffer_ += '\n';
  Flush();
}

void JsonWriter::Begin(char bracket) {
  Separate();
  buffer_ += bracket;
  filled_.push_back(false);
}

void JsonWriter::End(char bracket) {
  filled_.pop_back();
  buffer_ += bracket;
}

void JsonWriter::Separate() {
  if (after_key_) {
    after_key_ = false;
    return;
  }
  if (filled_.empty()) return;
  if (filled_.back()) buffer_ += ',';
  filled_.back() = true;
}

void JsonWriter::Flush() {
  output_.Result(buffer_);
  buffer_.clear();
}

}  // namespace customsconv::cli
