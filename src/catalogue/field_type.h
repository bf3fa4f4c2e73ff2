#ifndef CUSTOMSCONV_CATALOGUE_FIELD_TYPE_H_
#define CUSTOMSCONV_CATALOGUE_FIELD_TYPE_H_

namespace customsconv {

// Type letters of catalogue fields. A catalogue may have other letters, too: its fields keep them.
//
// The letters of table fields (dbf/dbf_fields.h) are another alphabet: "M" is a memo there.
enum class FieldType : char {
  kText = ' ',    // what a field is whose format names no type; long text has lines
  kString = 'S',  // written to XML like kCharacter
  kCharacter = 'C',
  kNumber = 'N',
  kDate = 'D',
  kLogical = 'L',
  kComposite = 'M',  // one text of several parts
  kPart = 'V',       // of the composite field in front of it
  kGroup = 'B',      // holds other elements, no value
  kBinary = 'Y',     // base64 in XML, packed in a document
  kMarkup = 'Z',     // goes into XML as it stands
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FIELD_TYPE_H_
