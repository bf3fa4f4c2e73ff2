#ifndef CUSTOMSCONV_PLATFORM_FILES_H_
#define CUSTOMSCONV_PLATFORM_FILES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"

namespace customsconv {

// How a file is opened. The low bits say what is done with the file, the next ones what others may
// do meanwhile.
using FileMode = std::uint16_t;
inline constexpr FileMode kModeRead = 0x0000;
inline constexpr FileMode kModeWrite = 0x0001;
inline constexpr FileMode kModeReadWrite = 0x0002;
inline constexpr FileMode kModeAccessMask = 0x0003;
inline constexpr FileMode kShareExclusive = 0x0010;
inline constexpr FileMode kShareDenyWrite = 0x0020;
inline constexpr FileMode kShareDenyNone = 0x0040;
inline constexpr FileMode kModeCreate = 0xFFFF;  // create, or empty what is there

// Modification stamp of a file; only equality means anything. kNoStamp stands
// for a missing file.
using FileStamp = std::int64_t;
inline constexpr FileStamp kNoStamp = -1;
// Of a pipe, whose reader may have to wait for its writer.
inline constexpr FileStamp kPipeStamp = 0;

enum class SeekOrigin : std::uint8_t { kBegin, kCurrent, kEnd };

// An open file. Closed on destruction. Errors throw FileError naming the file.
class FileStream {
 public:
  virtual ~FileStream() = default;
  // Reads up to `count` bytes; fewer only at the end of the file.
  virtual std::size_t Read(void* to, std::size_t count) = 0;
  virtual void Write(const void* from, std::size_t count) = 0;
  // The new position from the file's start.
  virtual std::int64_t Seek(std::int64_t offset, SeekOrigin origin) = 0;
  [[nodiscard]] virtual std::int64_t Size() const = 0;
  [[nodiscard]] virtual FileStamp Stamp() const = 0;

  // Makes sure that the disk has room for a file of `size`, which stays as long as it is. Where
  // that cannot be asked for, writing finds out.
  virtual void Reserve(std::int64_t size) = 0;
  // Cuts the file off, or fills it up with zeros. Room beyond its end is given back.
  virtual void Resize(std::int64_t size) = 0;
  // The disk begins to write while the program goes on.
  virtual void StartSync() {}
  // Waits until what was written would outlast a power cut. The file has a new stamp, whatever the
  // clock's ticks.
  virtual void Sync() = 0;
};

// New content of a file, written beside its target but not yet in its place. Discarded on
// destruction unless placed. The steps come in this order.
class PendingFile {
 public:
  virtual ~PendingFile() = default;
  // Waits until the content would outlast a power cut. Throws FileError (kWrite).
  virtual void Harden() = 0;
  // Puts the content in place in one step. Throws FileError (kCreate); the old
  // file then stays whole.
  virtual void Place() = 0;
  // Waits until what was placed in the file's folder would outlast a power cut; false where
  // the folder cannot be asked for that.
  virtual bool Settle() = 0;
  void Commit() {
    Harden();
    Place();
    Settle();
  }
};

// The bytes of a file in pieces that follow each other.
using FilePieces = std::span<const std::string_view>;

class OutputFile;  // platform/output_file.h

// A lock between processes, held until destruction.
class FileLock {
 public:
  virtual ~FileLock() = default;
  // False where the file system keeps no locks: somebody else may hold it, too.
  [[nodiscard]] virtual bool certain() const { return true; }
};

// The file system as the system sees it.
//
// Names are code page 1251 text with "\" or "/" between folders. Each part of a
// path that does not exist as written is matched to an existing name without
// regard to letter case (Latin and Cyrillic); the first in byte order of the
// stored names wins. New files are made with the name as given, stored as UTF-8.
class Files {
 public:
  virtual ~Files() = default;

  // A file (not a folder) of that name exists.
  [[nodiscard]] virtual bool Exists(std::string_view path) const = 0;
  // The same for a file that only this program makes, so that its name has one letter case: where
  // it is not there, its folder is not searched for another spelling.
  [[nodiscard]] virtual bool ExistsAsWritten(std::string_view path) const = 0;
  [[nodiscard]] virtual bool FolderExists(std::string_view path) const = 0;
  // kNoStamp when there is no such file.
  [[nodiscard]] virtual FileStamp Stamp(std::string_view path) const = 0;

