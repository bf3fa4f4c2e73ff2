#include "support/fake_files.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "platform/full_path.h"
#include "platform/name_mask.h"

namespace customsconv {
namespace {

bool IsChange(FileOp op) {
  switch (op) {
    case FileOp::kStage:
    case FileOp::kCommit:
    case FileOp::kCreateNew:
    case FileOp::kAppend:
    case FileOp::kDelete:
    case FileOp::kStreamWrite:
      return true;
    default:
      return false;
  }
}

// Whether a file that is open in mode `held` lets another one open it in `wanted`.
bool Allows(FileMode held, FileMode wanted) {
  const auto share = held == kModeCreate ? kShareExclusive : held & 0x0070;
  const bool writes = wanted == kModeCreate || (wanted & kModeAccessMask) != kModeRead;
  if (share == kShareDenyNone) return true;
  return share == kShareDenyWrite && !writes;
}

}  // namespace

// --- An open file ------------------------------------------------------------

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
    const std::size_t start = std::min(position_, node_->bytes.size());
    const std::size_t taken = std::min(count, node_->bytes.size() - start);
    if (taken > 0) std::memcpy(to, node_->bytes.data() + start, taken);
    position_ += taken;
    return taken;
  }

  void Write(const void* from, std::size_t count) override {
    RefuseWhenReadOnly();
    files_.ChangeBytes(FileOp::kStreamWrite, node_->name, {static_cast<const char*>(from), count},
                       [this](std::string_view bytes) {
                         if (node_->bytes.size() < position_) node_->bytes.resize(position_);
                         node_->bytes.replace(position_, bytes.size(), bytes);
                         position_ += bytes.size();
                         files_.Touch(*node_);
                       });
  }

  std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override {
    const std::int64_t base = origin == SeekOrigin::kBegin ? 0
                              : origin == SeekOrigin::kCurrent
                                  ? static_cast<std::int64_t>(position_)
                                  : Size();
    if (base + offset < 0) throw FileError(FileError::Kind::kRead, node_->name, "Invalid argument");
    position_ = static_cast<std::size_t>(base + offset);
    return base + offset;
  }

  [[nodiscard]] std::int64_t Size() const override {
    return static_cast<std::int64_t>(node_->bytes.size());
  }

  void Truncate(std::int64_t size) override {
    RefuseWhenReadOnly();
    if (files_.Change(FileOp::kStreamWrite, node_->name) != ChangeFate::kDone) return;
    node_->bytes.resize(static_cast<std::size_t>(size));
    files_.Touch(*node_);
  }

  [[nodiscard]] FileStamp Stamp() const override { return node_->stamp; }

 private:
  void RefuseWhenReadOnly() const {
    if (mode_ != kModeCreate && (mode_ & kModeAccessMask) == kModeRead) {
      throw FileError(FileError::Kind::kWrite, node_->name, "Bad file descriptor");
    }
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
  void Commit() override {
    files_.ChangeBytes(FileOp::kCommit, path_, content_, [this](std::string_view bytes) {
      if (bytes.size() == content_.size()) files_.Put(path_, content_);  // whole or not at all
    });
  }

 private:
  FakeFiles& files_;
  std::string path_;
  std::string content_;
};

class FakeFiles::MemoryLock : public FileLock {
 public:
  MemoryLock(FakeFiles& files, std::string key) : files_(files), key_(std::move(key)) {
    if (!files_.locks_.insert(key_).second) {
      throw std::logic_error("would wait for ever for its own lock: " + key_);
    }
  }
  ~MemoryLock() override { files_.locks_.erase(key_); }
  MemoryLock(const MemoryLock&) = delete;
  MemoryLock& operator=(const MemoryLock&) = delete;

 private:
  FakeFiles& files_;
  std::string key_;
};

// --- Names -------------------------------------------------------------------

std::string FakeFiles::FullName(std::string_view path) const {
  return FullPath(path, current_folder);
}

// A folder's key has no closing separator; the key of the root is empty.
std::string FakeFiles::Key(std::string_view path) const {
  std::string key = UpperCaseRu(FullName(path));
  if (key.ends_with('\\')) key.pop_back();
  return key;
}

std::string FakeFiles::FolderOf(std::string_view key) {
  const std::size_t separator = key.rfind('\\');
  return std::string(separator == key.npos ? "" : key.substr(0, separator));
}

std::string FakeFiles::Identity(std::string_view path) const { return Key(path); }

std::string FakeFiles::ShortName(std::string_view path) const {
  return Exists(path) || FolderExists(path) ? FullName(path) : std::string();
}

FakeFiles::Node* FakeFiles::FindNode(std::string_view path) const {
  const auto found = nodes_.find(Key(path));
  return found == nodes_.end() ? nullptr : found->second.get();
}

