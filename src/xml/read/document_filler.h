#ifndef CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_
#define CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "xml/tree/xml_node.h"

namespace customsconv {

// Stores the values of an XML tree in the fields of a document.
//
//   const XmlTree tree(text);
//   bool unknown_ids = false;
//   DocumentFiller(document, unknown_ids).Fill(tree.root());
//
// The path of element names is matched to the fields' XML paths: names of elements that are
// neither field nor block are joined by "#" ("Consigment#BorderTransport#ModeCode"), a block's
// element opens a record and starts the path anew. Trees may nest to any depth.
class DocumentFiller {
 public:
  // The document stands at a record with slots. `unknown_ids_found` is set when values
  // are met under names that are no fields of the type. Both must outlive the filler.
  DocumentFiller(TDocument& document, bool& unknown_ids_found)
      : document_(document), unknown_ids_found_(unknown_ids_found) {}

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
  bool& unknown_ids_found_;
  std::vector<Level> levels_;
  std::string keys_;  // the prefixes of all open levels, and the key being looked up
  std::string attribute_key_;
  std::string decoded_;
  std::string value_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_DOCUMENT_FILLER_H_
