#ifndef CUSTOMSCONV_TESTS_SUPPORT_FAKE_FILES_H_
#define CUSTOMSCONV_TESTS_SUPPORT_FAKE_FILES_H_

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "platform/output_file.h"

namespace customsconv {

// What the program asks of the files, for counting and for made-up faults. From kStage on
// these are changes; kOtherChange appends, deletes, renames, syncs or writes to a stream.
enum class FileOp {
  kExists,
  kStamp,
  kRead,
  kOpen,
  kStreamRead,
  kStage,
  kReserve,
  kCommit,
  kCreateNew,
  kOtherChange
};

// Thrown where a test lets the program die. Deliberately no std::exception, so
// that nothing which handles errors swallows it.
struct SuddenDeath {};

// A file system in memory. Names are code page 1251, "\" and "/" are equal,
// letter case (Latin and Cyrillic) does not matter; a name without drive or
// leading separator lies in `current_folder`.
//
//   FakeFiles files;
//   files["C:\\OUT\\DBRHEAD.DBF"] = bytes;             // and its folder exists
//   EXPECT_EQ(files["c:/out/dbrhead.dbf"], bytes);
class FakeFiles : public Files {
 public:
  // A file as a test handles it: assign to write it (a new stamp), convert or
  // compare to read it. Reading one that does not exist throws std::out_of_range.
  class Entry {
   public:
    Entry(FakeFiles& files, std::string_view path) : files_(files), path_(path) {}
    void operator=(std::string_view bytes) { files_.Put(path_, bytes); }
    operator const std::string&() const { return bytes(); }
    [[nodiscard]] const std::string& bytes() const { return files_.NodeOf(path_).bytes; }
    friend bool operator==(const Entry& entry, std::string_view bytes) {
      return entry.bytes() == bytes;
    }
    friend std::ostream& operator<<(std::ostream& out, const Entry& entry) {
      return out << entry.bytes();
    }

   private:
    FakeFiles& files_;
    std::string path_;
  };

  Entry operator[](std::string_view path) { return Entry(*this, path); }

  // --- The world before and after a test; none of this counts or fails.
  void Put(std::string_view path, std::string_view bytes);
  [[nodiscard]] bool Has(std::string_view path) const { return nodes_.contains(Key(path)); }
  void Remove(std::string_view path) {
    nodes_.erase(Key(path));
    safe_nodes_.erase(Key(path));
  }
  void AddFolder(std::string_view path);
  // `path` becomes another name of the file `target`.
  void Link(std::string_view path, std::string_view target);
  // Room is reserved for more than the file holds.
  [[nodiscard]] bool HasSpareRoom(std::string_view path) const {
    return NodeOf(path).room > NodeOf(path).bytes.size();
  }
  void SetStamp(std::string_view path, FileStamp stamp) { NodeOf(path).stamp = stamp; }
  // Nothing in the folder (not below it) can be written, made or deleted.
  void SetReadOnly(std::string_view folder, bool read_only = true);
  // Full names of all files as they were made, in the order of their upper-case names.
  [[nodiscard]] std::vector<std::string> Names() const;

  // --- Made-up faults.
  // Until StopFailing every such operation on `path` is refused and changes nothing.
  void FailPath(std::string_view path, FileOp op, FileError::Kind kind) {
    faults_[{Key(path), op}] = kind;
  }
  void StopFailing() { faults_.clear(); }
  // The `n`th change from now is refused, of a write behind its first half; those behind it are
  // not.
  void FailChange(int n) { fails_in_ = n; }
  // In the place of the `n`th change from now, or half-way in it, SuddenDeath is thrown; the files
  // stay as they are then, whatever destructors still try, until Revive.
  void DieAtChange(int n);
  void Revive() { DieAtChange(0); }
  [[nodiscard]] bool dead() const { return dead_; }
  // Of what was written, made or deleted and not synced, nothing is left (0), all of it (1), or
  // some of it, by sectors and in any order (a case of its own for each higher number).
  void LosePower(unsigned order);

  // --- What happened.
  [[nodiscard]] int Count(FileOp op) const { return counts_[op]; }
  [[nodiscard]] int changes() const { return changes_; }
  void ResetCounts();
  [[nodiscard]] std::size_t open_streams() const { return open_streams_; }

  std::string current_folder = "C:\\WORK\\";
  bool has_short_names = true;
  bool keeps_locks = true;

