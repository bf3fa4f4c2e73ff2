#ifndef CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_
#define CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "xml/tree/xml_node.h"

namespace customsconv {

// Elements whose values are stored nowhere, counted.
struct LostElements {
  std::int32_t unknown = 0;   // under names that are no fields of the type
  std::int32_t repeated = 0;  // behind an element of the same name, where the field takes one
};

// Stores the values of an XML tree in the fields of a document.
//
//   const XmlTree tree(text);
//   LostElements lost;
//   DocumentFiller(document, lost).Fill(tree.root());
//
// The path of element names is matched to the fields' XML paths: names of elements that are
// neither field nor block are joined by "#" ("Consigment#BorderTransport#ModeCode"), a block's
// element opens a record and starts the path anew. Trees may nest to any depth.
class DocumentFiller {
 public:
  // The document stands at a record with slots. Both must outlive the filler, which adds to
  // `lost`.
  DocumentFiller(TDocument& document, LostElements& lost) : document_(document), lost_(lost) {}

  // Fills from what is inside `root` and from its attributes.
  void Fill(const TXMLNode& root);

 private:
  static constexpr int kNoField = -1;

  // An element whose children are being gone through.
  struct Level {
    const TXMLNode* node;
    const TXMLNode* next_child;
    // Its prefix in keys_, which the children's names are added to.
    std::size_t prefix_start;
    std::size_t prefix_size;
    bool opened_record;
    int last_field = kNoField;  // of the child before
  };

  void OpenLevel(const TXMLNode& node, std::size_t prefix_start, bool opened_record);
  void CloseLevel();
  void FillFrom(const TXMLNode& child);
  [[nodiscard]] std::string_view ChildKey(const TXMLNode& child);
  void FillFromUnknown(const TXMLNode& child);
  void FillRecord(const TXMLNode& child, const TFieldInfo& block);
  void StoreValue(const TXMLNode& child, int position, const TFieldInfo& field);
  void AppendRepeat(const TXMLNode& child, int position, const TFieldInfo& field);
  void StoreAttributes(const TXMLNode& node);

  TDocument& document_;
  LostElements& lost_;
  std::vector<Level> levels_;
  std::string keys_;  // the prefixes of all open levels, and the key being looked up
  std::string attribute_key_;
  std::string decoded_;
  std::string value_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_
