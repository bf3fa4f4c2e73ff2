#include "recorded_functions.h"

#include <fenv.h>

#include <cstdint>

#include "base/error.h"
#include "entry/exported_functions.h"

namespace customsconv {

Recording& TheRecording() {
  static Recording recording;
  return recording;
}

namespace {

// A function that finds the stack as compiled code expects it has its frame, below
// the return address, eight bytes off a multiple of sixteen.
[[gnu::noinline]] bool StackIsAligned() {
  return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) % 16 == 8;
}

bool Recorded(std::string function, std::initializer_list<std::string_view> arguments) {
  Recording& recording = TheRecording();
  recording.call = std::move(function);
  for (const std::string_view argument : arguments) recording.call.append("|").append(argument);
  recording.stack_aligned = StackIsAligned();
  recording.floating_point_traps = fegetexcept();
  if (recording.reply == Reply::kError) throw Error("no kord.ini");
  return recording.reply == Reply::kTrue;
}

}  // namespace

namespace exported {

bool Xml2ArmTi(const ShortText& program_dir, const ShortText& rules_file, const ShortText& xml_file,
               const ShortText& output_dir) {
  return Recorded("Xml2ArmTi", {program_dir, rules_file, xml_file, output_dir});
}

bool CheckXsd(const ShortText& program_dir, const ShortText& schema_path, const ShortText& xml_file,
              LineList& errors) {
  errors.Append("a line");
  return Recorded("CheckXSD", {program_dir, schema_path, xml_file});
}

}  // namespace exported
}  // namespace customsconv
