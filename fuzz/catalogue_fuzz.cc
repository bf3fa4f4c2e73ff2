// A catalogue file of any bytes: loading it, building the levels of its types, and filling a
// document of each.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/error.h"
#include "catalogue/doc_type_list.h"
#include "dbf/dbf_cache.h"
#include "document/document.h"
#include "support/catalogue_builder.h"
#include "support/table_image.h"
#include "tables/table_levels.h"

namespace customsconv {
namespace {

// A type without its section searches the whole file, so not all of them are asked.
constexpr int kTypesAsked = 50;

// Stores into all fields of the document's top and main level.
void Fill(TDocument& document) {
  document.OpenBlock("");
  for (int i = 0; i < document.RootBasis().Count(); ++i) {
    document.SetFieldByNum(i, "a");
    document.AppendFieldByNum(i, "b");
    document.SetChoice(i, 1);
    document.SetFieldById(1000 + i, 0, "c");
    (void)(document.GetFieldByNum(i) + document.GetFieldById(1000 + i, 0));
  }
  (void)document.JoinBlockField(document.DocInfo().MainBlock, "", JoinMode::kBlanks);
  for (int i = 0; i < document.RootBasis().Count(); ++i) {
    if (document.RootBasis().Item(i).is_block) {
      document.OpenBlock("\\\\" + document.RootBasis().Item(i).name);
      document.SetChoice(0, 1);
    }
  }
}

void UseType(TDocInfo& info, TDocTypeList& types, TDbfCache& cache, Environment& environment) {
  try {
    const TBasis& basis = info.GetBasis(environment);
    if (info.HasDbfName) LoadFromDbf(info, "C:\\OUT\\", cache, environment);
    for (int i = 0; i < basis.Count(); ++i) {
      if (basis.IndexOfName(basis.Item(i).name) > i) __builtin_trap();
      (void)basis.TotalWidth(i);
    }
    (void)basis.FindSubBasis(info.MainBlock).Path();
    (void)info.Numbering(environment).FieldIdByName("G33");
    (void)info.XmlDocName();
    TDocument document(info.Code, types, environment);
    Fill(document);
  } catch (const Error&) {
  }
}

void Load(bool all_files, TDbfCache& cache, Environment& environment) {
  try {
    TDocTypeList types("Kordwin.dcf", all_files, environment);
    for (int i = 0; i < std::min(types.Count(), kTypesAsked); ++i) {
      if (types.IndexOf(types.Item(i).Code) != i) __builtin_trap();
      UseType(types.Item(i), types, cache, environment);
    }
  } catch (const Error&) {
  }
}

}  // namespace
}  // namespace customsconv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace customsconv;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  CatalogueWorld world;
  world.host.files["C:\\PROG\\Data\\Kordwin.dcf"] = bytes;
  world.host.files["C:\\PROG\\document.dcf"] = bytes;
  world.host.files["C:\\OUT\\T.DBF"] = TableImage().Field("G33", 'C', 10).Bytes();
  TDbfCache cache(world.host);
  Load(false, cache, world);
  Load(true, cache, world);
  return 0;
}
