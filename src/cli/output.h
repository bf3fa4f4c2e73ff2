#ifndef CUSTOMSCONV_CLI_OUTPUT_H_
#define CUSTOMSCONV_CLI_OUTPUT_H_

#include <string>
#include <string_view>

namespace customsconv::cli {

// What the program ends with, for scripts.
enum class ExitStatus {  // the worse, the greater
  kDone = 0,
  kNegative = 1,  // done, with a negative result: a file was not converted, a document is invalid
  kUsage = 2,     // wrong arguments; nothing was touched
  kError = 3,     // an error that the library would raise to its host
  kInterrupted = 130,
};

// Where the program prints: results to one stream, remarks to the other. Bytes as given; texts
// for people are UTF-8.
class Output {
 public:
  virtual ~Output() = default;
  virtual void Result(std::string_view bytes) = 0;
  virtual void Remark(std::string_view bytes) = 0;
  // What was printed is on its way now, whatever becomes of the program.
  virtual void Flush() {}
  // A person looks at the remarks and can answer.
  [[nodiscard]] virtual bool IsTerminal() const = 0;
  // One line of the person's answer, without its end; empty at the end of the input.
  virtual bool ReadAnswer(std::string& line) = 0;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_OUTPUT_H_
