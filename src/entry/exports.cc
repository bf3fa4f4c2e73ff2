#include <cfenv>
#include <exception>
#include <string>
#include <string_view>

#include "base/short_text.h"
#include "customsconv.h"
#include "entry/exported_functions.h"
#include "entry/failure_text.h"

// Defined by hosts that are not written in C++; unresolved in all others.
extern "C" void customsconv_raise(const char* message, size_t size) __attribute__((weak));

#if defined(__i386__)
// Hosts of the register convention keep the stack at multiples of four bytes, our code
// counts on sixteen.
#define CUSTOMSCONV_EXPORT __attribute__((visibility("default"), force_align_arg_pointer))
#else
#define CUSTOMSCONV_EXPORT __attribute__((visibility("default")))
#endif

namespace customsconv {
namespace {

// One byte holds the length: nothing is lost.
ShortText Copy(const customsconv_text* text) { return ShortText::Cut({text->bytes, text->length}); }

// The host's list, reached through the function that it gave.
class HostLines : public LineList {
 public:
  explicit HostLines(customsconv_lines* lines) : lines_(lines) {}
  void Append(std::string_view line) override { lines_->append(lines_, line.data(), line.size()); }

 private:
  customsconv_lines* lines_;
};

// Floating point as this library and those below it expect it. Some hosts (Pascal ones among
// them) let an invalid operation raise a signal, which a computation with NaN would be.
class QuietFloatingPoint {
 public:
  QuietFloatingPoint() { std::feholdexcept(&of_the_host_); }
  ~QuietFloatingPoint() { std::fesetenv(&of_the_host_); }
  QuietFloatingPoint(const QuietFloatingPoint&) = delete;
  QuietFloatingPoint& operator=(const QuietFloatingPoint&) = delete;

 private:
  std::fenv_t of_the_host_;
};

// The message that a host's own error carries; it outlives the call.
std::string& PendingMessage() {
  static std::string message;
  return message;
}

enum class Outcome : unsigned char { kFalse = 0, kTrue = 1, kRaised };

// Runs `call`; an error goes on to a C++ host as it is, and is left in
// PendingMessage for any other host, which takes it when nothing of ours is on the
// stack any more.
template <typename Call>
Outcome RunFor(const Call& call) {
  const QuietFloatingPoint quiet;
  if (customsconv_raise == nullptr) return call() ? Outcome::kTrue : Outcome::kFalse;
  try {
    return call() ? Outcome::kTrue : Outcome::kFalse;
  } catch (const std::exception& error) {
    PendingMessage() = FailureText(error);
  }
  return Outcome::kRaised;
}

Outcome Convert(const customsconv_text* program_dir, const customsconv_text* rules_file,
                const customsconv_text* xml_file, const customsconv_text* output_dir) {
  const ShortText program = Copy(program_dir);
  const ShortText rules = Copy(rules_file);
  const ShortText xml = Copy(xml_file);
  const ShortText output = Copy(output_dir);
  return RunFor([&] { return exported::Xml2ArmTi(program, rules, xml, output); });
}

Outcome Check(const customsconv_text* program_dir, const customsconv_text* schema_path,
              const customsconv_text* xml_file, customsconv_lines* errors) {
  const ShortText program = Copy(program_dir);
  const ShortText schemas = Copy(schema_path);
  const ShortText xml = Copy(xml_file);
  HostLines lines(errors);
  return RunFor([&] { return exported::CheckXsd(program, schemas, xml, lines); });
}

// The export's result; does not return when an error waits for the host.
unsigned char Answer(Outcome outcome) {
  if (outcome != Outcome::kRaised) return static_cast<unsigned char>(outcome);
  customsconv_raise(PendingMessage().data(), PendingMessage().size());
  return 0;
}

}  // namespace
}  // namespace customsconv

extern "C" {

CUSTOMSCONV_EXPORT unsigned char CUSTOMSCONV_CALL Xml2ArmTi(const customsconv_text* program_dir,
                                                            const customsconv_text* rules_file,
                                                            const customsconv_text* xml_file,
                                                            const customsconv_text* output_dir) {
  return customsconv::Answer(customsconv::Convert(program_dir, rules_file, xml_file, output_dir));
}

CUSTOMSCONV_EXPORT unsigned char CUSTOMSCONV_CALL CheckXSD(const customsconv_text* program_dir,
                                                           const customsconv_text* schema_path,
                                                           const customsconv_text* xml_file,
                                                           customsconv_lines* errors) {
  return customsconv::Answer(customsconv::Check(program_dir, schema_path, xml_file, errors));
}

}  // extern "C"
