#ifndef CUSTOMSCONV_CLI_EXIT_STATUS_H_
#define CUSTOMSCONV_CLI_EXIT_STATUS_H_

namespace customsconv::cli {

// What the program ends with, for scripts.
enum class ExitStatus {
  kDone = 0,
  kNegative =
      1,       // done, with a negative result: the function returned false, a document is invalid
  kUsage = 2,  // wrong arguments; nothing was touched
  kError = 3,  // an error that the library would raise to its host
  kInterrupted = 130,
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_EXIT_STATUS_H_