  // Whole content of `path`, at most `limit` bytes when it is not 0. Others may
  // read and write meanwhile. Throws FileError (kMissing, kOpen or kRead) naming
  // the path and the cause; a folder is an error.
  [[nodiscard]] virtual std::string Read(std::string_view path, std::size_t limit = 0) const = 0;

  // Replaces or creates `path` in one step: a reader sees the old bytes or the
  // new ones, never half. Throws FileError (kWrite for trouble with the bytes, kCreate for
  // a file that is not to be had); the old file then stays whole.
  void Replace(std::string_view path, std::string_view content) { Stage(path, content)->Commit(); }
  void Replace(std::string_view path, FilePieces content) { StagePieces(path, content)->Commit(); }
  // First step of Replace: the temporary file.
  [[nodiscard]] std::unique_ptr<PendingFile> Stage(std::string_view path,
                                                   std::string_view content) {
    return StagePieces(path, {&content, 1});
  }
  [[nodiscard]] virtual std::unique_ptr<PendingFile> StagePieces(std::string_view path,
                                                                 FilePieces content) = 0;

  // The first step of Replace for content that does not fit into memory. Throws FileError
  // (kCreate).
  [[nodiscard]] virtual std::unique_ptr<OutputFile> StartOutput(std::string_view path) = 0;

  // Makes an empty file and returns true, or returns false when one exists; of
  // two processes that try at the same moment exactly one gets true. Throws
  // FileError (kCreate) for any other trouble.
  // `twin` names a file that the new one shall be another name of, as its stamp tells, where the
  // file system has such names.
  [[nodiscard]] virtual bool CreateNew(std::string_view path, std::string_view twin = {}) = 0;
  // Adds to the end of `path`, creating it when missing. Throws FileError.
  virtual void Append(std::string_view path, std::string_view content) = 0;
  // True when the file was there and is gone now.
  virtual bool Delete(std::string_view path) = 0;
  // Gives a file another name in its folder; false when that is taken, or cannot be given.
  virtual bool Rename(std::string_view path, std::string_view new_path) = 0;
  // Waits until what was made, renamed and deleted in the folder of `path` would outlast a power
  // cut; false where the folder cannot be asked for that. Throws FileError (kWrite) when the disk
  // fails.
  virtual bool SyncFolder(std::string_view path) = 0;

  // Throws FileError (kMissing, kOpen or kCreate).
  [[nodiscard]] virtual std::unique_ptr<FileStream> Open(std::string_view path,
                                                         FileMode mode) const = 0;

  // Names (without folder) of the files in `folder` that match `mask` ("*" and
  // "?", without regard to letter case), in byte order of the stored names.
  // Names that code page 1251 cannot hold are left out.
  [[nodiscard]] virtual std::vector<std::string> Find(std::string_view folder,
                                                      std::string_view mask) const = 0;

  // `path` made absolute (no look at the disk).
  [[nodiscard]] virtual std::string FullName(std::string_view path) const = 0;
  // What identifies the file that `path` leads to: two names give the same text
  // exactly when they lead to one existing file (or would create one). For
  // look-ups only, never shown.
  [[nodiscard]] virtual std::string Identity(std::string_view path) const = 0;
  // The form of an existing path that programs with a short name limit take;
  // empty when the path does not exist.
  [[nodiscard]] virtual std::string ShortName(std::string_view path) const = 0;

  // Takes the lock that guards changes to `path` between processes (nothing is left on disk;
  // `path` need not exist, its folder must). As long as somebody else holds it `on_busy` is
  // called, which waits a moment or throws to give up; see platform/wait_for_lock.h. When the
  // file system offers no lock, the result is null and work goes on unguarded.
  [[nodiscard]] virtual std::unique_ptr<FileLock> Lock(std::string_view path,
                                                       const std::function<void()>& on_busy) = 0;
  // Makes the file `path`, or takes the one that a process left when it died, and holds it until
  // destruction, which removes it. Empty while a living process holds it; where the file system
  // keeps no locks it is held by whoever asks, who is not certain then. Throws FileError
  // (kCreate).
  [[nodiscard]] virtual std::unique_ptr<FileLock> HoldFile(std::string_view path) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_FILES_H_
