// From the lines of a section to the records that they are for: which table, which source block,
// which records of it.

#include "mapping/section_mapper.h"

#include <string>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "mapping/record_mapper.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::string_view kFlatListBlock = "DCLLISTL";
// The one name with a star that stands for a block, the one without it.
constexpr std::string_view kMechanismParts = "MechUnitPart*";

std::string_view WithoutExtension(std::string_view file_name CUSTOMSCONV_LIFETIME_BOUND) {
  return file_name.substr(0, file_name.rfind('.'));
}

// The goods group descriptions go by several short names in rules files.
std::string_view ResolveAlias(std::string_view block) {
  const bool alias = block == "TOVG" || block == "KTOVG" || block == "TOVG2";
  return alias ? std::string_view("GoodsGroupDescription") : block;
}

bool DeclaresBlock(std::string_view line) {
  return line.starts_with(';') && Contains(line, "{") && !Contains(line, "?");
}

// ";ESADoutGoods{" and ";goods of the declaration ESADoutGoods {" both declare
// ESADoutGoods.
std::string_view DeclaredBlock(std::string_view line) {
  line.remove_prefix(1);
  const std::string_view name = Trim(line.substr(0, line.find_first_of("{;")));
  const std::size_t blank = name.rfind(' ');
  return blank == std::string_view::npos ? name : name.substr(blank + 1);
}

// Walks one section of the rules for one pair of documents.
class SectionWalk {
 public:
  SectionWalk(const DocumentPair& documents, int start_line)
      : run_(documents.run),
        source_(documents.source),
        target_(documents.target),
        rules_(documents.run.rules),
        start_line_(start_line),
        records_(documents) {}

  void Run() {
    for (int i = start_line_; i < rules_.Count(); i = rules_.NextHeader(i)) {
      if (!rules_.ShortLine(i + 1).starts_with('=')) {
        MapSubSection(i);
      } else if (i == start_line_) {
        records_.MapBlockRecord({}, {}, i);
      } else {
        return;
      }
    }
  }

 private:
  void MapSubSection(int header) {
    const std::string table = UpperCaseRu(rules_.TableName(header));
    const std::string_view target_block = TargetBlock(table);
    if (target_block.empty()) {
      Show({"Не описана таблица "_cp1251, table, " в документе "_cp1251, target_.DocInfo().Code});
      return;
    }
    if (target_block == kFlatListBlock) {
      records_.MapBlockRecord({}, target_block, header);
      return;
    }
    const std::string_view block_line = rules_.ShortLine(header + 1);
    if (!Contains(block_line, "{")) {
      Show({"Не задан тип блока в строке "_cp1251, std::to_string(header), " файла "_cp1251,
            rules_.name()});
      return;
    }
    const std::string_view block = ResolveAlias(block_line.substr(0, block_line.find('{')));
    if (!Contains(block_line, "*")) {
      MapBlock(block, target_block, header);
    } else if (block == kMechanismParts) {
      MapBlock(DropTail(block, 1), target_block, header);
    } else {
      MapDeclaredBlocks(target_block, header);
    }
  }

  std::string_view TargetBlock(std::string_view table) const {
    const std::string_view block = FindTableBlock(target_.RootBasis(), table);
    return block.empty() ? FindTableBlock(target_.MainBasis(), table) : block;
  }

  // The sub-section's comment lines of the form ";name{" name its source blocks.
  void MapDeclaredBlocks(std::string_view target_block, int header) {
    for (int j = header + 1; j < rules_.Count(); ++j) {
      const std::string_view line = rules_.ShortLine(j);
      if (line.starts_with('[')) return;
      if (!DeclaresBlock(line)) continue;
      const std::string_view block = DeclaredBlock(line);
      MapBlock(block, target_block, header);
      // The name is looked up with its star, too, which tells that there is no such block.
      if (block == kMechanismParts) MapBlock(DropTail(block, 1), target_block, header);
    }
  }

  void MapBlock(std::string_view block, std::string_view target_block, int header) {
    if (source_.RootBasis().HasBlock(block)) {
      const int records = source_.RecordCount(JoinShort({"\\\\", block}));
      for (int k = 1; k <= records; ++k) {
        records_.MapBlockRecord(JoinShort({block, "\\", std::to_string(k)}), target_block, header);
      }
    } else if (source_.MainBasis().HasBlock(block)) {
      MapMainBlockRecords(block, target_block, header);
    } else if (!StartsWithRu(source_.DocInfo().Code, "DTSout_CU")) {
      Show({"Не найден блок "_cp1251, block, " файла "_cp1251, rules_.name()});
    }
  }

  void MapMainBlockRecords(std::string_view block, std::string_view target_block, int header) {
    const RecordList* const main_records = source_.MainRecords();
    if (main_records == nullptr) return;
    const int position = main_records->basis().IndexOfName(block);
    for (int m = 1; m <= main_records->Count(); ++m) {
      // Most goods lack most blocks; their paths need not be walked to know it.
      if (BlockRecords(main_records->Record(m), position) == nullptr) continue;
      const std::string number = std::to_string(m);
      const ShortText inside = JoinShort({source_.DocInfo().MainBlock, "\\", number, "\\", block});
      const int records = source_.RecordCount(JoinShort({"\\\\", inside}));
      const ShortText target =
          JoinShort({target_.DocInfo().MainBlock, "\\", number, "\\", target_block});
      for (int k = 1; k <= records; ++k) {
        records_.MapBlockRecord(JoinShort({inside, "\\", std::to_string(k)}), target, header);
      }
    }
  }

  void Show(std::initializer_list<std::string_view> parts) {
    ++run_.losses.sub_sections;
    run_.environment.host.dialogs.Message(Join(parts));
  }

  MappingRun& run_;
  TDocument& source_;
  TDbfDocument& target_;
  const RulesFile& rules_;
  int start_line_;
  RecordMapper records_;
};

}  // namespace

std::string_view FindTableBlock(const TBasis& structure, std::string_view table_name) {
  if (dynamic_cast<const TDbfBasis*>(&structure) == nullptr) return {};
  const std::string_view key = WithoutExtension(table_name);
  for (int i = 0; i < structure.Count(); ++i) {
    const TFieldInfo& entry = structure.Item(i);
    const auto* level = dynamic_cast<const TDbfBasis*>(entry.block.get());
    if (level != nullptr && SameTextRu(WithoutExtension(level->table_file), key)) return entry.name;
  }
  return {};
}

void MapTableSection(const DocumentPair& documents, int start_line) {
  SectionWalk(documents, start_line).Run();
}

}  // namespace customsconv
