#ifndef CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_
#define CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"
#include "support/text.h"

namespace customsconv {

// Records what is shown and answers from queues; an empty queue answers with
// the safe default (No; go on waiting).
class ScriptedDialogs : public Dialogs {
 public:
  void Message(std::string_view text) override { Show("message: ", text, &messages); }
  void Exception(std::string_view text) override { Show("exception: ", text, &exceptions); }
  void Status(std::string_view text) override { Show("status: ", text, nullptr); }
  [[nodiscard]] bool Confirm(std::string_view question) override {
    Show("confirm: ", question, &questions);
    return Answer(confirmations, false);
  }
  [[nodiscard]] LockAnswer Choose(std::string_view title, std::string_view question,
                                  const std::vector<std::string>& choices) override {
    Show("choose: " + Utf8(title) + ": ", question, &questions);
    log.back() += " [";
    for (const std::string& choice : choices) log.back() += Utf8(choice) + "|";
    log.back().back() = ']';
    return Answer(lock_answers, LockAnswer::kWait);
  }
  [[nodiscard]] std::unique_ptr<Progress> StartProgress(std::string_view title,
                                                        std::size_t steps) override {
    Show("progress: ", title, &progress_titles);
    log.back() += " (" + std::to_string(steps) + ")";
    return std::make_unique<RecordedProgress>(log);
  }

  // What the person will answer, first in first out.
  std::deque<bool> confirmations;
  std::deque<LockAnswer> lock_answers;
  // Runs while a question is open: the place for what others do meanwhile.
  std::function<void()> on_question;

  // Everything that was shown, in order, as UTF-8 lines for comparing: "message: …",
  // "exception: …", "confirm: …", "choose: title: question [a|b|c]", "progress: title (steps)",
  // "progress: done", "progress closed", "status: …".
  std::vector<std::string> log;
  // The same by kind, the texts as they came (code page 1251).
  std::vector<std::string> messages, exceptions, questions, progress_titles;

  void Clear() {  // forgets what was shown, keeps the answers
    for (auto* list : {&log, &messages, &exceptions, &questions, &progress_titles}) list->clear();
  }

 private:
  class RecordedProgress : public Progress {
   public:
    explicit RecordedProgress(std::vector<std::string>& log) : log_(log) {}
    ~RecordedProgress() override { log_.emplace_back("progress closed"); }
    void Show(std::size_t done) override { log_.push_back("progress: " + std::to_string(done)); }

   private:
    std::vector<std::string>& log_;
  };

  void Show(const std::string& kind, std::string_view text, std::vector<std::string>* list) {
    log.push_back(kind + Utf8(text));
    if (list != nullptr) list->emplace_back(text);
  }

  template <typename T>
  T Answer(std::deque<T>& answers, T otherwise) const {
    if (on_question) on_question();
    if (answers.empty()) return otherwise;
    const T answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_SCRIPTED_DIALOGS_H_
