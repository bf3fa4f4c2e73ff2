#include "entry/library_host.h"

#include "platform/posix/file_descriptor.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"
#include "services/run_log.h"

namespace customsconv {
namespace {

constexpr std::string_view kLogFile = "customsconv.log";

// Writes every message as a line of the log.
class LogDialogs : public QuietDialogs {
 public:
  void Start(std::string_view folder, Host& host) {
    file_ = std::string(folder).append(kLogFile);
    host_ = &host;
  }

  void Message(std::string_view text) override { Log("message: ", text); }
  void Exception(std::string_view text) override { Log("exception: ", text); }
  bool Confirm(std::string_view question) override {
    Log("question: ", question);
    return QuietDialogs::Confirm(question);
  }
  LockAnswer Choose(std::string_view title, std::string_view question,
                    const std::vector<std::string>& choices) override {
    Log("choice: ", question);
    return QuietDialogs::Choose(title, question, choices);
  }
  // A wait for another station, of unknown length.
  std::unique_ptr<Progress> StartProgress(std::string_view title, std::size_t steps) override {
    if (steps == 0) Log("wait: ", title);
    return QuietDialogs::StartProgress(title, steps);
  }

 private:
  // A log that cannot be written is told as a message, which must not be logged in turn.
  void Log(std::string_view kind, std::string_view text) {
    if (host_ == nullptr || writing_) return;
    writing_ = true;
    LogLine(std::string(kind).append(text), file_, *host_);
    writing_ = false;
  }

  std::string file_;
  Host* host_ = nullptr;
  bool writing_ = false;
};

}  // namespace

class LibraryHost::Parts {
 public:
  Parts() { posix::OpenStandardDescriptors(); }

  LogDialogs dialogs;
  PosixHost host{dialogs};
};

LibraryHost::LibraryHost() : parts_(std::make_unique<Parts>()) {}
LibraryHost::~LibraryHost() = default;

Host& LibraryHost::host() { return parts_->host.host(); }

void LibraryHost::StartLog(std::string_view program_dir) {
  parts_->dialogs.Start(program_dir, parts_->host.host());
}

}  // namespace customsconv
