#include "support/scripted_dialogs.h"

#include "support/text.h"

namespace customsconv {
namespace {

class RecordedProgress : public Progress {
 public:
  explicit RecordedProgress(std::vector<std::string>& log) : log_(log) {}
  ~RecordedProgress() override { log_.emplace_back("progress closed"); }
  void Show(std::size_t done) override { log_.push_back("progress: " + std::to_string(done)); }

 private:
  std::vector<std::string>& log_;
};

template <typename Answer>
Answer Next(std::deque<Answer>& answers, Answer otherwise) {
  if (answers.empty()) return otherwise;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

}  // namespace

void ScriptedDialogs::Message(std::string_view text) {
  log.push_back("message: " + Utf8(text));
  messages.emplace_back(text);
}

void ScriptedDialogs::Exception(std::string_view text) {
  log.push_back("exception: " + Utf8(text));
  exceptions.emplace_back(text);
}

bool ScriptedDialogs::Confirm(std::string_view question) {
  log.push_back("confirm: " + Utf8(question));
  questions.emplace_back(question);
  if (on_question) on_question();
  return Next(confirmations, false);
}

LockAnswer ScriptedDialogs::Choose(std::string_view title, std::string_view question,
                                   const std::vector<std::string>& choices) {
  std::string line = "choose: " + Utf8(title) + ": " + Utf8(question) + " [";
  for (const std::string& choice : choices) {
    if (&choice != &choices.front()) line += '|';
    line += Utf8(choice);
  }
  log.push_back(line + "]");
  questions.emplace_back(question);
  if (on_question) on_question();
  return Next(lock_answers, LockAnswer::kWait);
}

std::unique_ptr<Progress> ScriptedDialogs::StartProgress(std::string_view title,
                                                         std::size_t steps) {
  log.push_back("progress: " + Utf8(title) + " (" + std::to_string(steps) + ")");
  progress_titles.emplace_back(title);
  return std::make_unique<RecordedProgress>(log);
}

void ScriptedDialogs::Status(std::string_view text) {
  log.push_back("status: " + Utf8(text));
  statuses.emplace_back(text);
}

void ScriptedDialogs::Clear() {
  for (auto* list : {&log, &messages, &exceptions, &questions, &statuses, &progress_titles}) {
    list->clear();
  }
}

}  // namespace customsconv
