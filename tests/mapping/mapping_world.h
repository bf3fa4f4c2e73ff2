#ifndef CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_
#define CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_

#include <memory>
#include <string>
#include <string_view>

#include "base/code_pages.h"
#include "catalogue/doc_type_list.h"
#include "mapping/record_mapper.h"
#include "support/catalogue_builder.h"
#include "support/document_dump.h"

namespace customsconv {

// One source and one target document over a small catalogue, and rules between
// them. Texts are UTF-8 with "\n" between lines. The target is an ordinary document, so
// that no tables are needed.
class MappingWorld {
 public:
  MappingWorld(std::string_view source_code, std::string_view catalogue, std::string_view rules)
      : rules_(Win(rules), "C:\\RULES\\armti.txt"),
        types_("Kordwin.dcf", false, (world.Dcf(catalogue), world)),
        source(source_code, types_, world),
        target("OUT", types_, world),
        run{world, rules_},
        mapper(run) {
    run.source = &source;
    run.target = &target;
    run.registration_number = "10702020/110615/0001234";
    source.OpenBlock("", 0, false);
    target.OpenBlock("", 0, false);
  }

  // Sets a value of the source by a path from its root, opening the records on the way:
  // "Goods\2\Code".
  void Source(std::string_view path, std::string_view value) {
    for (std::size_t end = path.find('\\'); end != std::string_view::npos;
         end = path.find('\\', end + 1)) {
      const std::string block = "\\\\" + std::string(path.substr(0, end));
      end = path.find('\\', end + 1);
      const int number = std::stoi(std::string(path.substr(block.size() - 1, end)));
      while (source.RecordCount(block) < number) source.OpenBlock(block, 0, false);
    }
    source.SetCurrentPath("\\\\");
    source.SetFieldEx("\\\\" + std::string(path), Win(value));
  }

  // Maps one record; the whole target as text.
  std::string Map(std::string_view path, std::string_view block, int header = 0) {
    mapper.MapBlockRecord(path, block, header);
    return Dump(target.RootRecord());
  }

  CatalogueWorld world;

 private:
  RulesFile rules_;
  TDocTypeList types_;

 public:
  TDocument source;
  TDocument target;
  RunContext run;
  RecordMapper mapper;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_MAPPING_MAPPING_WORLD_H_
