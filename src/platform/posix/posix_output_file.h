#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_OUTPUT_FILE_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_OUTPUT_FILE_H_

#include <cstddef>
#include <memory>
#include <string>

#include "platform/output_file.h"
#include "platform/posix/posix_pending_file.h"

namespace customsconv::posix {

// Gathers what is written and hands it to the temporary file in large pieces.
class PosixOutputFile : public OutputFile {
 public:
  explicit PosixOutputFile(std::unique_ptr<PosixPendingFile> file) : file_(std::move(file)) {}

  void Write(std::string_view bytes) override;
  [[nodiscard]] std::string SystemName() const override { return file_->temporary(); }
  void Harden() override;
  void Place() override { file_->Place(); }
  bool Settle() override { return file_->Settle(); }

 private:
  void Pass(std::string_view bytes);

  std::unique_ptr<PosixPendingFile> file_;
  std::size_t written_ = 0;
  std::string gathered_;
};

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_OUTPUT_FILE_H_
