#include "xml/read/document_filler.h"

#include <utility>

#include "base/short_text.h"
#include "xml/read/value_conversion.h"

namespace customsconv {

void DocumentFiller::Fill(const TXMLNode& root) {
  OpenLevel(root, 0, /*opened_record=*/false);
  while (!levels_.empty()) {
    Level& level = levels_.back();
    if (level.next_child == nullptr) {
      CloseLevel();
      continue;
    }
    const TXMLNode& child = *level.next_child;
    level.next_child = child.next;
    FillFrom(child);
  }
}

// The level's prefix is what stands in keys_ from `prefix_start` on.
void DocumentFiller::OpenLevel(const TXMLNode& node, std::size_t prefix_start, bool opened_record) {
  const TXMLNode* first = node.children.empty() ? nullptr : &*node.children.begin();
  levels_.push_back({&node, first, prefix_start, keys_.size() - prefix_start, opened_record});
}

void DocumentFiller::CloseLevel() {
  const Level level = levels_.back();
  levels_.pop_back();
  StoreAttributes(*level.node);
  if (level.opened_record) document_.PopPosition();
}

void DocumentFiller::FillFrom(const TXMLNode& child) {
  const TBasis& basis = document_.CurBasis();
  const int position = basis.IndexOfXmlPath(ChildKey(child));
  const int last_field = std::exchange(levels_.back().last_field, position);
  if (position < 0 || basis.Item(position).type == FieldType::kGroup) return FillFromUnknown(child);
  const TFieldInfo& field = basis.Item(position);
  if (field.is_block) return FillRecord(child, field);
  if (position != last_field) return StoreValue(child, position, field);
  if (field.seq != 0) return AppendRepeat(child, position, field);
  if (!child.Text().empty()) ++lost_.repeated;
}

// The level's prefix and the child's local name, together at most 255 bytes. A text has no
// name: its key is the prefix, so inside a block it goes to the first field without a
// path, which is how a repeated simple element gets its value.
std::string_view DocumentFiller::ChildKey(const TXMLNode& child) {
  const Level& level = levels_.back();
  keys_.resize(level.prefix_start + level.prefix_size);
  keys_.append(child.LocalName().substr(0, ShortText::kMaxSize - level.prefix_size));
  return std::string_view(keys_).substr(level.prefix_start);
}

void DocumentFiller::FillFromUnknown(const TXMLNode& child) {
  const bool one_child = !child.children.empty() && child.children.begin()->next == nullptr;
  if (one_child && !child.Text().empty()) {
    ++lost_.unknown;
    return;
  }
  if (child.children.empty() && child.attributes.empty()) return;
  const std::size_t start = levels_.back().prefix_start;
  if (keys_.size() - start < ShortText::kMaxSize) keys_ += '#';
  OpenLevel(child, start, /*opened_record=*/false);
}

void DocumentFiller::FillRecord(const TXMLNode& child, const TFieldInfo& block) {
  document_.PushPosition();
  document_.OpenBlock(block.name);
  OpenLevel(child, keys_.size(), /*opened_record=*/true);
}

void DocumentFiller::StoreValue(const TXMLNode& child, int position, const TFieldInfo& field) {
  const std::string_view text = child.Text();
  const std::string_view decoded = DecodeXmlEntities(text, decoded_);
  document_.SetFieldByNum(position, ConvertXmlValue(decoded, field.type, value_));
  if (field.choice != 0 && !text.empty()) document_.SetChoice(position, field.choice);
}

// An element that repeats adds to the value as it stands, unconverted.
void DocumentFiller::AppendRepeat(const TXMLNode& child, int position, const TFieldInfo& field) {
  constexpr int kOneALine = 1;
  value_ = field.seq == kOneALine ? '\r' : ',';
  value_ += DecodeXmlEntities(child.Text(), decoded_);
  document_.AppendFieldByNum(position, value_);
}

void DocumentFiller::StoreAttributes(const TXMLNode& node) {
  constexpr std::string_view kPrefix = "att=";
  for (const TXMLNode& attribute : node.attributes) {
    attribute_key_.assign(kPrefix).append(attribute.name);
    const int position = document_.CurBasis().IndexOfXmlPath(attribute_key_);
    if (position < 0) continue;
    document_.SetFieldByNum(position, DecodeXmlEntities(attribute.value, decoded_));
  }
}

}  // namespace customsconv
