// The bytes that docs/streams.md shows are the bytes that the streams write and read.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "streams/document_streams.h"
#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kNote = "C:\\NOTE.BIN";
constexpr const char* kOther = "C:\\OTHER.BIN";
constexpr const char* kSignature = "NOTE 1.0";

// Bytes of the page's block "```hex NAME"; what stands behind "|" is a remark.
std::string BytesShown(const std::string& name) {
  std::ifstream page(CUSTOMSCONV_SOURCE_DIR "/docs/streams.md");
  std::string line;
  while (std::getline(page, line) && line != "```hex " + name) {
  }
  std::string bytes;
  while (std::getline(page, line) && line != "```") {
    std::istringstream digits(line.substr(0, line.find('|')));
    for (std::string byte; digits >> byte;) {
      bytes += static_cast<char>(std::stoi(byte, nullptr, 16));
    }
  }
  return bytes;
}

TEST(StreamsPage, ShowsWhatIsWrittenAndRead) {
  FakeHost host;
  host.files[kNote] = "";  // with it the folder is there
  {
    TDocWriteStream stream(host.files, kNote, kSignature, kModeCreate);
    stream.WriteShortText(Win("Товар"));
    stream.WriteLongText("AB");
    stream.WriteLongText("");
    stream.Write("\x02\x01\0\0", 4);
  }
  EXPECT_EQ(host.files[kNote], BytesShown("note.bin"));
  TDocReadStream document(host.files, kNote, kSignature);
  ShortText goods;
  std::string letters, nothing = "something";
  document.ReadShortText(goods);
  document.ReadLongText(letters);
  document.ReadLongText(nothing);
  EXPECT_EQ(Utf8(goods) + "," + letters + "," + nothing, "Товар,AB,");

  TDocWriteStream(host.files, kOther, "", kModeCreate).WriteLongText(std::string(65535, 'x'));
  EXPECT_EQ(host.files.Read(kOther).substr(0, 8), BytesShown("long.bin"));
  host.files[kOther] = BytesShown("lines.bin");
  TReadStream lines(host.files, kOther, kModeRead);
  std::string read;
  for (std::string line; !lines.AtEnd(); read += "<" + line + ">") lines.ReadLnLong(line);
  EXPECT_EQ(read, "<A><B><C\nD>");
}

}  // namespace
}  // namespace customsconv
