#include "support/fake_files.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>

#include "platform/full_path.h"
#include "platform/name_mask.h"

namespace customsconv {
namespace {

using Kind = FileError::Kind;

bool Writes(FileMode mode) { return mode == kModeCreate || (mode & kModeAccessMask) != kModeRead; }

// Whether a file that is open in mode `held` lets another one open it in `wanted`.
bool Allows(FileMode held, FileMode wanted) {
  const auto share = held == kModeCreate ? kShareExclusive : held & 0x0070;
  return share == kShareDenyNone || (share == kShareDenyWrite && !Writes(wanted));
}

// A folder's key has no closing separator; the key of the root is empty.
std::string FolderOf(std::string_view key) {
  const std::size_t separator = key.rfind('\\');
  return std::string(separator == key.npos ? "" : key.substr(0, separator));
}

}  // namespace

class FakeFiles::MemoryStream : public FileStream {
 public:
  MemoryStream(const FakeFiles& files, std::shared_ptr<Node> node, FileMode mode)
      : files_(files), node_(std::move(node)), mode_(mode) {
    node_->open_modes.push_back(mode_);
    ++files_.open_streams_;
  }
  ~MemoryStream() override {
    auto& modes = node_->open_modes;
    modes.erase(std::find(modes.begin(), modes.end(), mode_));
    --files_.open_streams_;
  }
  MemoryStream(const MemoryStream&) = delete;
  MemoryStream& operator=(const MemoryStream&) = delete;

  std::size_t Read(void* to, std::size_t count) override {
    files_.Operation(FileOp::kStreamRead, node_->name);
    const std::string_view rest =
        std::string_view(node_->bytes).substr(std::min(position_, node_->bytes.size()));
    position_ += count = rest.copy(static_cast<char*>(to), count);
    return count;
  }

  void Write(const void* from, std::size_t count) override {
    if (!Writes(mode_)) throw FileError(Kind::kWrite, node_->name, "open for reading only");
    const auto put = [&](std::size_t size) {
      if (size == 0) return;
      Do({position_, {static_cast<const char*>(from), size}});
      position_ += size;
    };
    files_.Change(FileOp::kOtherChange, node_->name, [&] { put(count); }, [&] {
      const std::size_t half = position_ + (count + 1) / 2;  // a process dies between two sectors
      put(std::max(files_.dead_ ? half / 512 * 512 : half, position_) - position_);
    });
  }

  void Reserve(std::int64_t size) override {
    files_.Change(FileOp::kReserve, node_->name, [&] {
      node_->room = std::max(node_->room, static_cast<std::size_t>(size));
      node_->stamp = ++files_.last_stamp_;
    });
  }

  void Resize(std::int64_t size) override {
    files_.Change(FileOp::kOtherChange, node_->name,
                  [&] { Do({node_->room = static_cast<std::size_t>(size), {}}); });
  }

  void Sync() override {
    files_.Change(FileOp::kOtherChange, node_->name, [&] {
      node_->safe_bytes = node_->bytes;
      node_->unsynced.clear();
      node_->stamp = ++files_.last_stamp_;
    });
  }

  std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override {
    if (origin == SeekOrigin::kCurrent) offset += static_cast<std::int64_t>(position_);
    if (origin == SeekOrigin::kEnd) offset += Size();
    if (offset < 0) throw FileError(Kind::kRead, node_->name, "before its start");
    position_ = static_cast<std::size_t>(offset);
    return offset;
  }

  [[nodiscard]] std::int64_t Size() const override {
    return static_cast<std::int64_t>(node_->bytes.size());
  }

  [[nodiscard]] FileStamp Stamp() const override { return node_->stamp; }

 private:
  void Do(Unsynced change) {
    node_->Apply(change);
    node_->unsynced.push_back(std::move(change));
    node_->stamp = ++files_.last_stamp_;
  }

  const FakeFiles& files_;
  std::shared_ptr<Node> node_;
  FileMode mode_;
  std::size_t position_ = 0;
};

class FakeFiles::MemoryPendingFile : public PendingFile {
 public:
  MemoryPendingFile(FakeFiles& files, std::string_view path, std::string_view content)
      : files_(files), path_(path), content_(content) {}
  void Place() override {
    files_.Change(FileOp::kCommit, path_, [this] { files_.Put(path_, content_); });
  }
  void Harden() override {}
  bool Settle() override { return true; }

