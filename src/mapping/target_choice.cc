// Table sets keep some records elsewhere than the rules say. Everything that moves one stands here.

#include "mapping/target_choice.h"

#include "text/blanks.h"

namespace customsconv {
namespace {

// A table that the rules put under a goods record but that the table set keeps
// beside the goods table: its rows name their goods record in G32.
void Flatten(RecordScope& record) {
  const std::string_view block = record.target_block;
  if (WordCount(block, kPathSeparator) != 3) return;
  if (!Contains(block, record.target.DocInfo().MainBlock)) return;
  const ShortText name = ShortText::Cut(ExtractWord(3, block, kPathSeparator));
  if (record.target.MainBasis().HasBlock(name) || !record.target.RootBasis().HasBlock(name)) return;
  record.target_block = name;
  record.flattened = true;
}

// A block that the rules already place under an inventory or goods record is
// not put under one again.
bool LiesUnder(const ShortText& block, std::string_view place) {
  return block.view().starts_with(place);
}

}  // namespace

void AdjustTarget(RecordScope& record) {
  Flatten(record);
  const std::string_view path = record.source_path;
  const bool placed =
      LiesUnder(record.target_block, "TOVAR\\") || LiesUnder(record.target_block, "BLOCK\\1\\");
  if (!placed && path.starts_with("InventoryInstance#InventDocument\\")) {
    record.target_block = JoinShort({"BLOCK\\1\\", record.target_block});
  }
  if (!placed && path.starts_with("ESADoutCustomsConditions#ProcessingGoods\\")) {
    const ShortText goods = record.SourceValue({path, "\\GoodsNumeric"});
    record.target_block = JoinShort({"TOVAR\\", IfEmpty(goods, "1"), "\\", record.target_block});
  }
  if (record.target_block.view().find("\\KMPK", 1) != std::string_view::npos) {
    record.target_block = "KMPK";
  }
}

}  // namespace customsconv
