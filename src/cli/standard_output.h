#ifndef CUSTOMSCONV_CLI_STANDARD_OUTPUT_H_
#define CUSTOMSCONV_CLI_STANDARD_OUTPUT_H_

#include "cli/output.h"

namespace customsconv::cli {

// The process's own standard streams.
class StandardOutput : public Output {
 public:
  void Result(std::string_view bytes) override;
  void Remark(std::string_view bytes) override;
  void Flush() override;
  [[nodiscard]] bool IsTerminal() const override;
  bool ReadAnswer(std::string& line) override;
  // False when results could not be written (a full disk, a closed pipe).
  [[nodiscard]] bool Finish();
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_STANDARD_OUTPUT_H_
