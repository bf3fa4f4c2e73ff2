#ifndef CUSTOMSCONV_PLATFORM_NOTING_DIALOGS_H_
#define CUSTOMSCONV_PLATFORM_NOTING_DIALOGS_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/dialogs.h"

namespace customsconv {

// Hands all on to other dialogs and notes that somebody was told or asked something.
class NotingDialogs : public Dialogs {
 public:
  // `dialogs` must outlive the object.
  explicit NotingDialogs(Dialogs& dialogs) : dialogs_(dialogs) {}

  // Since the last call.
  [[nodiscard]] bool TakeNoted() { return std::exchange(noted_, false); }

  void Message(std::string_view text) override { Noted().Message(text); }
  void Exception(std::string_view text) override { Noted().Exception(text); }
  bool Confirm(std::string_view question) override { return Noted().Confirm(question); }
  LockAnswer Choose(std::string_view title, std::string_view question,
                    const std::vector<std::string>& choices) override {
    return Noted().Choose(title, question, choices);
  }
  std::unique_ptr<Progress> StartProgress(std::string_view title, std::size_t steps) override {
    return dialogs_.StartProgress(title, steps);
  }
  void Status(std::string_view text) override { dialogs_.Status(text); }

 private:
  Dialogs& Noted() {
    noted_ = true;
    return dialogs_;
  }

  Dialogs& dialogs_;
  bool noted_ = false;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_NOTING_DIALOGS_H_
