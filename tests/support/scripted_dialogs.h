#ifndef CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_
#define CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"

namespace customsconv {

// Records what is shown and answers from queues; an empty queue answers with
// the safe default (No; go on waiting).
class ScriptedDialogs : public Dialogs {
 public:
  void Message(std::string_view text) override;
  void Exception(std::string_view text) override;
  [[nodiscard]] bool Confirm(std::string_view question) override;
  [[nodiscard]] LockAnswer Choose(std::string_view title, std::string_view question,
                                  const std::vector<std::string>& choices) override;
  [[nodiscard]] std::unique_ptr<Progress> StartProgress(std::string_view title,
                                                        std::size_t steps) override;
  void Status(std::string_view text) override;

  // What the person will answer, first in first out.
  std::deque<bool> confirmations;
  std::deque<LockAnswer> lock_answers;
  // Runs while a question is open: the place for what others do meanwhile.
  std::function<void()> on_question;

  // Everything that was shown, in order, as UTF-8 lines for comparing:
  // "message: …", "exception: …", "confirm: …", "choose: title: question
  // [a|b|c]", "progress: title (steps)", "progress: done", "progress closed",
  // "status: …".
  std::vector<std::string> log;
  // The same by kind, the texts as they came (code page 1251).
  std::vector<std::string> messages;
  std::vector<std::string> exceptions;
  std::vector<std::string> questions;  // of Confirm and of Choose
  std::vector<std::string> statuses;
  std::vector<std::string> progress_titles;

  void Clear();  // forgets what was shown, keeps the answers
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_
