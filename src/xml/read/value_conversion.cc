#include "xml/read/value_conversion.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <new>

#include "base/characters.h"
#include "text/date_format.h"
#include "text/date_forms.h"
#include "xml/read/base64.h"

namespace customsconv {

namespace {

std::string_view ConvertDate(std::string_view value CUSTOMSCONV_LIFETIME_BOUND,
                             std::string& buffer CUSTOMSCONV_LIFETIME_BOUND) {
  constexpr std::string_view kFormat = "YYYY-MM-DD";
  const std::string_view date = Trim(value);
  if (date.size() != kFormat.size() || date[4] != '-') return value;
  if (TextToDateFmtDef(kFormat, date, 0) == 0) return value;
  return buffer = DottedFromYearFirst(date);
}

std::string_view ConvertNumber(std::string_view value CUSTOMSCONV_LIFETIME_BOUND,
                               std::string& buffer CUSTOMSCONV_LIFETIME_BOUND) {
  if (value.find(',') == std::string_view::npos) return value;
  buffer.assign(value);
  std::replace(buffer.begin(), buffer.end(), ',', '.');
  return buffer;
}

// zlib's compressor; freed on destruction.
class Deflater {
 public:
  Deflater() {
    if (deflateInit(&stream_, Z_DEFAULT_COMPRESSION) != Z_OK) throw std::bad_alloc();
  }
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  [[nodiscard]] std::string Compress(std::string_view bytes) {
    constexpr std::size_t kLargestInput = std::size_t{1} << 30;  // zlib counts in 32 bits
    std::string packed;
    do {
      const std::size_t size = std::min(bytes.size(), kLargestInput);
      stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
      stream_.avail_in = static_cast<uInt>(size);
      bytes.remove_prefix(size);
      Run(bytes.empty() ? Z_FINISH : Z_NO_FLUSH, packed);
    } while (!bytes.empty());
    return packed;
  }

 private:
  // Takes in all input, however often the output buffer fills up.
  void Run(int flush, std::string& packed) {
    do {
      stream_.next_out = buffer_.data();
      stream_.avail_out = static_cast<uInt>(buffer_.size());
      deflate(&stream_, flush);
      packed.append(reinterpret_cast<const char*>(buffer_.data()),
                    buffer_.size() - stream_.avail_out);
    } while (stream_.avail_out == 0);
  }

  z_stream stream_{};
  std::array<Bytef, 65536> buffer_;
};

// Content that is no base64 from some point on is packed as far as it got decoded.
std::string_view ConvertBinary(std::string_view value CUSTOMSCONV_LIFETIME_BOUND,
                               std::string& buffer CUSTOMSCONV_LIFETIME_BOUND) {
  std::string bytes(value);
  std::size_t size = 0;
  static_cast<void>(Base64DecodeInPlace(bytes, &size));
  return buffer = Deflater().Compress(std::string_view(bytes).substr(0, size));
}

}  // namespace

std::string_view ConvertXmlValue(std::string_view value, FieldType field_type,
                                 std::string& buffer) {
  switch (field_type) {
    case FieldType::kDate:
      return ConvertDate(value, buffer);
    case FieldType::kNumber:
      return ConvertNumber(value, buffer);
    case FieldType::kBinary:
      return ConvertBinary(value, buffer);
    default:
      return value;
  }
}

}  // namespace customsconv
