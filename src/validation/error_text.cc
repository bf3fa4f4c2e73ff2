// The line that tells of a document which its schema refuses.

#include "validation/error_text.h"

#include "base/cp1251_literal.h"
#include "text/pattern.h"

namespace customsconv {
namespace {

const Pattern& BracedNamespace() {
  static const Pattern pattern("\\{[\\w\\:\\.]*\\}");
  return pattern;
}

}  // namespace

std::string ErrorText(const XmlParseReport& report, std::string_view schema_file) {
  static const Pattern kAngleBrackets("[\\<\\>]");
  std::string text = report.reason;
  text.append("<br>").append("Строка XML № "_cp1251).append(std::to_string(report.line));
  text.append(" (от начала документа "_cp1251);
  text.append(schema_file.substr(0, schema_file.find('.')));
  text.append(")<BR> Текст: "_cp1251).append(kAngleBrackets.ReplaceAll(report.src_text, ""));
  return BracedNamespace().ReplaceAll(text, "");
}

std::string WithBracedTextsMarked(std::string_view reason) {
  return BracedNamespace().ReplaceAll(reason, "…"_cp1251);
}

}  // namespace customsconv
