#ifndef CUSTOMSCONV_PLATFORM_QUIET_DIALOGS_H_
#define CUSTOMSCONV_PLATFORM_QUIET_DIALOGS_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace customsconv {

// Nobody is there: nothing is shown, and questions get the safe answers (No; go
// on waiting). The base of dialogs that replace only a part of this.
class QuietDialogs : public Dialogs {
 public:
  void Message(std::string_view) override {}
  void Exception(std::string_view) override {}
  [[nodiscard]] bool Confirm(std::string_view) override { return false; }
  [[nodiscard]] LockAnswer Choose(std::string_view, std::string_view,
                                  const std::vector<std::string>&) override {
    return LockAnswer::kWait;
  }
  [[nodiscard]] std::unique_ptr<Progress> StartProgress(std::string_view, std::size_t) override {
    return std::make_unique<NoProgress>();
  }
  void Status(std::string_view) override {}

 private:
  class NoProgress : public Progress {
   public:
    void Show(std::size_t) override {}
  };
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_QUIET_DIALOGS_H_
