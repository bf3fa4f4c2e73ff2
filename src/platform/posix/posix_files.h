#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILES_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILES_H_

#include <sys/types.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace customsconv::posix {

// The files of a POSIX system. It has no drives: "C:\A" is looked for in a
// folder "C:" of the current one.
class PosixFiles : public Files {
 public:
  // `on_wait` is called several times a second while a pipe that is read has nothing to give; it
  // may throw to give up.
  explicit PosixFiles(std::function<void()> on_wait = [] {}) : on_wait_(std::move(on_wait)) {}

  [[nodiscard]] bool Exists(std::string_view path) const override;
  [[nodiscard]] bool ExistsAsWritten(std::string_view path) const override;
  [[nodiscard]] bool FolderExists(std::string_view path) const override;
  [[nodiscard]] FileStamp Stamp(std::string_view path) const override;
  [[nodiscard]] std::string Read(std::string_view path, std::size_t limit = 0) const override;
  [[nodiscard]] std::unique_ptr<PendingFile> StagePieces(std::string_view path,
                                                         FilePieces content) override;
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
  [[nodiscard]] std::string Identity(std::string_view path) const override;
  // With "/" between folders, as other programs take it, and the names in the
  // letter case in which they are stored. Empty also for names that code page
  // 1251 cannot hold.
  [[nodiscard]] std::string ShortName(std::string_view path) const override;
  [[nodiscard]] std::unique_ptr<FileLock> Lock(std::string_view path,
                                               const std::function<void()>& on_busy) override;
  [[nodiscard]] std::unique_ptr<FileLock> HoldFile(std::string_view path) override;

 private:
  // Removes what killed processes left in a folder that this object writes to.
  void ClearOnce(const std::string& folder);

  [[nodiscard]] std::string ReadPipe(const std::string& system_name, std::size_t limit,
                                     std::string_view path) const;

  // The real name of a folder, `name` itself when there is no such folder.
  [[nodiscard]] std::string RealFolder(const std::string& name) const;

  struct KnownFolder {
    std::string name;
    dev_t device = 0;
    ino_t number = 0;
  };

  std::function<void()> on_wait_;
  mutable std::unordered_map<std::string, KnownFolder> real_folders_;
  std::set<std::string> cleared_folders_;
};

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILES_H_
