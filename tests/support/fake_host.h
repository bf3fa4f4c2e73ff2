#ifndef CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_
#define CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_

#include "platform/host.h"
#include "support/fake_clock.h"
#include "support/fake_files.h"
#include "support/fake_processes.h"
#include "support/scripted_dialogs.h"

namespace customsconv {

// A world in memory for tests: files that nobody else sees, a clock that stands
// still, a person who answers from a script. Usable wherever a Host is wanted;
// must outlive what it was handed to.
class FakeHost {
 public:
  FakeHost() = default;
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  operator Host&() { return host_; }  // implicit on purpose
  [[nodiscard]] Host& host() { return host_; }

  FakeFiles files;
  FakeClock clock;
  ScriptedDialogs dialogs;
  FakeProcesses processes;

 private:
  Host host_{files, clock, dialogs, processes};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_FAKE_HOST_H_
