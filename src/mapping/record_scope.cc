// Reads go by paths from the root, so that no rule depends on where another left the source.

#include "mapping/record_scope.h"

namespace customsconv {

RecordScope::RecordScope(const DocumentPair& documents, std::string_view path,
                         std::string_view block, int header_line)
    : run(documents.run),
      source(documents.source),
      target(documents.target),
      source_path(ShortText::Cut(path)),
      target_block(ShortText::Cut(block)),
      header(header_line),
      kind(documents.source.DocInfo().Code),
      prefix_(Contains(kind, "KTS") ? 'K' : 'G') {}

ShortText RecordScope::Prefixed(std::string_view rest) const {
  return JoinShort({std::string_view(&prefix_, 1), rest});
}

ShortText RecordScope::HeaderValue(std::string_view field) {
  return ShortText::Cut(source.GetFieldEx(JoinShort({"\\\\", field})));
}

ShortText RecordScope::SourceValue(std::initializer_list<std::string_view> path) {
  ShortText full = "\\\\";
  for (const std::string_view part : path) full += part;
  return ShortText::Cut(source.GetFieldEx(full));
}

void RecordScope::SetHeaderValue(std::string_view field, std::string_view value) {
  source.SetFieldEx(JoinShort({"\\\\", field}), value);
}

FieldValue RecordScope::JoinSource(std::string_view block, std::string_view field) {
  return source.JoinBlockField(block, field, JoinMode::kBlanks);
}

void RecordScope::Set(std::string_view field, std::string_view value) {
  if (!IsKeyOfParent(target.CurBasis().IndexOfName(field))) target.SetField(field, value);
}

int RecordScope::TargetWidth(std::string_view field) const {
  const TBasis& level = target.CurBasis();
  const int position = level.IndexOfName(field);
  return position < 0 ? 0 : level.Item(position).width;
}

}  // namespace customsconv
