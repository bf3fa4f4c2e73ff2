#include "cli/terminal_dialogs.h"

#include <algorithm>
#include <utility>

#include "base/unicode.h"
#include "text/blanks.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv::cli {
namespace {

constexpr std::string_view kClearLine = "\r\x1B[K";

}  // namespace

std::string OneLine(std::string_view utf8) {
  std::string text;
  for (const std::string_view line : Words(utf8, CharSet("\r\n"))) {
    if (!text.empty()) text += ' ';
    text += Trim(line);
  }
  return text;
}

// A line that is overwritten while something runs and gone when it ends.
class TerminalDialogs::Line : public Progress {
 public:
  Line(TerminalDialogs& dialogs, std::string title, std::size_t steps)
      : dialogs_(dialogs), title_(std::move(title)), steps_(steps) {
    dialogs_.ShowProgressLine(title_);
    const bool seen = dialogs_.output_.IsTerminal();
    if (steps_ == 0 && !seen && !dialogs_.quiet_) {
      dialogs_.output_.Remark("wait: " + title_ + "\n");
    }
  }
  ~Line() override { dialogs_.ClearProgressLine(); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  void Show(std::size_t done) override {
    dialogs_.ShowProgressLine(title_ + " " + std::to_string(done) + "/" + std::to_string(steps_));
  }

 private:
  TerminalDialogs& dialogs_;
  std::string title_;
  std::size_t steps_;
};

bool TerminalDialogs::Confirm(std::string_view question) {
  pauses_.before_long();
  Show("question", question);
  return Ask({"Yes", "No"}) == 1;
}

LockAnswer TerminalDialogs::Choose(std::string_view title, std::string_view question,
                                   const std::vector<std::string>& choices) {
  pauses_.before_long();
  Show("choice", std::string(title).append(" ").append(question));
  if (lock_answer_) return *lock_answer_;
  switch (Ask(choices)) {
    case 2:
      return LockAnswer::kTakeOver;
    case 3:
      return LockAnswer::kAbandon;
    default:
      return LockAnswer::kWait;
  }
}

std::unique_ptr<Progress> TerminalDialogs::StartProgress(std::string_view title,
                                                         std::size_t steps) {
  return std::make_unique<Line>(*this, Utf8FromWin(title), steps);
}

void TerminalDialogs::Status(std::string_view text) {
  if (text.empty()) {
    ClearProgressLine();
  } else {
    ShowProgressLine(Utf8FromWin(text));
  }
}

void TerminalDialogs::ShowProgressLine(std::string_view utf8) {
  if (quiet_ || !output_.IsTerminal()) return;
  output_.Remark(std::string(kClearLine).append(utf8));
  line_shown_ = true;
}

void TerminalDialogs::ClearProgressLine() {
  if (line_shown_) output_.Remark(kClearLine);
  line_shown_ = false;
}

void TerminalDialogs::Warn(const std::string& utf8) {
  const auto is_same = [&](const Shown& shown) { return shown.text == utf8; };
  if (std::none_of(shown_.begin(), shown_.end(), is_same)) Keep("warning", utf8);
}

void TerminalDialogs::Show(std::string_view kind, std::string_view text_1251) {
  Keep(kind, Utf8FromWin(text_1251));
}

void TerminalDialogs::Keep(std::string_view kind, std::string utf8) {
  ClearProgressLine();
  shown_.push_back({std::string(kind), std::move(utf8)});
  if (quiet_) return;
  output_.Remark(std::string(kind).append(": ").append(OneLine(shown_.back().text)).append("\n"));
}

std::size_t TerminalDialogs::Ask(const std::vector<std::string>& choices) {
  if (quiet_ || !output_.IsTerminal()) return 0;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    output_.Remark(std::to_string(i + 1) + " - " + Utf8FromWin(TrimRight(choices[i])) + "\n");
  }
  output_.Remark("> ");
  std::string answer;
  if (!output_.ReadAnswer(answer)) return 0;
  StopIfInterrupted();
  const std::int32_t number = IntOr(Trim(answer), 0);
  return number > 0 && static_cast<std::size_t>(number) <= choices.size()
             ? static_cast<std::size_t>(number)
             : 0;
}

}  // namespace customsconv::cli