FakeFiles::Node& FakeFiles::NodeFor(std::string_view path) {
  std::shared_ptr<Node>& node = nodes_[Key(path)];
  if (!node) {
    node = std::make_shared<Node>();
    node->name = FullName(path);
  }
  return *node;
}

void FakeFiles::Touch(Node& node) const { node.stamp = ++last_stamp_; }

// --- The world of a test -----------------------------------------------------

void FakeFiles::Put(std::string_view path, std::string_view bytes) {
  if (dead_) return;
  Node& node = NodeFor(path);
  node.bytes = bytes;
  Touch(node);
  if (const std::string folder = FolderOf(node.name); !folder.empty()) AddFolder(folder);
}

const std::string& FakeFiles::BytesOf(std::string_view path) const {
  const Node* node = FindNode(path);
  if (node == nullptr) throw std::out_of_range("no such file: " + std::string(path));
  return node->bytes;
}

bool FakeFiles::Has(std::string_view path) const { return FindNode(path) != nullptr; }

void FakeFiles::Remove(std::string_view path) { nodes_.erase(Key(path)); }

void FakeFiles::AddFolder(std::string_view path) {
  for (std::string key = Key(path); !key.empty(); key = FolderOf(key)) folders_.insert(key);
}

bool FakeFiles::IsFolder(const std::string& key) const {
  return folders_.contains(key) || key.empty() || key == FolderOf(Key("X"));
}

void FakeFiles::SetStamp(std::string_view path, FileStamp stamp) {
  Node* node = FindNode(path);
  if (node == nullptr) throw std::out_of_range("no such file: " + std::string(path));
  node->stamp = stamp;
}

void FakeFiles::SetReadOnly(std::string_view folder, bool read_only) {
  AddFolder(folder);
  if (read_only) {
    read_only_.insert(Key(folder));
  } else {
    read_only_.erase(Key(folder));
  }
}

std::vector<std::string> FakeFiles::Names() const {
  std::vector<std::string> names;
  for (const auto& [key, node] : nodes_) names.push_back(node->name);
  return names;
}

// --- Faults ------------------------------------------------------------------

void FakeFiles::FailPath(std::string_view path, FileError::Kind kind) {
  path_faults_[Key(path)].push_back({std::nullopt, kind});
}

void FakeFiles::FailPath(std::string_view path, FileOp op, FileError::Kind kind) {
  path_faults_[Key(path)].push_back({op, kind});
}

void FakeFiles::FailNth(FileOp op, int n, FileError::Kind kind) {
  nth_faults_.push_back({op, n, kind});
}

void FakeFiles::FailChange(int n, bool tear) {
  change_fails_in_ = n;
  tear_ = tear;
}

void FakeFiles::DieAtChange(int n, bool tear) {
  dies_in_ = n;
  tear_ = tear;
}

void FakeFiles::Revive() {
  dead_ = false;
  dies_in_ = 0;
}

void FakeFiles::StopFailing() {
  path_faults_.clear();
  nth_faults_.clear();
  change_fails_in_ = 0;
  dies_in_ = 0;
}

int FakeFiles::Count(FileOp op) const {
  const auto found = counts_.find(op);
  return found == counts_.end() ? 0 : found->second;
}

void FakeFiles::ResetCounts() {
  counts_.clear();
  changes_ = 0;
}

// Counts the operation and refuses it where a test asked for that.
void FakeFiles::Operation(FileOp op, std::string_view path) const {
  if (dead_) return;
  ++counts_[op];
  if (const auto faults = path_faults_.find(Key(path)); faults != path_faults_.end()) {
    for (const PathFault& fault : faults->second) {
      if (!fault.op || *fault.op == op) throw FileError(fault.kind, path, "made to fail");
    }
  }
  for (NthFault& fault : nth_faults_) {
    if (fault.op == op && fault.left > 0 && --fault.left == 0) {
      throw FileError(fault.kind, path, "made to fail");
    }
  }
}

FakeFiles::ChangeFate FakeFiles::Change(FileOp op, std::string_view path) const {
  if (dead_) return ChangeFate::kIgnored;
  Operation(op, path);
  if (!IsChange(op)) return ChangeFate::kDone;
  ++changes_;
  if (dies_in_ > 0 && --dies_in_ == 0) {
    if (tear_) return ChangeFate::kTornThenDies;
    dead_ = true;
    throw SuddenDeath();
  }
  if (change_fails_in_ > 0 && --change_fails_in_ == 0) {
    if (tear_) return ChangeFate::kTornThenFails;
    throw FileError(FileError::Kind::kWrite, path, "made to fail");
  }
  return ChangeFate::kDone;
}

template <typename Write>
void FakeFiles::ChangeBytes(FileOp op, std::string_view path, std::string_view bytes,
                            Write write) const {
  switch (Change(op, path)) {
    case ChangeFate::kIgnored:
      return;
    case ChangeFate::kDone:
      write(bytes);
      return;
    case ChangeFate::kTornThenDies:
      write(bytes.substr(0, bytes.size() / 2));
      dead_ = true;
      throw SuddenDeath();
    case ChangeFate::kTornThenFails:
      write(bytes.substr(0, bytes.size() / 2));
      throw FileError(FileError::Kind::kWrite, path, "made to fail");
  }
}

