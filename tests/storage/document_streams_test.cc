#include "storage/document_streams.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\A.DOC";
constexpr const char* kSignature = "KD 1.0";

TEST(TDocWriteStream, FramesStringsByTheirLength) {
  const struct {
    std::string text;
    std::string prefix;
  } cases[] = {
      {"", std::string(2, '\0')},
      {"abc", std::string("\x03\0", 2)},
      {std::string(65534, 'x'), "\xFE\xFF"},
      {std::string(65535, 'x'), std::string("\xFF\xFF\xFF\xFF\0\0", 6)},
      {std::string(70000, 'x'), std::string("\xFF\xFF\x70\x11\x01\0", 6)},
  };
  for (const auto& c : cases) {
    FakeHost host;
    host.files.AddFolder("C:\\");
    TDocWriteStream(host.files, kFile, kSignature, kModeCreate).WriteLongText(c.text);
    EXPECT_TRUE(host.files[kFile].bytes() == kSignature + c.prefix + c.text) << c.text.size();
    std::string text;
    TDocReadStream(host.files, kFile, kSignature).ReadLongText(text);
    EXPECT_TRUE(text == c.text) << c.text.size();
  }
}

TEST(TDocWriteStream, AddsToAFileWithItsSignature) {
  FakeHost host;
  host.files.AddFolder("C:\\");
  TDocWriteStream(host.files, kFile, kSignature, kModeCreate).WriteShortText(std::string(300, 's'));
  {
    TDocWriteStream stream(host.files, kFile, kSignature, kModeReadWrite);
    stream.Seek(0, SeekOrigin::kEnd);
    stream.WriteShortText("end");
    stream.Write("\x01\x02", 2);
  }
  TDocReadStream stream(host.files, kFile, kSignature);
  ShortText text;
  stream.ReadShortText(text);
  EXPECT_EQ(text, std::string(255, 's'));
  stream.ReadShortText(text);
  EXPECT_EQ(text, "end");
  char raw[3];
  EXPECT_EQ(stream.Read(raw, 3), 2u);
  EXPECT_EQ(raw[1], '\x02');
}

TEST(DocumentStreams, RefuseAnotherSignature) {
  const struct {
    const char* bytes;
    const char* found;
  } cases[] = {{"KD 0.9 rest", "KD 0.9"}, {"KD", "KD"}, {"", ""}};
  for (const auto& c : cases) {
    FakeHost host;
    host.files[kFile] = c.bytes;
    EXPECT_EQ(Utf8(ErrorOf([&] { TDocReadStream(host.files, kFile, kSignature); })),
              "Старая версия C:\\A.DOC : \"" + std::string(c.found) + "\" вместо \"KD 1.0\"");
    EXPECT_EQ(
        Utf8(ErrorOf([&] { TDocWriteStream(host.files, kFile, kSignature, kModeReadWrite); })),
        "Не та сигнатура файла :" + std::string(c.found) + " вместо KD 1.0");
    EXPECT_EQ(host.files.open_streams(), 0u);
  }
}

TEST(TDocReadStream, RefusesLengthsBeyondTheFile) {
  const std::string four_gb("\xFF\xFF\xFF\xFF\xFF\xFF", 6);
  const struct {
    const char* what;
    std::string bytes;
    bool short_text;
  } cases[] = {
      {"4 GB", four_gb, false},
      {"4 GB and some", four_gb + "abc", false},
      {"one byte too many", std::string("\x03\0", 2) + "ab", false},
      {"half a length", "\x03", false},
      {"no second length", "\xFF\xFF\x01", false},
      {"short text",
       "\x03"
       "ab",
       true},
      {"no length at all", "", true},
  };
  for (const auto& c : cases) {
    FakeHost host;
    host.files[kFile] = kSignature + c.bytes;
    TDocReadStream stream(host.files, kFile, kSignature);
    std::string text;
    ShortText short_text;
    EXPECT_EQ(Utf8(ErrorOf([&] {
                c.short_text ? stream.ReadShortText(short_text) : stream.ReadLongText(text);
              })),
              "Не могу прочитать файл C:\\A.DOC: файл кончается внутри строки")
        << c.what;
    EXPECT_LT(text.capacity(), 100u) << c.what;
  }
}

}  // namespace
}  // namespace customsconv
