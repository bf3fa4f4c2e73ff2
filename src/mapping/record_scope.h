#ifndef CUSTOMSCONV_MAPPING_RECORD_SCOPE_H_
#define CUSTOMSCONV_MAPPING_RECORD_SCOPE_H_

#include <initializer_list>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "mapping/mapping_run.h"
#include "text/words.h"

namespace customsconv {

inline constexpr CharSet kPathSeparator{"\\"};

// One record on its way from the source to the target: what the mapping lines and every
// built-in rule look at, and the few things that rules do. A rule reads like this:
//
//   if (!record.PathHolds("ReimportDocument")) return;    // where the source record stands
//   record.Set("G4401", "9");                             // in the current target record
//   record.Append("\\\\TRANS");                           // a further one, current from now on
//   record.Set("VIDTRANS", record.HeaderValue("Mode"));
//   record.SelectTargetRoot();
//
// Every text that a rule works on is short: values of the source are cut at 255 bytes where they
// are read. Only joined block texts, the goods description that is split over several rows
// (FieldValue) and what moves from one field of the source to another may be longer.
class RecordScope {
 public:
  // `source_path` is empty for the source's root, `target_block` for the
  // target's header record. `header` is the line of the section or sub-section.
  RecordScope(const DocumentPair& documents, std::string_view source_path,
              std::string_view target_block, int header);

  MappingRun& run;
  TDocument& source;
  TDbfDocument& target;
  ShortText source_path;
  ShortText target_block;
  int header;
  // The source's kind: the code of its type.
  std::string_view kind;
  // The goods record that a flattened target record belongs to is written into G32.
  bool flattened = false;

  // First letter of many field names: "K" for value adjustments (kinds with "KTS"), else "G".
  [[nodiscard]] char Prefix() const { return prefix_; }
  [[nodiscard]] ShortText Prefixed(std::string_view rest) const;

  [[nodiscard]] bool IsHeader() const { return source_path.empty(); }
  [[nodiscard]] bool PathHolds(std::string_view part) const { return Contains(source_path, part); }
  // Word `number` (from 1) of the source path.
  [[nodiscard]] std::string_view PathWord(std::size_t number) const CUSTOMSCONV_LIFETIME_BOUND {
    return ExtractWord(number, source_path, kPathSeparator);
  }

  // Value of a field of the source's root, or of the record that a path leads
  // to, with a path from the root.
  [[nodiscard]] ShortText HeaderValue(std::string_view field);
  [[nodiscard]] ShortText SourceValue(std::initializer_list<std::string_view> path);
  void SetHeaderValue(std::string_view field, std::string_view value);
  // First (or the named) field of all records of a block, joined with single blanks.
  [[nodiscard]] FieldValue JoinSource(std::string_view block, std::string_view field = {});

  // Appends a record to a target block; it becomes current.
  void Append(std::string_view block) { target.OpenBlock(block); }
  // Writes a field of the current target record, unless it is a key of the parent record: its
  // value is not a rule's to give.
  void Set(std::string_view field, std::string_view value);
  // Whether the field at `position` of the current target level is a key of the parent record,
  // from which the save fills it. Rows of a goods item often have its number, G32, as such a key.
  [[nodiscard]] bool IsKeyOfParent(int position) const {
    return target.KeysOf(target.CurBasis()).IsFromParent(position);
  }
  void SelectTargetRoot() { target.SetCurrentPath("\\\\"); }
  void SelectSourceRoot() { source.SetCurrentPath("\\\\"); }
  // Width of a field of the current target level; 0 when it has none.
  [[nodiscard]] int TargetWidth(std::string_view field) const;

 private:
  char prefix_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_RECORD_SCOPE_H_
