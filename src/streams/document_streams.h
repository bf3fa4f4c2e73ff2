#ifndef CUSTOMSCONV_STREAMS_DOCUMENT_STREAMS_H_
#define CUSTOMSCONV_STREAMS_DOCUMENT_STREAMS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "platform/files.h"
#include "streams/read_stream.h"

namespace customsconv {

// The document model's binary files: a signature that tells kind and version,
// then length-prefixed strings and raw values.
inline constexpr std::size_t kMaxSignature = 10;  // what is longer is cut

// Reads such a file, others may read and write it meanwhile.
class TDocReadStream : public TReadStream {
 public:
  // Throws FileError for a file that cannot be opened, and Error naming the file
  // and both signatures when it begins with another one.
  TDocReadStream(const Files& files, std::string_view file_name, std::string_view signature);

  // As read from the file.
  [[nodiscard]] const ShortText& signature() const CUSTOMSCONV_LIFETIME_BOUND { return signature_; }

 private:
  ShortText signature_;
};

// Writes such a file, unbuffered. Errors throw FileError naming the file.
class TDocWriteStream {
 public:
  // kModeCreate starts the file with the signature. Any other mode must allow
  // reading: the file's first bytes are compared, and the writing place is behind
  // them. Throws Error naming both signatures when they differ.
  TDocWriteStream(const Files& files, std::string_view file_name, std::string_view signature,
                  FileMode mode);

  // At most 255 bytes of `text`.
  void WriteShortText(std::string_view text);
  void WriteLongText(std::string_view text);
  // Raw bytes: integers and flags, as the caller lays them out.
  void Write(const void* from, std::size_t count) { stream_->Write(from, count); }
  std::int64_t Seek(std::int64_t offset, SeekOrigin origin) {
    return stream_->Seek(offset, origin);
  }
  [[nodiscard]] const ShortText& signature() const CUSTOMSCONV_LIFETIME_BOUND { return signature_; }

 private:
  ShortText file_name_;
  ShortText signature_;
  std::unique_ptr<FileStream> stream_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_STREAMS_DOCUMENT_STREAMS_H_
