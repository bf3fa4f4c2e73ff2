#include <gtest/gtest.h>

#include "streams/document_streams.h"
#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

using std::string_literals::operator""s;

constexpr const char* kFile = "C:\\A.TXT";
constexpr const char* kSignature = "KD 1.0";
constexpr std::size_t kBuffer = TReadStream::kBufferSize;

struct World {
  explicit World(std::string_view bytes, FileMode mode = kModeRead)
      : stream((host.files.Put(kFile, bytes), host.files), kFile, mode) {}
  FakeHost host;
  TReadStream stream;
};

// Bytes that tell their position.
std::string Pattern(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i % 251);
  return bytes;
}

TEST(TReadStream, LinesEndAtCarriageReturns) {
  const std::string full(kBuffer, 'f'), less1 = full.substr(1), less2 = full.substr(2);
  const std::pair<std::string, std::vector<std::string>> cases[] = {
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
    std::vector<std::string> read;
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
  constexpr std::int64_t kLength = kBuffer;
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

TEST(DocumentStreams, FrameStringsByTheirLength) {
  const std::pair<std::size_t, std::string> cases[] = {{0, "\0\0"s},
                                                       {3, "\x03\0"s},
                                                       {65534, "\xFE\xFF"},
                                                       {65535, "\xFF\xFF\xFF\xFF\0\0"s},
                                                       {70000, "\xFF\xFF\x70\x11\x01\0"s}};
  for (const auto& [size, prefix] : cases) {
    FakeHost host;
    host.files[kFile] = "";
    TDocWriteStream(host.files, kFile, kSignature, kModeCreate)
        .WriteLongText(std::string(size, 'x'));
    EXPECT_TRUE(host.files[kFile] == kSignature + prefix + std::string(size, 'x')) << size;
    {
      TDocWriteStream more(host.files, kFile, kSignature, kModeReadWrite);
      more.Seek(0, SeekOrigin::kEnd);
      more.WriteShortText(std::string(300, 's'));
    }
    TDocReadStream stream(host.files, kFile, kSignature);
    std::string text;
    ShortText short_text;
    stream.ReadLongText(text);
    stream.ReadShortText(short_text);
    EXPECT_TRUE(text == std::string(size, 'x') && short_text == std::string(255, 's')) << size;
  }
}

TEST(DocumentStreams, RefuseAnotherSignature) {
  for (const std::string found : {"KD 0.9", "KD", ""}) {
    FakeHost host;
    host.files[kFile] = found;
    EXPECT_EQ(Utf8(ErrorOf([&] { TDocReadStream(host.files, kFile, kSignature); })),
              "Старая версия C:\\A.TXT : \"" + found + "\" вместо \"KD 1.0\"");
    EXPECT_EQ(
        Utf8(ErrorOf([&] { TDocWriteStream(host.files, kFile, kSignature, kModeReadWrite); })),
        "Не та сигнатура файла :" + found + " вместо KD 1.0");
  }
}

TEST(TDocReadStream, RefusesLengthsBeyondTheFile) {
  for (const std::string& bytes :
       {"\xFF\xFF\xFF\xFF\xFF\xFFz"s, "\x04\0ab"s, "\xFF\xFF\x01"s, ""s}) {
    FakeHost host;
    host.files[kFile] = kSignature + bytes;
    TDocReadStream stream(host.files, kFile, kSignature);
    std::string text;
    EXPECT_EQ(Utf8(ErrorOf([&] { stream.ReadLongText(text); })),
              "Не могу прочитать файл C:\\A.TXT: файл кончается внутри строки");
    EXPECT_LT(text.capacity(), 100u) << "nothing was allocated";
    ShortText short_text;
    stream.Seek(-static_cast<std::int64_t>(bytes.size()), SeekOrigin::kEnd);
    EXPECT_NE(ErrorOf([&] { stream.ReadShortText(short_text); }), kNoError);
  }
}

}  // namespace
}  // namespace customsconv
