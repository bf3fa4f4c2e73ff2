// Calls both exports as the 32-bit hosts do: the first three arguments in EAX, EDX and ECX,
// the fourth on the stack, from where the function removes it; the answer in AL; EBX, ESI, EDI
// and EBP unchanged; the stack at any multiple of four. Prints each call and what came of it.
#include <fenv.h>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "customsconv.h"
#include "recorded_functions.h"

extern "C" {

// What MakeRegisterCall is told and what it found; its assembly counts the offsets.
struct RegisterCall {
  const void* function = nullptr;            // 0
  const void* arguments[4] = {};             // 4, 8, 12, 16
  std::uint32_t stack_shift = 0;             // 20: bytes by which the stack is moved first
  std::uint32_t eax = 0;                     // 24
  std::uint32_t kept[4] = {};                // 28: EBX, ESI, EDI, EBP after the call
  std::uint32_t esp_before = 0;              // 44: before the fourth argument was pushed
  std::uint32_t esp_after = 0, own_esp = 0;  // 48, 52
} register_call;

void MakeRegisterCall();

}  // extern "C"

static_assert(sizeof(RegisterCall) == 56, "a 32-bit program");

asm(R"(
  .text
MakeRegisterCall:
  pushl %ebp; pushl %ebx; pushl %esi; pushl %edi
  movl %esp, register_call+52
  subl register_call+20, %esp
  movl %esp, register_call+44
  pushl register_call+16
  movl register_call+4, %eax; movl register_call+8, %edx; movl register_call+12, %ecx
  movl $0x0B0B0B0B, %ebx; movl $0x51515151, %esi
  movl $0xD1D1D1D1, %edi; movl $0xB9B9B9B9, %ebp
  call *register_call+0
  movl %eax, register_call+24
  movl %ebx, register_call+28; movl %esi, register_call+32
  movl %edi, register_call+36; movl %ebp, register_call+40
  movl %esp, register_call+48
  movl register_call+52, %esp
  popl %edi; popl %esi; popl %ebx; popl %ebp
  ret
)");

namespace {

using customsconv::Reply;
using customsconv::TheRecording;

constexpr std::uint32_t kSentinels[4] = {0x0B0B0B0B, 0x51515151, 0xD1D1D1D1, 0xB9B9B9B9};

std::jmp_buf caller;
std::string raised;

customsconv_text Text(const std::string& bytes) {
  customsconv_text text = {};
  text.length = static_cast<unsigned char>(bytes.size());
  std::memcpy(text.bytes, bytes.data(), bytes.size());
  return text;
}

// A host's list with room for what is appended.
struct HostList : customsconv_lines {
  std::string lines;
};

void Append(customsconv_lines* list, const char* line, size_t size) {
  static_cast<HostList*>(list)->lines.append(" + ").append(line, size);
}

std::string Report() {
  const auto& call = register_call;
  const auto& recording = TheRecording();
  std::string text = recording.call + " AL=" + std::to_string(call.eax & 0xFF);
  text += call.esp_after == call.esp_before ? ", ESP back" : ", ESP NOT BACK";
  const bool kept = std::memcmp(call.kept, kSentinels, sizeof kSentinels) == 0;
  text += kept ? ", EBX ESI EDI EBP back" : ", REGISTERS CHANGED";
  if (!recording.stack_aligned) text += ", STACK NOT ALIGNED";
  if (recording.floating_point_traps != 0) text += ", HOST'S TRAPS INSIDE";
  if (fegetexcept() != FE_INVALID) text += ", HOST'S TRAPS LOST";
  return text;
}

template <typename Function>
std::string Call(Function function, const std::string (&texts)[3], const void* fourth, Reply reply,
                 std::uint32_t stack_shift) {
  const customsconv_text first = Text(texts[0]), second = Text(texts[1]), third = Text(texts[2]);
  TheRecording() = {reply, "", false, -1};
  register_call = {.function = reinterpret_cast<const void*>(function),
                   .arguments = {&first, &second, &third, fourth},
                   .stack_shift = stack_shift};
  if (setjmp(caller) != 0) return TheRecording().call + " raised: " + raised;
  MakeRegisterCall();
  return Report();
}

int Expect(const std::string& found, const std::string& expected) {
  std::printf("%s\n", found.c_str());
  if (found != expected) std::printf("  not: %s\n", expected.c_str());
  return found == expected ? 0 : 1;
}

}  // namespace

void customsconv_raise(const char* message, size_t size) {
  raised.assign(message, size);
  std::longjmp(caller, 1);
}

int main() {
  feenableexcept(FE_INVALID);
  const std::string files[3] = {"C:\\PROG\\", "C:\\R.TXT", "C:\\A.XML"};
  const std::string longest[3] = {std::string(255, 'a'), "", std::string(255, 'c')};
  const std::string all_back = ", ESP back, EBX ESI EDI EBP back";
  const customsconv_text output = Text("C:\\OUT\\");
  int faults = 0;
  for (const std::uint32_t shift : {0u, 4u, 8u, 12u}) {
    std::printf("stack moved by %u bytes\n", unsigned{shift});
    faults += Expect(Call(Xml2ArmTi, files, &output, Reply::kTrue, shift),
                     "Xml2ArmTi|C:\\PROG\\|C:\\R.TXT|C:\\A.XML|C:\\OUT\\ AL=1" + all_back);
    HostList list{{Append}, "kept line"};
    faults += Expect(
        Call(CheckXSD, files, &list, Reply::kFalse, shift) + ", list: " + list.lines,
        "CheckXSD|C:\\PROG\\|C:\\R.TXT|C:\\A.XML AL=0" + all_back + ", list: kept line + a line");
  }
  faults += Expect(Call(Xml2ArmTi, longest, &output, Reply::kFalse, 4),
                   "Xml2ArmTi|" + longest[0] + "||" + longest[2] + "|C:\\OUT\\ AL=0" + all_back);
  faults += Expect(Call(Xml2ArmTi, files, &output, Reply::kError, 4),
                   "Xml2ArmTi|C:\\PROG\\|C:\\R.TXT|C:\\A.XML|C:\\OUT\\ raised: no kord.ini");
  return faults;
}
