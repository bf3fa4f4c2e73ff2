// Gathers what is written into large pieces on its way to the file.

#include "platform/posix/posix_output_file.h"

namespace customsconv::posix {
namespace {

constexpr std::size_t kPiece = 256 * 1024;

}  // namespace

void PosixOutputFile::Write(std::string_view bytes) {
  if (gathered_.size() + bytes.size() > kPiece) {
    Pass(gathered_);
    gathered_.clear();
  }
  if (bytes.size() > kPiece) {
    Pass(bytes);
  } else {
    gathered_ += bytes;
  }
}

void PosixOutputFile::Pass(std::string_view bytes) {
  file_->WriteAt(written_, bytes);
  written_ += bytes.size();
}

void PosixOutputFile::Harden() {
  Pass(gathered_);
  gathered_.clear();
  file_->Harden();
}

}  // namespace customsconv::posix
