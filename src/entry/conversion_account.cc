#include "entry/conversion_account.h"

#include <algorithm>

namespace customsconv {
namespace {

bool IsWholeOrSkipped(const DocumentAccount& document) {
  return document.skipped || (document.abandoned_at.empty() && !document.is_empty &&
                              document.section_error.empty() && document.missing_tables.empty());
}

}  // namespace

bool FileAccount::ConvertedAny() const {
  return std::any_of(documents.begin(), documents.end(),
                     [](const DocumentAccount& document) { return document.IsConverted(); });
}

bool FileAccount::IsWhole() const {
  return ConvertedAny() && std::all_of(documents.begin(), documents.end(), IsWholeOrSkipped);
}

bool FileAccount::HasLosses() const {
  const auto is_skipped = [](const DocumentAccount& document) {
    return document.skipped.has_value();
  };
  return losses.cells.Any() || losses.replaced > 0 || !content.unknown_roots.empty() ||
         losses.lines.no_column + losses.lines.cut + losses.lines.sub_sections > 0 ||
         losses.elements.unknown + losses.elements.repeated > 0 ||
         std::any_of(documents.begin(), documents.end(), is_skipped);
}

FileContent ContentOf(const TXMLContainer& container) {
  const std::string& text = container.Text();
  return {true, text.empty(), text.find('<') != std::string::npos, container.UnknownRoots()};
}

}  // namespace customsconv
