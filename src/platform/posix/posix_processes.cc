#include "platform/posix/posix_processes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>

#include "base/unicode.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/system_names.h"

namespace customsconv::posix {
namespace {

// The file's name for a process that works in another folder than this one.
std::string AbsoluteName(const std::string& name) {
  char current[PATH_MAX];
  const bool relative = !name.starts_with('/') && ::getcwd(current, sizeof current) != nullptr;
  return relative ? std::string(current).append("/").append(name) : name;
}

// What the new process needs, made before it is split off: behind a fork only
// plain system calls are safe.
class PreparedStart {
 public:
  explicit PreparedStart(const ProgramStart& start)
      : words_(CommandWords(start.command + " " + start.parameters)),
        folder_(start.folder.empty() ? "" : SystemName(start.folder)) {
    if (words_.empty()) return;
    for (std::string& word : words_) {
      const bool program = &word == &words_.front();
      const bool in_path = word.find_first_of("\\/") == word.npos;
      word = program && !in_path ? AbsoluteName(SystemName(word)) : Utf8FromWin(word);
    }
    for (std::string& word : words_) arguments_.push_back(word.data());
    arguments_.push_back(nullptr);
  }
  PreparedStart(const PreparedStart&) = delete;
  PreparedStart& operator=(const PreparedStart&) = delete;

  [[nodiscard]] bool empty() const { return words_.empty(); }

  // Becomes the program; returns only when that fails.
  void Run() const {
    if (!folder_.empty() && ::chdir(folder_.c_str()) != 0) return;
    ::execvp(arguments_.front(), arguments_.data());
  }

 private:
  std::vector<std::string> words_;
  std::string folder_;
  std::vector<char*> arguments_;  // of words_, closed with a null
};

// In the new process: without waiting, a grandchild runs the program, so that
// nobody has to collect its status.
[[noreturn]] void RunChild(const PreparedStart& prepared, bool wait, int report) {
  const pid_t grandchild = wait ? 0 : ::fork();
  if (grandchild > 0) ::_exit(0);
  if (grandchild == 0) prepared.Run();
  const char failed = 1;
  static_cast<void>(::write(report, &failed, 1) == 1);
  ::_exit(127);
}

int ExitStatusOf(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

std::vector<std::string> CommandWords(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false;
  bool in_word = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      in_word = false;
      continue;
    }
    if (!in_word) words.emplace_back();
    in_word = true;
    if (c == '"') {
      quoted = !quoted;
    } else {
      words.back() += c;
    }
  }
  return words;
}

std::optional<int> PosixProcesses::Start(const ProgramStart& start) {
  const PreparedStart prepared(start);
  int ends[2];
  if (prepared.empty() || ::pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
  const FileDescriptor report(ends[0]);
  FileDescriptor reporter(ends[1]);
  const pid_t child = ::fork();
  if (child < 0) return std::nullopt;
  if (child == 0) RunChild(prepared, start.wait, reporter.number());
  // The program's start closes the other end; a byte says that it failed.
  if (!reporter.Close()) return std::nullopt;
  char failed = 0;
  const bool started = report.Read(&failed, 1) == 0;
  const int status = ExitStatusOf(child);
  if (!started) return std::nullopt;
  return start.wait ? status : 0;
}

std::string PosixProcesses::AssociatedProgram(std::string_view file) const {
  if (::access(SystemName(file).c_str(), R_OK) != 0) return "";
  const char* folders = std::getenv("PATH");
  std::string_view rest = folders == nullptr ? "" : folders;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    const std::string opener = std::string(rest.substr(0, end)) + "/xdg-open";
    if (::access(opener.c_str(), X_OK) == 0) return NameFromSystem(opener).value_or("");
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return "";
}

std::string PosixProcesses::ExecutableFolder() const {
  char name[PATH_MAX];
  const ssize_t size = ::readlink("/proc/self/exe", name, sizeof name);
  if (size <= 0) return "";
  std::string folder =
      NameFromSystem(FolderOf(std::string(name, static_cast<std::size_t>(size)))).value_or("");
  std::replace(folder.begin(), folder.end(), '/', '\\');
  return folder.empty() || folder.ends_with('\\') ? folder : folder + "\\";
}

}  // namespace customsconv::posix
