#ifndef CUSTOMSCONV_DBF_DBF_CACHE_H_
#define CUSTOMSCONV_DBF_DBF_CACHE_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/error.h"
#include "dbf/transaction.h"
#include "platform/host.h"
#include "services/exchange_lock.h"

namespace customsconv {

class TFileDbfFile;
struct TDbfMemoryStream;

// What is wrong with a table that cannot be opened, or with its creation.
class DbfError : public Error {
 public:
  using Error::Error;
};

// The images of the tables in use, the list of those that were changed, and the
// list of open tables. One object for the life of the library, handed to whoever opens
// tables. Files are known by what they really are (Files::Identity), so two
// spellings of a name share one image.
class TDbfCache {
 public:
  // `host` must outlive the cache.
  explicit TDbfCache(Host& host);
  // Flushes everything, without progress; failures go to the exception display.
  ~TDbfCache();  // (or forgets it, see SaveAllOrNone)
  TDbfCache(const TDbfCache&) = delete;
  TDbfCache& operator=(const TDbfCache&) = delete;

  // Writes changed images back, those of a folder as one transaction. `table_names` (blank-
  // separated base names, any case) limits it to these tables; the others stay changed. Without
  // names the changed list ends up empty but for files whose writing failed; such a late file is
  // written by a later flush when it still is what was loaded, and dropped otherwise. Failures and
  // losses go to the exception display.
  void Flush(std::string_view table_names = {}, bool show_progress = false);

  // What the rows that are written from now on belong to, for whoever is told that they are lost.
  void NoteSaves(std::string_view note) { note_ = note; }

  // A save into the tables of a folder (with closing separator) begins: its locks are held, and
  // what a dead process left there is undone. Throws SilentAbort when the user gives up at a lock.
  void BeginSave(std::string_view folder);
  // Flushes and lets the locks go.
  void EndSave();
  // The save has failed: only lets the locks go.
  void AbandonSave();

  // From now on a save writes all its tables or none: EndSave sees to it that they can be written,
  // else it forgets the save's rows and throws Error. Saves that follow each other wait for one
  // transaction, under the locks of the first one, until Commit. What is not committed is
  // forgotten in the end.
  void SaveAllOrNone() { all_or_none_ = true; }
  // Writes what waits. When that fails nothing is written, all is forgotten, and Error is thrown.
  void Commit();
  // For how many milliseconds saves that wait to be committed have kept others out by now; empty
  // when none waits, or one is just being made.
  [[nodiscard]] std::optional<std::uint64_t> KeepsOthersOut() const;

  // Undoes, in a folder that is about to be read, the save that a dead process left half done;
  // waits for a living one. Throws DbfError naming the command for that where it may not be done.
  void UndoBrokenSave(std::string_view folder);
  // The same, and keeps saves out; empty when a save of ours does so already.
  [[nodiscard]] std::optional<SaveLock> LockToCreate(std::string_view folder);

  // Another process saves into the folder or has changed the file `path` since it had `stamp`.
  [[nodiscard]] bool IsSavedMeanwhile(std::string_view folder, std::string_view path,
                                      FileStamp stamp) const;
  // Waits for who saves there, and keeps saves out; empty for a user who may not, and found no save
  // under way. Throws Error when it does not come to that.
  [[nodiscard]] std::optional<SaveLock> LockToRead(std::string_view folder);

  // Some image differs from its file: it was changed since the last flush, or could not be
  // written.
  [[nodiscard]] bool HasUnsaved() const { return !changed_.empty(); }

  // Forgets the image of a file and detaches it from every open table.
  void DropCachedFile(std::string_view file_name);

  // Value of `result_field` in the first record whose `key_field` (alternatives
  // separated by "|") equals `key`; empty optional when there is none.
  [[nodiscard]] std::optional<std::string> Lookup(std::string_view table_file,
                                                  std::string_view key_field, std::string_view key,
                                                  std::string_view result_field);

  [[nodiscard]] Host& host() const { return host_; }

