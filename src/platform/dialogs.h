#ifndef CUSTOMSCONV_PLATFORM_DIALOGS_H_
#define CUSTOMSCONV_PLATFORM_DIALOGS_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// A wait indication, taken down on destruction.
class Progress {
 public:
  virtual ~Progress() = default;
  // `done` of the steps that were announced are over.
  virtual void Show(std::size_t done) = 0;
};

// What the lock question is answered with, in the order of its choices.
enum class LockAnswer { kWait, kTakeOver, kAbandon };

// Talks to the person at the machine. All texts are code page 1251. Calls return
// once the person has answered; where there is nobody, questions are answered
// with the safe default (No; go on waiting).
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual void Message(std::string_view text) = 0;
  // The host application's exception display.
  virtual void Exception(std::string_view text) = 0;
  // A Yes/No question.
  [[nodiscard]] virtual bool Confirm(std::string_view question) = 0;
  // A window with one button a choice.
  [[nodiscard]] virtual LockAnswer Choose(std::string_view title, std::string_view question,
                                          const std::vector<std::string>& choices) = 0;
  // With `steps` 0 somebody else is waited for, and nobody knows how long.
  [[nodiscard]] virtual std::unique_ptr<Progress> StartProgress(std::string_view title,
                                                                std::size_t steps) = 0;
  // The status line; an empty text clears it.
  virtual void Status(std::string_view text) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_DIALOGS_H_
