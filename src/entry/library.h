#ifndef CUSTOMSCONV_ENTRY_LIBRARY_H_
#define CUSTOMSCONV_ENTRY_LIBRARY_H_

#include <memory>
#include <string_view>

#include "base/lifetime.h"
#include "dbf/dbf_cache.h"
#include "entry/conversion_account.h"
#include "entry/line_list.h"
#include "entry/original_place.h"
#include "entry/start_up.h"
#include "validation/schema_check.h"

namespace customsconv {

// Watches a schema check for whoever runs it.
class CheckObserver {
 public:
  virtual ~CheckObserver() = default;
  // The file was read, and its documents will be checked.
  virtual void FileRead(const FileContent&) {}
  // Where in the file is what the verdict that comes next finds fault with.
  virtual void Found(const OriginalPlace&) {}
  virtual void Checked(std::string_view short_name, int occurrence,
                       const SchemaVerdict& verdict) = 0;
};

// The two functions of the library over one host: what the exports call with the process's own
// object and the command line with its own. One call at a time.
//
//   QuietDialogs dialogs;
//   PosixHost host(dialogs);
//   LibXmlServices services(host.host().files);
//   Library library(host.host(), services);
//   if (!library.Xml2ArmTi("C:\\PROG\\", "C:\\PROG\\armti.txt", "C:\\IN\\1.xml", "C:\\OUT\\")) {
//     Show(library.quiet_failure());
//   }
class Library {
 public:
  // Both must outlive the library.
  Library(Host& host, XmlServices& xml_services);

  // Texts are code page 1251, at most 255 bytes. `program_dir` and `output_dir` end with a
  // separator. Converts the documents of `xml_file`; false when the catalogue cannot be loaded or
  // an error ended the run. Throws Error when kord.ini is missing or unusable. `account` says
  // what of the file is missing in the tables even so.
  bool Xml2ArmTi(const ShortText& program_dir, const ShortText& rules_file,
                 const ShortText& xml_file, const ShortText& output_dir,
                 FileAccount* account = nullptr);

  // Checks every document of `xml_file` against the schemas in the folder part of `schema_path`; a
  // line a failing document goes to `errors`. False when the catalogue cannot be loaded or a check
  // failed for another reason than the document. Throws Error when kord.ini is missing, the file
  // cannot be read or a document not built.
  bool CheckXsd(const ShortText& program_dir, const ShortText& schema_path,
                const ShortText& xml_file, LineList& errors, CheckObserver* observer = nullptr);

  [[nodiscard]] StartUpState& state() CUSTOMSCONV_LIFETIME_BOUND { return state_; }
  [[nodiscard]] TDbfCache& tables() CUSTOMSCONV_LIFETIME_BOUND { return tables_; }
  // The error that made the last call return false, for whoever wants to show
  // it; empty when there was none or the user has been told.
  [[nodiscard]] const std::string& quiet_failure() const CUSTOMSCONV_LIFETIME_BOUND {
    return quiet_failure_;
  }

 private:
  bool CheckDocuments(const ShortText& xml_file, LineList& errors, CheckObserver* observer);

  TDbfCache tables_;
  StartUpState state_;
  SchemaCheck schema_check_;
  std::string quiet_failure_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_LIBRARY_H_