 private:
  FakeFiles& files_;
  std::string path_;
  std::string content_;
};

// Nothing but this program can open it: it has no name in the system.
class FakeFiles::MemoryOutputFile : public OutputFile {
 public:
  MemoryOutputFile(FakeFiles& files, std::string_view path) : files_(files), path_(path) {}
  void Write(std::string_view bytes) override { content_ += bytes; }
  [[nodiscard]] std::string SystemName() const override { return {}; }
  void Harden() override { pending_ = files_.Stage(path_, content_); }
  void Place() override { pending_->Place(); }
  bool Settle() override { return true; }

 private:
  FakeFiles& files_;
  std::string path_;
  std::string content_;
  std::unique_ptr<PendingFile> pending_;
};

class FakeFiles::MemoryLock : public FileLock {
 public:
  MemoryLock(FakeFiles& files, std::string key) : files_(files), key_(std::move(key)) {}
  ~MemoryLock() override { files_.locks_.erase(key_); }
  MemoryLock(const MemoryLock&) = delete;
  MemoryLock& operator=(const MemoryLock&) = delete;

 private:
  FakeFiles& files_;
  std::string key_;
};

class FakeFiles::MemoryHeldFile : public FileLock {
 public:
  MemoryHeldFile(FakeFiles& files, std::string path) : files_(files), path_(std::move(path)) {
    files_.held_files_.insert(files_.Key(path_));
  }
  ~MemoryHeldFile() override {
    files_.held_files_.erase(files_.Key(path_));
    try {
      files_.Delete(path_);
    } catch (const SuddenDeath&) {
    }
  }
  [[nodiscard]] bool certain() const override { return files_.keeps_locks; }
  MemoryHeldFile(const MemoryHeldFile&) = delete;
  MemoryHeldFile& operator=(const MemoryHeldFile&) = delete;

