#ifndef CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_
#define CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "dbf/dbf_cache.h"
#include "mapping/record_mapper.h"
#include "mapping/section_mapper.h"
#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "tables/dbf_document.h"

namespace customsconv {

// What a MappingWorld is made of. Texts are UTF-8 with "\n" between lines.
struct MappingParts {
  const char* kind = "ESADout";
  std::string source{};  // the fields of the kind; its main block is ESADoutGoods
  std::string tables{};  // as CatalogueWorld::TableSet takes them
  std::string rules = "[T]\nBlock{\n";
};

// One source document and one target document, a table set with the main block TOVAR, and rules
// between them.
class MappingWorld {
 public:
  explicit MappingWorld(const MappingParts& parts)
      : world_(TypeText(parts.kind, "XmlType=x, MainBlock=ESADoutGoods", parts.source)),
        rules_(Win(parts.rules), "C:\\RULES\\armti.txt") {
    world_.TableSet("OUT", parts.tables);
    types_ = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world_);
    source_ = CreateDocument(parts.kind, *types_, world_);
    target_ = CreateDbfDocument("OUT", "C:\\OUT\\", *types_, cache_, world_);
    source_->OpenBlock("");
    target_->OpenBlock("");
    run_.registration_number = "10702020/110615/0001234";
    records_.emplace(Documents());
  }

  // Sets values of the source by paths from its root, opening the records on the way:
  // "Goods\2\Code=x, Sum=1".
  void Fill(const std::string& values) {
    std::istringstream lines(LinesOf(values));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t equals = line.find('=');
      Source(line.substr(0, equals), line.substr(equals + 1));
    }
  }
  void Source(std::string_view path, std::string_view value) {
    for (std::size_t end = path.find('\\'); end != std::string_view::npos;
         end = path.find('\\', end + 1)) {
      const std::string block = "\\\\" + std::string(path.substr(0, end));
      end = path.find('\\', end + 1);
      const int number = std::stoi(std::string(path.substr(block.size() - 1, end)));
      while (source_->RecordCount(block) < number) source_->OpenBlock(block);
    }
    source_->SetCurrentPath("\\\\");
    source_->SetFieldEx("\\\\" + std::string(path), Win(value));
  }

  // Maps one record, or the section that begins at `line`; the result is the whole target.
  std::string Map(std::string_view path, std::string_view block, int header = 0) {
    records_->MapBlockRecord(path, block, header);
    return Target();
  }
  std::string MapSection(int line = 0) {
    MapTableSection(Documents(), line);
    return Target();
  }

  [[nodiscard]] std::string Source() const { return Dump(source_->RootRecord()); }
  [[nodiscard]] std::string Target() const { return Dump(target_->RootRecord()); }
  // The rows that a table has once the target is saved.
  std::string Saved(const std::string& table) {
    target_->Save("C:\\OUT\\");
    return world_.Rows(table);
  }
  [[nodiscard]] const std::vector<std::string>& shown() const { return world_.host.dialogs.log; }
  [[nodiscard]] MappingRun& run() { return run_; }

 private:
  DocumentPair Documents() { return {run_, *source_, *target_}; }

  CatalogueWorld world_;
  TDbfCache cache_{world_.host};
  RulesFile rules_;
  std::unique_ptr<TDocTypeList> types_;
  std::unique_ptr<TDocument> source_;
  std::unique_ptr<TDbfDocument> target_;
  MappingRun run_{world_, rules_};
  std::optional<RecordMapper> records_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_
