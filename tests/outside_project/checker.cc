// checker PROGRAM SCHEMAS XML: tells where the documents of a file are not valid.
#include <base/unicode.h>
#include <entry/library.h>
#include <platform/posix/posix_host.h>
#include <platform/quiet_dialogs.h>
#include <validation/libxml_services.h>

#include <iostream>

using namespace customsconv;

namespace {

class Places : public LineList, public CheckObserver {
 public:
  void Append(std::string_view) override {}
  void Checked(std::string_view short_name, int, const SchemaVerdict& verdict) override {
    if (verdict.error_text.empty()) return;
    std::cout << Utf8FromWin(short_name) << ": line " << verdict.line << "\n";
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  QuietDialogs dialogs;
  PosixHost host(dialogs);
  LibXmlServices services(host.host().files);
  Library library(host, services);
  Places places;
  const auto path = [argv](int i) { return ShortText::Cut(argv[i]); };
  return library.CheckXsd(path(1), path(2), path(3), places, &places) ? 0 : 1;
}