 private:
  FakeFiles& files_;
  std::string path_;
};

// --- Names -------------------------------------------------------------------

std::string FakeFiles::FullName(std::string_view path) const {
  return FullPath(path, current_folder);
}

std::string FakeFiles::Key(std::string_view path) const {
  std::string key = UpperCaseRu(FullName(path));
  if (key.ends_with('\\')) key.pop_back();
  return key;
}

std::string FakeFiles::ShortName(std::string_view path) const {
  const bool exists = Has(path) || IsFolder(Key(path));
  return has_short_names && exists ? FullName(path) : std::string();
}

// --- The world of a test -----------------------------------------------------

void FakeFiles::Put(std::string_view path, std::string_view bytes) {
  const std::string key = Key(path);
  std::shared_ptr<Node>& node = nodes_[key];
  if (!node) node = std::make_shared<Node>(Node{FullName(path), "", 0, {}, "", {}});
  node->bytes = node->safe_bytes = bytes;
  node->unsynced.clear();
  node->stamp = ++last_stamp_;
  safe_nodes_[key] = node;
  AddFolder(FolderOf(key));
}

void FakeFiles::Link(std::string_view path, std::string_view target) {
  for (Nodes* names : {&nodes_, &safe_nodes_}) (*names)[Key(path)] = nodes_.at(Key(target));
  AddFolder(FolderOf(Key(path)));
}

void FakeFiles::Make(std::string_view path) {
  const bool safe = safe_nodes_.contains(Key(path));
  nodes_.erase(Key(path));
  Put(path, "");
  if (!safe) safe_nodes_.erase(Key(path));
}

void FakeFiles::Node::Apply(const Unsynced& change) {
  if (change.bytes.empty()) return bytes.resize(change.at);
  bytes.resize(std::max(change.at, bytes.size()));
  bytes.replace(change.at, change.bytes.size(), change.bytes);
}

void FakeFiles::LosePower(unsigned order) {
  constexpr std::size_t kSector = 512;
  std::mt19937 random(order);
  const auto kept = [&] { return order == 1 || (order > 1 && random() % 2 == 0); };
  for (Nodes* names : {&nodes_, &safe_nodes_}) {
    const Nodes before = *names;
    for (const auto& [key, node] : before) {
      const bool now = kept();
      const Nodes& chosen = now ? nodes_ : safe_nodes_;
      const auto found = chosen.find(key);
      const std::shared_ptr<Node> winner = found == chosen.end() ? nullptr : found->second;
      for (Nodes* both : {&nodes_, &safe_nodes_}) {
        winner ? static_cast<void>((*both)[key] = winner) : static_cast<void>(both->erase(key));
      }
    }
  }
  for (const auto& [key, node] : nodes_) {
    std::vector<Unsynced> sectors;
    for (const Unsynced& change : node->unsynced) {
      if (change.bytes.empty()) sectors.push_back(change);
      for (std::size_t at = 0, next = 0; at < change.bytes.size(); at = next) {
        next = std::min(change.bytes.size(), at + kSector - (change.at + at) % kSector);
        sectors.push_back({change.at + at, change.bytes.substr(at, next - at)});
      }
    }
    if (order > 1) std::shuffle(sectors.begin(), sectors.end(), random);
    node->bytes = node->safe_bytes;
    for (const Unsynced& sector : sectors) {
      if (kept()) node->Apply(sector);
    }
    node->safe_bytes = node->bytes;
    node->unsynced.clear();
    node->stamp = ++last_stamp_;
  }
}

void FakeFiles::AddFolder(std::string_view path) {
  for (std::string key = Key(path); !key.empty(); key = FolderOf(key)) folders_.insert(key);
}

void FakeFiles::SetReadOnly(std::string_view folder, bool read_only) {
  AddFolder(folder);
  read_only_.erase(Key(folder));
  if (read_only) read_only_.insert(Key(folder));
}

std::vector<std::string> FakeFiles::Names() const {
  std::vector<std::string> names;
  for (const auto& [key, node] : nodes_) names.push_back(node->name);
  return names;
}

void FakeFiles::DieAtChange(int n) {
  dies_in_ = n;
  dead_ = false;
}

void FakeFiles::ResetCounts() {
  counts_.clear();
  changes_ = 0;
}

void FakeFiles::Operation(FileOp op, std::string_view path) const {
  if (dead_) return;
  ++counts_[op];
  const auto fault = faults_.find({Key(path), op});
  if (fault != faults_.end()) throw FileError(fault->second, path, "made to fail");
}

template <typename Write>
void FakeFiles::Change(FileOp op, std::string_view path, Write write,
                       const std::function<void()>& half) const {
  if (dead_) return;
  Operation(op, path);
  ++changes_;
  const bool fails = fails_in_ > 0 && --fails_in_ == 0;
  if (!fails && (dies_in_ == 0 || --dies_in_ > 0)) return write();
  dead_ = !fails;
  half();
  if (fails) throw FileError(Kind::kWrite, path, "made to fail");
  throw SuddenDeath();
}

template <typename Write>
bool FakeFiles::TryToChange(std::string_view path, Write write) const {
  try {
    Change(FileOp::kOtherChange, path, write);
    return !dead_;
  } catch (const FileError&) {
    return false;
  }
}

void FakeFiles::RefuseWhereReadOnly(std::string_view path) const {
  const std::string key = Key(path);
  if (IsFolder(key)) throw FileError(Kind::kCreate, path, "a folder");
  if (!IsFolder(FolderOf(key))) throw FileError(Kind::kCreate, path, "no such folder");
  if (read_only_.contains(FolderOf(key))) throw FileError(Kind::kCreate, path, "no permission");
}

// --- Files -------------------------------------------------------------------

bool FakeFiles::Exists(std::string_view path) const {
  Operation(FileOp::kExists, path);
  return Has(path);
}

bool FakeFiles::FolderExists(std::string_view path) const {
  Operation(FileOp::kExists, path);
  return IsFolder(Key(path));
}

FileStamp FakeFiles::Stamp(std::string_view path) const {
  Operation(FileOp::kStamp, path);
  return Has(path) ? NodeOf(path).stamp : kNoStamp;
}

std::shared_ptr<FakeFiles::Node> FakeFiles::NodeToOpen(std::string_view path, FileMode mode) const {
  if (IsFolder(Key(path))) throw FileError(Kind::kOpen, path, "a folder");
  if (!Has(path)) throw FileError(Kind::kMissing, path, "");
  if (Writes(mode) && read_only_.contains(FolderOf(Key(path)))) {
    throw FileError(Kind::kOpen, path, "no permission");
  }
  const std::shared_ptr<Node>& node = nodes_.at(Key(path));
  for (const FileMode held : node->open_modes) {
    if (!Allows(held, mode) || !Allows(mode, held)) throw FileError(Kind::kOpen, path, "in use");
  }
  return node;
}

std::string FakeFiles::Read(std::string_view path, std::size_t limit) const {
  Operation(FileOp::kRead, path);
  return NodeToOpen(path, kModeRead | kShareDenyNone)
      ->bytes.substr(0, limit == 0 ? std::string::npos : limit);
}

std::unique_ptr<FileStream> FakeFiles::Open(std::string_view path, FileMode mode) const {
  Operation(FileOp::kOpen, path);
  if (mode == kModeCreate) {
    RefuseWhereReadOnly(path);
    if (Has(path)) (void)NodeToOpen(path, mode);
    // Opening is const towards the file system's users, not towards its content.
    Change(FileOp::kCreateNew, path, [&] { const_cast<FakeFiles&>(*this).Make(path); });
  }
  return std::make_unique<MemoryStream>(*this, NodeToOpen(path, mode), mode);
}

std::unique_ptr<OutputFile> FakeFiles::StartOutput(std::string_view path) {
  return std::make_unique<MemoryOutputFile>(*this, path);
}

std::unique_ptr<PendingFile> FakeFiles::StagePieces(std::string_view path, FilePieces pieces) {
  std::string content;
  for (const std::string_view piece : pieces) content += piece;
  RefuseWhereReadOnly(path);
  Change(FileOp::kStage, path, [] {});
  return std::make_unique<MemoryPendingFile>(*this, path, content);
}

bool FakeFiles::CreateNew(std::string_view path, std::string_view twin) {
  if (Has(path)) {
    Operation(FileOp::kCreateNew, path);
    return false;
  }
  RefuseWhereReadOnly(path);
  Change(FileOp::kCreateNew, path, [&] {
    Make(path);
    if (Has(twin)) NodeOf(path).stamp = NodeOf(twin).stamp;
  });
  return true;
}

void FakeFiles::Append(std::string_view path, std::string_view content) {
  RefuseWhereReadOnly(path);
  Change(FileOp::kOtherChange, path,
         [&] { Put(path, std::string(Has(path) ? NodeOf(path).bytes : "").append(content)); });
}

bool FakeFiles::Delete(std::string_view path) {
  if (!Has(path) || read_only_.contains(FolderOf(Key(path)))) return false;
  return TryToChange(path, [&] { nodes_.erase(Key(path)); });
}

bool FakeFiles::Rename(std::string_view path, std::string_view new_path) {
  if (!Has(path) || Has(new_path) || read_only_.contains(FolderOf(Key(path)))) return false;
  return TryToChange(path, [&] {
    auto node = nodes_.extract(Key(path));
    node.key() = Key(new_path);
    node.mapped()->name = FullName(new_path);
    nodes_.insert(std::move(node));
  });
}

bool FakeFiles::SyncFolder(std::string_view path) {
  Change(FileOp::kOtherChange, path, [&] {
    const auto in_folder = [folder = FolderOf(Key(path))](const auto& entry) {
      return FolderOf(entry.first) == folder;
    };
    std::erase_if(safe_nodes_, in_folder);
    std::copy_if(nodes_.begin(), nodes_.end(), std::inserter(safe_nodes_, safe_nodes_.end()),
                 in_folder);
  });
  return true;
}

std::unique_ptr<FileLock> FakeFiles::HoldFile(std::string_view path) {
  if (keeps_locks && held_files_.contains(Key(path))) return nullptr;
  if (!Has(path)) static_cast<void>(CreateNew(path));
  return std::make_unique<MemoryHeldFile>(*this, std::string(path));
}

std::vector<std::string> FakeFiles::Find(std::string_view folder, std::string_view mask) const {
  std::vector<std::string> names;
  for (const auto& [key, node] : nodes_) {
    const std::string name = node->name.substr(node->name.rfind('\\') + 1);
    if (FolderOf(key) == Key(folder) && MatchesMask(name, mask)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::unique_ptr<FileLock> FakeFiles::Lock(std::string_view path,
                                          const std::function<void()>& on_busy) {
  const std::string key = FolderOf(Key(path));
  for (int i = 0; !locks_.insert(key).second; ++i) {
    if (i == 100'000) throw std::logic_error("waits for itself: " + key);
    on_busy();
  }
  return std::make_unique<MemoryLock>(*this, key);
}

}  // namespace customsconv
