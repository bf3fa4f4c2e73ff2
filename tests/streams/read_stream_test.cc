#include "streams/read_stream.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\A.TXT";
constexpr std::size_t kBuffer = TReadStream::kBufferSize;

struct World {
  explicit World(std::string_view bytes, FileMode mode = kModeRead)
      : stream((host.files.Put(kFile, bytes), host.files), kFile, mode) {}
  FakeHost host;
  TReadStream stream;
};

// Bytes that tell their position.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i % 251);
  return bytes;
}

TEST(TReadStream, LinesEndAtCarriageReturns) {
  using Texts = std::vector<std::string>;
  const std::string full(kBuffer, 'f'), less1 = full.substr(1), less2 = full.substr(2);
  const std::pair<std::string, Texts> cases[] = {
      {"A\r\nB\rC\nD", {"A", "B", "C\nD"}},
      {"\r\n\r\r\n\n", {"", "", "", "\n"}},
      {"", {}},
      {full + full + "x\r\ny", {full + full + "x", "y"}},
      {less1 + "\r\ny", {less1, "y"}},  // the buffer ends between CR and LF
      {less2 + "\r\ny\r\n", {less2, "y"}},
      {less2 + "\r\n", {less2}},  // a file of one whole buffer
      {full, {full}}};
  for (const auto& [bytes, lines] : cases) {
    World world(bytes);
    Texts read;
    while (!world.stream.AtEnd()) world.stream.ReadLnLong(read.emplace_back());
    EXPECT_TRUE(read == lines) << bytes.size() << " bytes";
  }
}

TEST(TReadStream, ShortLinesDropTheirRest) {
  World world(std::string(300, 'a') + "\r\n;$x\r\nabcdef\r\n");
  ShortText all, section, limited;
  world.stream.ReadLnShort(all);
  world.stream.ReadLnSection(section);
  world.stream.ReadLnShort(limited, 4);
  EXPECT_EQ(all.str() + section.str() + limited.str(), std::string(255, 'a') + ";$xabcd");
}

TEST(TReadStream, ReadsInPiecesOfAnySize) {
  const std::string bytes = Pattern(5 * kBuffer + 7);
  for (const std::size_t piece :
       {std::size_t{1000}, kBuffer - 1, kBuffer, kBuffer + 1, 3 * kBuffer + 5, 6 * kBuffer}) {
    World world(bytes);
    std::string read, chunk(piece, '\0');
    while (!world.stream.AtEnd()) {
      ASSERT_EQ(world.stream.Position(), static_cast<std::int64_t>(read.size()));
      read.append(chunk, 0, world.stream.Read(chunk.data(), piece));
    }
    EXPECT_TRUE(read == bytes) << "pieces of " << piece;
  }
}

TEST(TReadStream, SeeksInsideAndOutsideTheBuffer) {
  const std::string bytes = Pattern(3 * kBuffer);
  World world(bytes);
  const auto expect_at = [&](std::int64_t position) {
    char byte = 0;
    ASSERT_EQ(world.stream.Read(&byte, 1), 1u);
    EXPECT_EQ(byte, bytes[static_cast<std::size_t>(position)]) << "at " << position;
  };
  constexpr auto kLength = static_cast<std::int64_t>(kBuffer);
  for (const std::int64_t place : {std::int64_t{5}, 2 * kLength + 1, kLength, kLength - 1}) {
    EXPECT_EQ(world.stream.Seek(place, SeekOrigin::kBegin), place);
    expect_at(place);
    EXPECT_EQ(world.stream.Seek(-4, SeekOrigin::kCurrent), place - 3);
    expect_at(place - 3);
  }
  EXPECT_EQ(world.stream.Seek(-1, SeekOrigin::kEnd), 3 * kLength - 1);
  expect_at(3 * kLength - 1);
  EXPECT_TRUE(world.stream.AtEnd());
}

TEST(TReadStream, WritesLinesBehindTheFile) {
  World world("first\r\n", kModeReadWrite);
  world.stream.WriteLnLong(std::string(300, 'l'));
  world.stream.WriteLnShort(std::string(300, 's'));
  const std::string added = std::string(300, 'l') + "\r\n" + std::string(255, 's') + "\r\n";
  EXPECT_EQ(world.host.files[kFile], "first\r\n" + added);
}

}  // namespace
}  // namespace customsconv
