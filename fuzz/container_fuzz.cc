// Takes any bytes as an XML file and yields all its documents, filled by a catalogue that has
// every kind of field. Nothing but errors with a message may come out, and as many
// documents as the container counted.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "xml/read/xml_container.h"
#include "xml/read/xml_value_lookup.h"

namespace customsconv {
namespace {

constexpr const char* kCatalogue =
    "[A.HEADER]\n"
    "ShortName=ЭД A\n"
    "MainBlock=G\n"
    "XmlType=A\n"
    "Prefix=<A x=\"\">\n"
    "[A.Fields]\n"
    "Bare=C10\n"
    "K=C10 | NAMESPACE=\"K\" CHOICE=\"1\"\n"
    "D=D | NAMESPACE=\"p:D\"\n"
    "N=N5 | NAMESPACE=\"N\" SEQ=\"1\"\n"
    "Y=Y | NAMESPACE=\"Y\"\n"
    "M=C250 | NAMESPACE=\"M\"\n"
    "M.P1=P#;1;REF;\n"
    "M.P2=Q|R;2;REF2;1 | NAMESPACE=\"V\" SEQ=\"2\"\n"
    "B=B | NAMESPACE=\"B\"\n"
    "U=C10 | NAMESPACE=\"att=u\"\n"
    "G { NAMESPACE=\"S#G\"\n"
    "  T=C10\n"
    "  H { NAMESPACE=\"H\"\n"
    "    L=L | NAMESPACE=\"L\" SEQ=\"1\"\n"
    "  }\n"
    "}\n"
    "[B.HEADER]\n"
    "Prefix=<B>\n"
    "XmlType=B\n"
    "[B.Fields]\n"
    "K=C10 | NAMESPACE=\"K\"\n";

// Made once: the program folder and its catalogue do not change from input to input.
class World {
 public:
  World() : types_("Kordwin.dcf", /*all_files=*/false, program_) {}

  void Run(std::string_view bytes) {
    constexpr std::string_view kFile = "C:\\IN\\A.XML";
    program_.host.files[kFile] = bytes;
    TXMLContainer container(kFile, types_, program_);
    int expected = 0;
    for (const TXMLContainer::Kind& kind : container.DocList()) expected += kind.Count();
    static_cast<void>(GetXmlValue(container.Text(), "A\\K"));
    if (Yield(container) != expected) std::abort();
    program_.host.dialogs.Clear();
  }

 private:
  // The number of documents that came out or could not be read.
  static int Yield(TXMLContainer& container) {
    constexpr int kMostLooks = 1000;  // a text may claim one short document for every few bytes
    for (int count = 0;; ++count) {
      try {
        const auto document = container.Next();
        if (document == nullptr) return count;
        if (count < kMostLooks) static_cast<void>(Dump(document->RootRecord()));
      } catch (const Error& error) {
        if (error.text().empty()) std::abort();
      }
    }
  }

  CatalogueWorld program_{kCatalogue};
  TDocTypeList types_;
};

}  // namespace
}  // namespace customsconv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static customsconv::World world;
  try {
    world.Run(std::string_view(reinterpret_cast<const char*>(data), size));
  } catch (const customsconv::Error& error) {
    if (error.text().find("A.XML") == std::string::npos) std::abort();
  }
  return 0;
}
