// An expression of any bytes over a document whose fields hold any bytes: its value, the
// formula it would be, and composite parts. First line: the expression; the rest: the values.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "document/document.h"
#include "document/formula.h"
#include "document/value_expression.h"
#include "support/catalogue_builder.h"

namespace {

using namespace customsconv;

struct World {
  CatalogueWorld program{R"([D.HEADER]
MainBlock=TOVAR
BlocksOnExtraPage=3
[D.Fields]
A=C40
B=40X2
M=C250
M.P=|PRE*|'X;0;N;
M.Q=#Q;1;N;
M.R=R;2;N;
TOVAR {
  G=C40
  DOCS {
    N=C5
  }
}
)"};
  TDocTypeList types{"Kordwin.dcf", false, program};
};

void Evaluate(TDocument& document, std::string_view expression, std::string_view values) {
  document.OpenBlock("");
  for (const char* name : {"A", "B", "M.R", "M.P", "M", "M.Q", "M.P"}) {
    document.SetField(name, values.substr(0, values.find('\n')));
    values.remove_prefix(std::min(values.find('\n'), values.size()));
    if (!values.empty()) values.remove_prefix(1);
  }
  document.SetFieldEx(expression, values);
  document.OpenBlock("TOVAR\\1\\DOCS");
  for (const int mode : {0, kNoBlanksBetweenPieces}) {
    const std::string value = GetFieldValue(document, expression, 0, mode);
    if (value != GetFieldValue(document, expression, 0, mode)) __builtin_trap();
  }
  (void)EvaluateFormula(expression);
  (void)document.SetCurrentPath(expression);
  (void)document.JoinBlockField(expression, "N", JoinMode::kLines);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  world.program.host.dialogs.Clear();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t line_end = std::min(bytes.find('\n'), bytes.size());
  TDocument document("D", world.types, world.program);
  Evaluate(document, bytes.substr(0, line_end), bytes.substr(std::min(line_end + 1, bytes.size())));
  return 0;
}