void FakeFiles::RefuseWhereReadOnly(std::string_view path, FileError::Kind kind) const {
  const std::string key = Key(path);
  if (IsFolder(key)) throw FileError(kind, path, "Is a directory");
  const std::string folder = FolderOf(key);
  if (!IsFolder(folder)) throw FileError(kind, path, "No such file or directory");
  if (read_only_.contains(folder)) throw FileError(kind, path, "Permission denied");
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
  const Node* node = FindNode(path);
  return node == nullptr ? kNoStamp : node->stamp;
}

std::string FakeFiles::Read(std::string_view path, std::size_t limit) const {
  Operation(FileOp::kRead, path);
  const Node* node = FindNode(path);
  if (node == nullptr) {
    if (IsFolder(Key(path))) {
      throw FileError(FileError::Kind::kOpen, path, "Is a directory");
    }
    throw FileError(FileError::Kind::kMissing, path, "");
  }
  if (std::any_of(node->open_modes.begin(), node->open_modes.end(),
                  [](FileMode held) { return !Allows(held, kModeRead); })) {
    throw FileError(FileError::Kind::kOpen, path, "in use");
  }
  return limit == 0 ? node->bytes : node->bytes.substr(0, limit);
}

std::unique_ptr<PendingFile> FakeFiles::Stage(std::string_view path, std::string_view content) {
  RefuseWhereReadOnly(path, FileError::Kind::kCreate);
  ChangeBytes(FileOp::kStage, path, content, [](std::string_view) {});
  return std::make_unique<MemoryPendingFile>(*this, path, content);
}

bool FakeFiles::CreateNew(std::string_view path) {
  if (Has(path)) {
    Operation(FileOp::kCreateNew, path);
    return false;
  }
  RefuseWhereReadOnly(path, FileError::Kind::kCreate);
  ChangeBytes(FileOp::kCreateNew, path, "", [&](std::string_view) { Put(path, ""); });
  return true;
}

void FakeFiles::Append(std::string_view path, std::string_view content) {
  RefuseWhereReadOnly(path, Has(path) ? FileError::Kind::kWrite : FileError::Kind::kCreate);
  ChangeBytes(FileOp::kAppend, path, content, [&](std::string_view bytes) {
    std::string whole = Has(path) ? BytesOf(path) : std::string();
    Put(path, whole.append(bytes));
  });
}

bool FakeFiles::Delete(std::string_view path) {
  if (dead_ || !Has(path) || read_only_.contains(FolderOf(Key(path)))) return false;
  if (Change(FileOp::kDelete, path) != ChangeFate::kDone) return false;
  Remove(path);
  return true;
}

std::unique_ptr<FileStream> FakeFiles::Open(std::string_view path, FileMode mode) const {
  Operation(FileOp::kOpen, path);
  Node* node = FindNode(path);
  if (mode == kModeCreate && !dead_) {
    RefuseWhereReadOnly(path, FileError::Kind::kCreate);
  }
  if (node != nullptr &&
      std::any_of(node->open_modes.begin(), node->open_modes.end(),
                  [mode](FileMode held) { return !Allows(held, mode) || !Allows(mode, held); })) {
    throw FileError(FileError::Kind::kOpen, path, "in use");
  }
  if (mode == kModeCreate && !dead_) {
    // Opening is const towards the file system's users, not towards its content.
    auto& self = const_cast<FakeFiles&>(*this);
    ChangeBytes(FileOp::kCreateNew, path, "", [&](std::string_view) { self.Put(path, ""); });
    node = FindNode(path);
  }
  if (node == nullptr) {
    if (IsFolder(Key(path))) {
      throw FileError(FileError::Kind::kOpen, path, "Is a directory");
    }
    throw FileError(FileError::Kind::kMissing, path, "");
  }
  return std::make_unique<MemoryStream>(*this, nodes_.find(Key(path))->second, mode);
}

std::vector<std::string> FakeFiles::Find(std::string_view folder, std::string_view mask) const {
  Operation(FileOp::kFind, folder);
  const std::string key = Key(folder);
  std::vector<std::string> names;
  for (const auto& [file, node] : nodes_) {
    if (FolderOf(file) != key) continue;
    const std::string name = node->name.substr(node->name.rfind('\\') + 1);
    if (MatchesMask(name, mask)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::unique_ptr<FileLock> FakeFiles::Lock(std::string_view path) {
  Operation(FileOp::kLock, path);
  if (dead_) return nullptr;
  return std::make_unique<MemoryLock>(*this, FolderOf(Key(path)));
}

}  // namespace customsconv
