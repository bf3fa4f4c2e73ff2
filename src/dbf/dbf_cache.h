#ifndef CUSTOMSCONV_DBF_DBF_CACHE_H_
#define CUSTOMSCONV_DBF_DBF_CACHE_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/error.h"
#include "platform/host.h"

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
  ~TDbfCache();
  TDbfCache(const TDbfCache&) = delete;
  TDbfCache& operator=(const TDbfCache&) = delete;

  // Writes changed images back: all temporary files first, then each is put in
  // its place. `table_names` (blank-separated base names, any case) limits it to
  // these tables; the others stay changed. Without names the changed list ends
  // up empty but for files whose writing failed. Failures go to the exception
  // display.
  void Flush(std::string_view table_names = {}, bool show_progress = false);

  // Many flushes of the same tables will follow: from now on each table may have a copy of itself
  // beside it, as long as the cache holds it, so that a flush costs what was added.
  void ExpectSeries() { expects_series_ = true; }

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
  // The image of the file that the full name `path` leads to, if one is held and
  // the file is still as it was; an outdated image is dropped.
  [[nodiscard]] TDbfMemoryStream* FindImage(const std::string& path);
  // The held image, however old. Costs no look at the disk for a name seen before.
  [[nodiscard]] TDbfMemoryStream* HeldImage(const std::string& path);
  // Open tables that read this very file go over to its image.
  TDbfMemoryStream& Add(std::unique_ptr<TDbfMemoryStream> image);
  void Drop(TDbfMemoryStream& image);
  void MarkChanged(TDbfMemoryStream& image);

  // Every table that was opened and not destroyed.
  void Enlist(TFileDbfFile& table) { tables_.insert(&table); }
  void Delist(TFileDbfFile& table) { tables_.erase(&table); }

  [[nodiscard]] std::vector<TDbfMemoryStream*> TakeDue(std::string_view table_names);
  void WriteBack(const std::vector<TDbfMemoryStream*>& due, Progress* progress);
  using StagedFiles = std::vector<std::pair<TDbfMemoryStream*, std::unique_ptr<PendingFile>>>;
  static void Settle(const StagedFiles& placed);
  [[nodiscard]] std::unique_ptr<PendingFile> Stage(TDbfMemoryStream& image) const;
  template <typename Write>
  bool TryToWrite(TDbfMemoryStream& image, Write write);
  void Written(TDbfMemoryStream& image);
  [[nodiscard]] bool RetryAtOnce(TDbfMemoryStream& image) const;
  void ShowFailure(const std::exception& failure) const;

  Host& host_;
  std::unordered_map<std::string, std::unique_ptr<TDbfMemoryStream>> images_;  // by identity
  std::unordered_map<std::string, TDbfMemoryStream*> spellings_;               // by full name
  std::vector<TDbfMemoryStream*> changed_;
  std::unordered_set<TFileDbfFile*> tables_;
  bool expects_series_ = false;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_CACHE_H_
