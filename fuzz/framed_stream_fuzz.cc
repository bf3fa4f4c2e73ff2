// Reads any bytes as a document file: strings in both framings and lines, in an
// order that the bytes choose. Whatever was read back from a file that was framed by
// the writer must be the same text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "streams/document_streams.h"
#include "support/fake_host.h"

using namespace customsconv;

namespace {

constexpr const char* kFile = "C:\\A.DOC";
constexpr const char* kSignature = "FZ";

void ReadEverything(const Files& files, std::string_view order) {
  TDocReadStream stream(files, kFile, kSignature);
  ShortText short_text;
  std::string text;
  for (const char step : order) {
    switch (static_cast<unsigned char>(step) % 5) {
      case 0:
        stream.ReadShortText(short_text);
        break;
      case 1:
        stream.ReadLongText(text);
        break;
      case 2:
        stream.ReadLnShort(short_text, static_cast<unsigned char>(step));
        break;
      case 3:
        stream.ReadLnLong(text);
        break;
      default:
        stream.Seek(static_cast<signed char>(step), SeekOrigin::kCurrent);
        break;
    }
  }
}

void RequireRoundTrip(FakeHost& host, std::string_view text) {
  {
    TDocWriteStream writer(host.files, kFile, kSignature, kModeCreate);
    writer.WriteLongText(text);
    writer.WriteShortText(text);
  }
  TDocReadStream reader(host.files, kFile, kSignature);
  std::string long_text;
  ShortText short_text;
  reader.ReadLongText(long_text);
  reader.ReadShortText(short_text);
  if (long_text != text || short_text != CutToShort(text) || !reader.AtEnd()) std::abort();
}

}  // namespace

// The first byte tells how many of the next ones are the order of reading.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (bytes.empty()) return 0;
  const std::size_t steps = data[0];
  bytes.remove_prefix(1);
  const std::string_view order = bytes.substr(0, steps);
  bytes.remove_prefix(order.size());
  FakeHost host;
  host.files[kFile] = kSignature + std::string(bytes);
  try {
    ReadEverything(host.files, order);
  } catch (const FileError&) {
    // A length beyond the file's end, or a seek in front of its start.
  }
  RequireRoundTrip(host, bytes);
  return 0;
}
