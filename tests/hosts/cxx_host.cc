// The same host in C++: errors of the library are exceptions.
#include <fenv.h>

#include <exception>

#include "c_host.c"  // NOLINT(bugprone-suspicious-include): one host in two languages

static void ConvertInVain(const char* examples, const char* output) {
  try {
    Convert(examples, "rules/program/", output);
  } catch (const std::exception& error) {
    printf("error: %s\n", error.what());
  }
}

int main(int argc, char** argv) {
  // A host that wants to be told of invalid operations gets none of ours and keeps its wish.
  feenableexcept(FE_INVALID | FE_DIVBYZERO);
  const int status = Run(argc, argv);
  return fegetexcept() == (FE_INVALID | FE_DIVBYZERO) ? status : 3;
}
