#include "entry/exported_functions.h"

#include "entry/library.h"
#include "entry/library_host.h"
#include "validation/libxml_services.h"

namespace customsconv::exported {
namespace {

// The one state of the process behind the exports: what the last call loaded, and the
// table images until they are written back.
struct ProcessState {
  LibraryHost host;
  LibXmlServices xml_services{host.host().files};
  Library library{host.host(), xml_services};
};

Library& StartedLibrary(const ShortText& program_dir) {
  static ProcessState state;
  state.host.StartLog(program_dir);
  return state.library;
}

}  // namespace

bool Xml2ArmTi(const ShortText& program_dir, const ShortText& rules_file, const ShortText& xml_file,
               const ShortText& output_dir) {
  return StartedLibrary(program_dir).Xml2ArmTi(program_dir, rules_file, xml_file, output_dir);
}

bool CheckXsd(const ShortText& program_dir, const ShortText& schema_path, const ShortText& xml_file,
              LineList& errors) {
  return StartedLibrary(program_dir).CheckXsd(program_dir, schema_path, xml_file, errors);
}

}  // namespace customsconv::exported
