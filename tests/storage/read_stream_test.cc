#include "storage/read_stream.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\A.TXT";
constexpr std::size_t kBuffer = TReadStream::kBufferSize;

std::vector<std::string> LinesOf(const std::string& bytes) {
  FakeHost host;
  host.files[kFile] = bytes;
  TReadStream stream(host.files, kFile, kModeRead);
  std::vector<std::string> lines;
  while (!stream.AtEnd()) stream.ReadLnLong(lines.emplace_back());
  return lines;
}

// Bytes that tell their position.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i % 251);
  return bytes;
}

TEST(TReadStream, LinesEndAtCarriageReturns) {
  using Texts = std::vector<std::string>;
  const std::string full(kBuffer, 'f');
  const struct {
    const char* what;
    std::string bytes;
    Texts lines;
  } cases[] = {
      {"an LF alone belongs to the line", "A\r\nB\rC\nD", {"A", "B", "C\nD"}},
      {"empty lines", "\r\n\r\r\n\n", {"", "", "", "\n"}},
      {"no bytes", "", {}},
      {"a line over several buffers", full + full + "x\r\ny", {full + full + "x", "y"}},
      {"CR last in the buffer, LF first in the next",
       full.substr(1) + "\r\ny",
       {full.substr(1), "y"}},
      {"CR LF last in the buffer", full.substr(2) + "\r\ny\r\n", {full.substr(2), "y"}},
      {"a file of one whole buffer", full.substr(2) + "\r\n", {full.substr(2)}},
      {"the same without a line end", full, {full}},
  };
  for (const auto& c : cases) EXPECT_EQ(LinesOf(c.bytes), c.lines) << c.what;
}

TEST(TReadStream, ShortLinesDropTheirRest) {
  FakeHost host;
  host.files[kFile] = std::string(300, 'a') + "\r\n;$x\r\nabcdef\r\nlast";
  TReadStream stream(host.files, kFile, kModeRead);
  ShortText line("old");
  stream.ReadLnShort(line);
  EXPECT_EQ(line, std::string(255, 'a'));
  stream.ReadLnSection(line);
  EXPECT_EQ(line, ";$x");
  stream.ReadLnShort(line, 4);
  EXPECT_EQ(line, "abcd");
  stream.ReadLnShort(line);
  EXPECT_EQ(line, "last");
  stream.ReadLnShort(line);
  EXPECT_TRUE(line.empty() && stream.AtEnd());
}

TEST(TReadStream, ReadsInPiecesOfAnySize) {
  const std::string bytes = Pattern(5 * kBuffer + 7);
  for (const std::size_t piece : {std::size_t{1000}, kBuffer - 1, kBuffer, kBuffer + 1, 2 * kBuffer,
                                  3 * kBuffer + 5, 6 * kBuffer}) {
    FakeHost host;
    host.files[kFile] = bytes;
    TReadStream stream(host.files, kFile, kModeRead);
    std::string read, chunk(piece, '\0');
    while (!stream.AtEnd()) {
      ASSERT_EQ(stream.Position(), static_cast<std::int64_t>(read.size()));
      read.append(chunk, 0, stream.Read(chunk.data(), piece));
    }
    EXPECT_TRUE(read == bytes) << "pieces of " << piece;
    EXPECT_EQ(stream.Read(chunk.data(), piece), 0u);
  }
}

TEST(TReadStream, SeeksInsideAndOutsideTheBuffer) {
  const std::string bytes = Pattern(3 * kBuffer);
  FakeHost host;
  host.files[kFile] = bytes;
  TReadStream stream(host.files, kFile, kModeRead);
  constexpr auto kLength = static_cast<std::int64_t>(kBuffer);
  const auto end = static_cast<std::int64_t>(bytes.size());
  const struct {
    std::int64_t offset;
    SeekOrigin origin;
    std::int64_t position;
  } cases[] = {
      {5, SeekOrigin::kBegin, 5},          {0, SeekOrigin::kCurrent, 6},
      {-3, SeekOrigin::kCurrent, 4},       {2 * kLength + 1, SeekOrigin::kBegin, 2 * kLength + 1},
      {-1, SeekOrigin::kEnd, end - 1},     {kLength, SeekOrigin::kBegin, kLength},
      {-kLength, SeekOrigin::kCurrent, 1}, {0, SeekOrigin::kBegin, 0},
  };
  for (const auto& c : cases) {
    ASSERT_EQ(stream.Seek(c.offset, c.origin), c.position);
    char byte = 0;
    ASSERT_EQ(stream.Read(&byte, 1), 1u);
    EXPECT_EQ(byte, bytes[static_cast<std::size_t>(c.position)]) << "at " << c.position;
  }
  EXPECT_EQ(stream.Seek(0, SeekOrigin::kEnd), end);
  EXPECT_TRUE(stream.AtEnd());
}

TEST(TReadStream, WritesLinesBehindTheFile) {
  FakeHost host;
  host.files[kFile] = "first\r\n";
  {
    TReadStream stream(host.files, kFile, kModeReadWrite);
    stream.WriteLnLong(std::string(300, 'l'));
    stream.WriteLnShort(std::string(300, 's'));
    EXPECT_TRUE(stream.AtEnd());
    stream.Seek(0, SeekOrigin::kBegin);
    std::string line;
    stream.ReadLnLong(line);
    EXPECT_EQ(line, "first");
  }
  EXPECT_EQ(host.files[kFile],
            "first\r\n" + std::string(300, 'l') + "\r\n" + std::string(255, 's') + "\r\n");
  const TReadStream created(host.files, "C:\\NEW.TXT", kModeCreate);
  EXPECT_EQ(host.files["C:\\NEW.TXT"], "");
  EXPECT_NE(ErrorOf([&] { TReadStream(host.files, "C:\\NO.TXT", kModeRead); }).find("C:\\NO.TXT"),
            std::string::npos);
}

}  // namespace
}  // namespace customsconv
