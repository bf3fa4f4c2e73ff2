// Goods: their groups, their packaging, and to which item, group or unit a record belongs.

#include "mapping/built_in/goods.h"

#include "text/text_split.h"

namespace customsconv {
namespace {

constexpr CharSet kSerialSeparators{",;"};
constexpr int kSerialWidth = 50;

// Words 2 and 4 of the path are the numbers of the goods item and of the group.
void NumberGroup(RecordScope& record) {
  record.Set(record.Prefixed("32"), record.PathWord(2));
  record.Set(record.Prefixed("32G"), record.PathWord(4));
}

// The group's description, line by line as wide as the table's text field.
void WriteDescription(RecordScope& record) {
  const std::string text =
      record.JoinSource(JoinShort({"\\\\", record.source_path, "\\GoodsDescription"})).text;
  for (std::string_view rest = text; !rest.empty();) {
    record.Append(record.target_block);
    record.Set("NGR", "31");
    record.Set("TYP_NGR", "G1");
    NumberGroup(record);
    const SplitText split = WrapSplit(rest, record.TargetWidth("TEXT1"));
    record.Set("TEXT1", split.head);
    rest = split.tail;
    record.SelectTargetRoot();
  }
}

// One record a serial number; the numbers of one information record share its number.
void WriteSerialNumbers(RecordScope& record) {
  const ShortText block = JoinShort({record.source_path, "\\GoodsGroupInformation"});
  const int records = record.source.RecordCount(JoinShort({"\\\\", block}));
  for (int m = 1; m <= records; ++m) {
    const std::string number = std::to_string(m);
    const ShortText text = record.SourceValue({block, "\\", number, "\\SerialNumber"});
    for (std::string_view rest = text; !rest.empty();) {
      record.Append(record.target_block);
      NumberGroup(record);
      record.Set("NUMREC", number);
      const SplitText split = SplitAtSet(rest, kSerialSeparators, kSerialWidth);
      record.Set(record.Prefixed("31_15_SN"), split.head);
      rest = split.tail;
      record.SelectTargetRoot();
    }
  }
}

struct PathCode {
  std::string_view part;  // of the source path
  std::string_view code;
};

// Kind of packaging information; a later match overwrites.
constexpr PathCode kPackagingCodes[] = {
    {"PackingInformation", "0"},
    {"UnitPackInfo", "1"},
    {"CargoInfo", "2"},
    {"PalleteInformation", "3"},
};

}  // namespace

bool ApplyGoodsGroupRule(RecordScope& record) {
  if (Contains(record.target_block, "INF")) {
    WriteDescription(record);
    return true;
  }
  if (Contains(record.target_block, "SER")) {
    WriteSerialNumbers(record);
    return true;
  }
  return false;
}

void WritePackagingKind(RecordScope& record) {
  if (!record.PathHolds("GoodsPackaging#")) return;
  for (const PathCode& packaging : kPackagingCodes) {
    if (record.PathHolds(packaging.part)) record.Set("PKSIGN", packaging.code);
  }
}

void WriteGoodsGroupNumber(RecordScope& record) {
  if (record.PathHolds("\\GoodsGroupDescription\\")) {
    record.Set(record.Prefixed("32G"), record.PathWord(4));
  }
}

void WriteMechanismUnit(RecordScope& record) {
  if (!record.PathHolds("MechanismUnit")) return;
  record.Set("G32", "1");
  record.Set("KMPFB", record.PathWord(2));
  record.Set("KMPK", record.PathWord(4));
}

void WriteGoodsItemOfFlattened(RecordScope& record) {
  if (record.flattened) record.Set("G32", record.PathWord(2));
}

}  // namespace customsconv