 private:
  friend class TFileDbfFile;

  // The full name of a table's file, ".DBF" added where there is no extension.
  [[nodiscard]] std::string PathOf(std::string_view table) const;
  // The same text for all spellings of a folder.
  [[nodiscard]] std::string FolderIdentity(std::string_view folder) const;
  // The image of the file that the full name `path` leads to, if one is held and
  // the file is still as it was; an outdated image is dropped.
  [[nodiscard]] TDbfMemoryStream* FindImage(const std::string& path);
  // The held image, however old. Costs no look at the disk for a name seen before.
  [[nodiscard]] TDbfMemoryStream* HeldImage(const std::string& path);
  // Open tables that read this very file go over to its image.
  TDbfMemoryStream& Add(std::unique_ptr<TDbfMemoryStream> image);
  void Drop(TDbfMemoryStream& image);
  // The image is about to be changed.
  void NoteChange(TDbfMemoryStream& image);

  // Every table that was opened and not destroyed.
  void Enlist(TFileDbfFile& table) { tables_.insert(&table); }
  void Delist(TFileDbfFile& table) { tables_.erase(&table); }

  using Images = std::vector<TDbfMemoryStream*>;
  [[nodiscard]] Images TakeDue(std::string_view table_names);
  [[nodiscard]] static std::map<std::string, Images> ByFolder(const Images& images);
  void WriteFolder(const Images& due, Progress* progress);
  [[nodiscard]] bool MayBeWritten(TDbfMemoryStream& image);
  [[nodiscard]] bool TryToPrepare(TDbfMemoryStream& image);
  void Prepare(TDbfMemoryStream& image);
  // Writes those that it can, and takes the others out of the list.
  void WriteTogether(const std::string& folder, Images& images);
  [[nodiscard]] std::optional<TransactionFailure> Write(const std::string& folder,
                                                        const Images& images);
  void Written(TDbfMemoryStream& image);
  [[nodiscard]] bool RetryAtOnce(TDbfMemoryStream& image) const;
  void PrepareOwn(TDbfMemoryStream& image);
  // Takes what is not changed any more out of the changed list.
  void ForgetWritten();
  void CloseUnused();
  void GiveRoomBack(TDbfMemoryStream& image) const;
  // Commit, but for what comes of a failure.
  void WriteWaiting();
  // The same; SilentAbort when the user gives up.
  [[nodiscard]] SaveLock LockAndUndo(const std::string& folder);
  void UndoAndTell(const std::string& folder, const SaveLock& lock);
  void TellKeptJournals(const std::string& folder);
  void Lose(TDbfMemoryStream& image, std::string_view why);
  void ShowFailure(const std::exception& failure) const;

  // The locks of the folder that a save goes to.
  struct Held {
    Held(Host& host, std::string identity, SaveLock save_lock, std::string_view marked)
        : folder(std::move(identity)),
          own(std::move(save_lock)),
          marker(host, marked),
          since(host.clock.Ticks()) {}
    std::string folder;  // its identity
    SaveLock own;
    ExchangeLock marker;
    std::uint64_t since;
  };
  void LetGo();
  void LeaveGap();

  Host& host_;
  std::unordered_map<std::string, std::unique_ptr<TDbfMemoryStream>> images_;  // by identity
  std::unordered_map<std::string, TDbfMemoryStream*> spellings_;               // by full name
  std::vector<TDbfMemoryStream*> changed_;
  std::unordered_set<TFileDbfFile*> tables_;
  std::optional<Held> held_;
  std::unordered_set<std::string> looked_through_;  // folders, for journals that were kept
  std::string note_;
  bool all_or_none_ = false;
  std::string lost_;  // a table whose rows were forgotten
  std::uint64_t save_ = 0;  // number of the save at hand
  bool in_save_ = false;
  std::uint64_t free_since_ = 0;  // moment of the clock's ticks
  std::uint64_t busy_since_ = 0;  // the same, behind the last long gap between saves
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_CACHE_H_
