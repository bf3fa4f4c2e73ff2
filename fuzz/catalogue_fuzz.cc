// A catalogue file of any bytes: loading it, and building the levels of its types.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/error.h"
#include "document/doc_type_list.h"
#include "storage/dbf_cache.h"
#include "support/catalogue_builder.h"
#include "support/table_image.h"

namespace customsconv {
namespace {

// A type without its section searches the whole file, so not all of them are asked.
constexpr int kTypesAsked = 50;

void BuildLevels(TDocInfo& info, TDbfCache& cache, Environment& environment) {
  try {
    const TBasis& basis = info.GetBasis(environment);
    if (info.HasDbfName) info.LoadFromDbf("C:\\OUT\\", cache, environment);
    for (int i = 0; i < basis.Count(); ++i) {
      if (basis.IndexOfName(basis.Item(i).name) > i) __builtin_trap();
      (void)basis.TotalWidth(i);
    }
    (void)basis.FindSubBasis(info.MainBlock).Path();
    (void)info.Numbering(environment).FieldIdByName("G33");
    (void)info.XmlDocName();
  } catch (const Error&) {
  }
}

void Load(bool all_files, TDbfCache& cache, Environment& environment) {
  try {
    const TDocTypeList types("Kordwin.dcf", all_files, environment);
    for (int i = 0; i < std::min(types.Count(), kTypesAsked); ++i) {
      if (types.IndexOf(types.Item(i).Code) != i) __builtin_trap();
      BuildLevels(types.Item(i), cache, environment);
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
