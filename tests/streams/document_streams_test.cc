#include "streams/document_streams.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

using std::string_literals::operator""s;
constexpr const char* kFile = "C:\\A.DOC";
constexpr const char* kSignature = "KD 1.0";

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
              "Старая версия C:\\A.DOC : \"" + found + "\" вместо \"KD 1.0\"");
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
              "Не могу прочитать файл C:\\A.DOC: файл кончается внутри строки");
    EXPECT_LT(text.capacity(), 100u) << "nothing was allocated";
    ShortText short_text;
    stream.Seek(-static_cast<std::int64_t>(bytes.size()), SeekOrigin::kEnd);
    EXPECT_NE(ErrorOf([&] { stream.ReadShortText(short_text); }), kNoError);
  }
}

}  // namespace
}  // namespace customsconv
