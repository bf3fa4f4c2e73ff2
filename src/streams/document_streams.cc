// A signature is read at its wanted length and compared as a whole, so an older or newer version of
// the same kind of file is told like a file of another kind.

#include "streams/document_streams.h"

#include <limits>
#include <string>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "streams/string_framing.h"

namespace customsconv {
namespace {

// What stands where a signature of `size` bytes should be; less at the file's end.
template <typename Stream>
ShortText ReadSignature(Stream& stream, std::size_t size) {
  std::string bytes(size, '\0');
  bytes.resize(stream.Read(bytes.data(), size));
  return ShortText::Cut(bytes);  // as `size` says: nothing is lost
}

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace

TDocReadStream::TDocReadStream(const Files& files, std::string_view file_name,
                               std::string_view signature)
    : TReadStream(files, file_name, kModeRead | kShareDenyNone) {
  signature = signature.substr(0, kMaxSignature);
  signature_ = ReadSignature(*this, signature.size());
  if (signature_ == signature) return;
  throw Error(std::string("Старая версия "_cp1251) + file_name_.str() + " : " + Quoted(signature_) +
              std::string(" вместо "_cp1251) + Quoted(signature));
}

TDocWriteStream::TDocWriteStream(const Files& files, std::string_view file_name,
                                 std::string_view signature, FileMode mode)
    : file_name_(ShortText::Cut(file_name)),
      signature_(ShortText::Cut(signature.substr(0, kMaxSignature))),
      stream_(files.Open(file_name_, mode)) {
  if (mode == kModeCreate) {
    stream_->Write(signature_.data(), signature_.size());
    return;
  }
  const ShortText found = ReadSignature(*stream_, signature_.size());
  if (found == signature_) return;
  throw Error(std::string("Не та сигнатура файла :"_cp1251) + found.str() +
              std::string(" вместо "_cp1251) + signature_.str());
}

void TDocWriteStream::WriteShortText(std::string_view text) {
  text = CutToShort(text);
  std::string framed;
  framing::AppendLength(framed, static_cast<std::uint32_t>(text.size()), framing::kShortLength);
  framed.append(text);
  stream_->Write(framed.data(), framed.size());
}

void TDocWriteStream::WriteLongText(std::string_view text) {
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw FileError(FileError::Kind::kWrite, file_name_, "строка длиннее 4 ГБ"_cp1251);
  }
  const auto size = static_cast<std::uint32_t>(text.size());
  std::string prefix;
  if (size < framing::kLengthFollows) {
    framing::AppendLength(prefix, size, framing::kLongLength);
  } else {
    framing::AppendLength(prefix, framing::kLengthFollows, framing::kLongLength);
    framing::AppendLength(prefix, size, framing::kFollowingLength);
  }
  stream_->Write(prefix.data(), prefix.size());
  stream_->Write(text.data(), text.size());
}

}  // namespace customsconv