  // --- Files
  [[nodiscard]] bool Exists(std::string_view path) const override;
  [[nodiscard]] bool ExistsAsWritten(std::string_view path) const override { return Exists(path); }
  [[nodiscard]] bool FolderExists(std::string_view path) const override;
  [[nodiscard]] FileStamp Stamp(std::string_view path) const override;
  [[nodiscard]] std::string Read(std::string_view path, std::size_t limit = 0) const override;
  [[nodiscard]] std::unique_ptr<PendingFile> StagePieces(std::string_view path,
                                                         FilePieces pieces) override;
  [[nodiscard]] std::unique_ptr<OutputFile> StartOutput(std::string_view path) override;
  [[nodiscard]] bool CreateNew(std::string_view path, std::string_view twin = {}) override;
  void Append(std::string_view path, std::string_view content) override;
  bool Delete(std::string_view path) override;
  bool Rename(std::string_view path, std::string_view new_path) override;
  bool SyncFolder(std::string_view path) override;
  [[nodiscard]] std::unique_ptr<FileStream> Open(std::string_view path,
                                                 FileMode mode) const override;
  [[nodiscard]] std::vector<std::string> Find(std::string_view folder,
                                              std::string_view mask) const override;
  [[nodiscard]] std::string FullName(std::string_view path) const override;
  [[nodiscard]] std::string Identity(std::string_view path) const override {
    return Key(Has(path) ? NodeOf(path).name : path);
  }
  [[nodiscard]] std::string ShortName(std::string_view path) const override;
  // std::logic_error when `on_busy` is called again and again: this would block for ever.
  [[nodiscard]] std::unique_ptr<FileLock> Lock(std::string_view path,
                                               const std::function<void()>& on_busy) override;
  [[nodiscard]] std::unique_ptr<FileLock> HoldFile(std::string_view path) override;

 private:
  class MemoryStream;
  class MemoryPendingFile;
  class MemoryOutputFile;
  class MemoryLock;
  class MemoryHeldFile;
  // What was done to a file since it was synced: bytes put in, or another size without bytes.
  struct Unsynced {
    std::size_t at;
    std::string bytes;
  };
  struct Node {
    void Apply(const Unsynced& change);

    std::string name;  // full name as it was made
    std::string bytes;
    FileStamp stamp = 0;
    std::vector<FileMode> open_modes;
    std::string safe_bytes;  // as they were synced
    std::vector<Unsynced> unsynced;
    std::size_t room = 0;
  };
  using Nodes = std::map<std::string, std::shared_ptr<Node>>;

  [[nodiscard]] std::string Key(std::string_view path) const;
  [[nodiscard]] bool IsFolder(const std::string& key) const { return folders_.contains(key); }
  [[nodiscard]] Node& NodeOf(std::string_view path) const { return *nodes_.at(Key(path)); }
  // Counts the operation and refuses it where a test asked for that.
  void Operation(FileOp op, std::string_view path) const;
  // The same, then runs `write` unless the program dies in its place.
  // `half`: what is done of it all the same when it fails.
  template <typename Write>
  void Change(FileOp op, std::string_view path, Write write,
              const std::function<void()>& half = [] {}) const;
  // The same for what the system answers with a plain no.
  template <typename Write>
  bool TryToChange(std::string_view path, Write write) const;
  [[nodiscard]] std::shared_ptr<Node> NodeToOpen(std::string_view path, FileMode mode) const;
  void RefuseWhereReadOnly(std::string_view path) const;
  // An empty file that is gone with the power until its folder is synced.
  void Make(std::string_view path);

  // const operations count, fail and open streams, hence mutable.
  Nodes nodes_;
  Nodes safe_nodes_;  // as their folders were synced
  std::set<std::string> folders_ = {"", "C:\\WORK"};
  std::set<std::string> read_only_;
  std::set<std::string> locks_;
  std::set<std::string> held_files_;
  std::map<std::pair<std::string, FileOp>, FileError::Kind> faults_;
  mutable std::map<FileOp, int> counts_;
  mutable int changes_ = 0;
  mutable int fails_in_ = 0;  // 0: never
  mutable int dies_in_ = 0;
  mutable bool dead_ = false;
  mutable FileStamp last_stamp_ = 1000;
  mutable std::size_t open_streams_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_FAKE_FILES_H_
