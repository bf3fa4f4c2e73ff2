#ifndef CUSTOMSCONV_CLI_TERMINAL_DIALOGS_H_
#define CUSTOMSCONV_CLI_TERMINAL_DIALOGS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "platform/dialogs.h"

namespace customsconv::cli {

// A message on one line, whatever line breaks it holds.
[[nodiscard]] std::string OneLine(std::string_view utf8);

// The system's messages on the remark stream, one a line: "message: TEXT", "exception: TEXT",
// "question: TEXT", "choice: TEXT". These are kept, in the order in which they were shown, for
// JSON output. A wait for somebody else, of unknown length, is a progress line or, without a
// terminal, "wait: TEXT".
class TerminalDialogs : public Dialogs {
 public:
  struct Shown {
    std::string kind;
    std::string text;  // UTF-8
  };

  // Both must outlive the dialogs.
  TerminalDialogs(Output& output, const Pauses& pauses) : output_(output), pauses_(pauses) {}

  // Keeps messages and progress off the screen and asks nobody: who wanted it so does not look, or
  // finds the messages in the JSON output.
  void set_quiet(bool quiet) { quiet_ = quiet; }

  // Answers the lock question without asking.
  void set_lock_answer(std::optional<LockAnswer> answer) { lock_answer_ = answer; }

  void Message(std::string_view text) override { Show("message", text); }
  void Exception(std::string_view text) override { Show("exception", text); }
  bool Confirm(std::string_view question) override;
  LockAnswer Choose(std::string_view title, std::string_view question,
                    const std::vector<std::string>& choices) override;
  std::unique_ptr<Progress> StartProgress(std::string_view title, std::size_t steps) override;
  void Status(std::string_view text) override;

  // A message of the program's own, shown once a run.
  void Warn(const std::string& utf8);

  // A progress line that stands until the next remark; nothing without a terminal.
  void ShowProgressLine(std::string_view utf8);
  void ClearProgressLine();

  [[nodiscard]] const std::vector<Shown>& shown() const CUSTOMSCONV_LIFETIME_BOUND {
    return shown_;
  }

 private:
  class Line;
  void Show(std::string_view kind, std::string_view text_1251);
  void Keep(std::string_view kind, std::string utf8);
  // The number of the person's choice, from 1; 0 when nobody answers.
  std::size_t Ask(const std::vector<std::string>& choices);

  Output& output_;
  const Pauses& pauses_;
  bool quiet_ = false;
  std::optional<LockAnswer> lock_answer_;
  std::vector<Shown> shown_;
  bool line_shown_ = false;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_TERMINAL_DIALOGS_H_
