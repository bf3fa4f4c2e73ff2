#ifndef CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_
#define CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "support/fake_files.h"
#include "support/text.h"

namespace customsconv {

// A clock that stands still until a test moves it. It starts on 15 March 2024,
// 10:30. Sleep moves it by what was slept and then runs `on_sleep`.
class FakeClock : public Clock {
 public:
  [[nodiscard]] DateTime Now() const override { return static_cast<double>(now_) / kDay; }
  [[nodiscard]] Date Today() const override { return static_cast<Date>(now_ / kDay); }
  [[nodiscard]] std::uint64_t Ticks() const override { return ticks_ += ticks_each_look; }
  void Sleep(std::uint32_t milliseconds) override {
    Advance(milliseconds);
    slept.push_back(milliseconds);
    if (on_sleep) on_sleep(milliseconds);
  }

  // Sets date and time of day; the ticks go on counting from where they were.
  void Set(CalendarDay day, int hour = 0, int minute = 0, int second = 0) {
    now_ = DateOf(day).value() * kDay + ((hour * 60LL + minute) * 60 + second) * 1000;
  }
  void Advance(std::int64_t milliseconds) {
    now_ += milliseconds;
    ticks_ += static_cast<std::uint64_t>(milliseconds);
  }

  std::uint64_t ticks_each_look = 0;  // that pass while the program works
  std::vector<std::uint32_t> slept;   // every Sleep, in order
  std::function<void(std::uint32_t)> on_sleep;

 private:
  static constexpr std::int64_t kDay = 24LL * 60 * 60 * 1000;
  std::int64_t now_ = DateOf({2024, 3, 15}).value() * kDay + (10LL * 60 + 30) * 60 * 1000;
  mutable std::uint64_t ticks_ = 1000;
};

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

// Starts nothing and records what was asked for.
class FakeProcesses : public Processes {
 public:
  [[nodiscard]] std::optional<int> Start(const ProgramStart& start) override {
    starts.push_back(start);
    if (results.empty()) return 0;
    const std::optional<int> result = results.front();
    results.pop_front();
    return result;
  }
  [[nodiscard]] std::string AssociatedProgram(std::string_view) const override {
    return associated_program;
  }
  [[nodiscard]] std::string ExecutableFolder() const override { return executable_folder; }

  std::vector<ProgramStart> starts;
  std::deque<std::optional<int>> results;  // of the next starts; 0 when used up
  std::string associated_program;          // empty: none
  std::string executable_folder = "C:\\PROG\\";
};

// A world in memory for tests: files that nobody else sees, a clock that stands
// still, a person who answers from a script. Usable wherever a Host is wanted;
// must outlive what it was handed to.
class FakeHost {
 public:
  FakeHost() = default;
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  operator Host&() { return host_; }  // implicit on purpose

  FakeFiles files;
  FakeClock clock;
  ScriptedDialogs dialogs;
  FakeProcesses processes;

 private:
  Host host_{files, clock, dialogs, processes};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_
