#include <exception>
#include <memory>
#include <string>

#include "base/error.h"
#include "base/short_text.h"
#include "customsconv.h"
#include "entry/library.h"
#include "entry/library_host.h"
#include "validation/libxml_services.h"

// Defined by hosts that are not written in C++; unresolved in all others.
extern "C" void customsconv_raise(const char* message, size_t size) __attribute__((weak));

namespace customsconv {
namespace {

// The one state of the process behind the exports: what the last call loaded, and the
// table images until they are written back.
struct ProcessState {
  LibraryHost host;
  LibXmlServices xml_services{host.host().files};
  Library library{host.host(), xml_services};
};

ProcessState& State() {
  static ProcessState state;
  return state;
}

ShortText Copy(const customsconv_text& text) { return std::string_view(text.bytes, text.length); }

// The host's list, reached through the function that it gave.
class HostLines : public LineList {
 public:
  explicit HostLines(customsconv_lines* lines) : lines_(lines) {}
  void Append(std::string_view line) override { lines_->append(lines_, line.data(), line.size()); }

 private:
  customsconv_lines* lines_;
};

// The message that a host's own error carries; it outlives the call.
std::string& PendingMessage() {
  static std::string message;
  return message;
}

// Runs `call`; an error goes on to a C++ host as it is, and is left in
// PendingMessage for any other host, which takes it when nothing of ours is on the
// stack any more. `raised` tells the two apart.
template <typename Call>
unsigned char RunFor(const Call& call, bool& raised) {
  raised = false;
  if (customsconv_raise == nullptr) return call() ? 1 : 0;
  try {
    return call() ? 1 : 0;
  } catch (const Error& error) {
    PendingMessage() = error.text();
  } catch (const std::exception& error) {
    PendingMessage() = error.what();
  }
  raised = true;
  return 0;
}

unsigned char Convert(const customsconv_text& program_dir, const customsconv_text& rules_file,
                      const customsconv_text& xml_file, const customsconv_text& output_dir,
                      bool& raised) {
  const ShortText program = Copy(program_dir);
  const ShortText rules = Copy(rules_file);
  const ShortText xml = Copy(xml_file);
  const ShortText output = Copy(output_dir);
  return RunFor(
      [&] {
        State().host.StartLog(program);
        return State().library.Xml2ArmTi(program, rules, xml, output);
      },
      raised);
}

unsigned char Check(const customsconv_text& program_dir, const customsconv_text& schema_path,
                    const customsconv_text& xml_file, customsconv_lines* errors, bool& raised) {
  const ShortText program = Copy(program_dir);
  const ShortText schemas = Copy(schema_path);
  const ShortText xml = Copy(xml_file);
  return RunFor(
      [&] {
        State().host.StartLog(program);
        HostLines lines(errors);
        return State().library.CheckXsd(program, schemas, xml, lines);
      },
      raised);
}

void RaisePending() { customsconv_raise(PendingMessage().data(), PendingMessage().size()); }

}  // namespace
}  // namespace customsconv

extern "C" {

__attribute__((visibility("default"))) unsigned char CUSTOMSCONV_CALL
Xml2ArmTi(const customsconv_text* program_dir, const customsconv_text* rules_file,
          const customsconv_text* xml_file, const customsconv_text* output_dir) {
  bool raised = false;
  const unsigned char result =
      customsconv::Convert(*program_dir, *rules_file, *xml_file, *output_dir, raised);
  if (raised) customsconv::RaisePending();
  return result;
}

__attribute__((visibility("default"))) unsigned char CUSTOMSCONV_CALL
CheckXSD(const customsconv_text* program_dir, const customsconv_text* schema_path,
         const customsconv_text* xml_file, customsconv_lines* errors) {
  bool raised = false;
  const unsigned char result =
      customsconv::Check(*program_dir, *schema_path, *xml_file, errors, raised);
  if (raised) customsconv::RaisePending();
  return result;
}

}  // extern "C"
