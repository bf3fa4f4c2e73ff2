#include "common/exchange_lock.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr std::string_view kFolder = "C:\\OUT\\";
constexpr std::string_view kMarker = "C:\\OUT\\veltlock.$$$";

struct TakenExchange : FakeHost {
  TakenExchange() { files.Put(kMarker, ""); }
  std::string Take() {
    return ErrorOf([this] { const ExchangeLock lock(*this, kFolder); });
  }
};

TEST(ExchangeLock, IsAnEmptyMarkerForAsLongAsItLives) {
  FakeHost host;
  host.files.AddFolder(kFolder);
  {
    const ExchangeLock lock(host, kFolder);
    EXPECT_EQ(host.files[kMarker], "");
  }
  EXPECT_FALSE(host.files.Has(kMarker));
  {
    ExchangeLock lock(host, kFolder);
    lock.Release();
    host.files.Put(kMarker, "");  // another station's; ours is over
  }
  EXPECT_TRUE(host.files.Has(kMarker));
}

TEST(ExchangeLock, WaitsUntilTheMarkerIsGone) {
  TakenExchange exchange;
  exchange.clock.on_sleep = [&](std::uint32_t) {
    if (exchange.clock.slept.size() == 22) exchange.files.Remove(kMarker);
  };
  EXPECT_EQ(exchange.Take(), kNoError);
  const auto& log = exchange.dialogs.log;
  ASSERT_EQ(log.size(), 24U);
  EXPECT_EQ(log[0], "progress: База занята - ждем... (20)");
  EXPECT_EQ(log[21],
            "choose: База занята!: База АРМ-ТИ занята с другого компьютера. Возможно выгружается "
            "длинная ГТД, или программа зависла. [Подождать еще|Снять блокировку и выгрузить"
            "                 |Прервать выгрузку]");
  EXPECT_EQ(log[22] + log[23], "progress: 1progress closed");
}

TEST(ExchangeLock, EndsItsWaitingByTimeOrByAnswer) {
  const struct {
    std::deque<LockAnswer> answers;
    std::size_t questions, seconds;
    bool taken;
  } cases[] = {{{}, 5, 101, true},
               {{LockAnswer::kWait, LockAnswer::kTakeOver}, 2, 40, true},
               {{LockAnswer::kWait, LockAnswer::kWait, LockAnswer::kAbandon}, 3, 60, false}};
  for (const auto& c : cases) {
    TakenExchange exchange;
    exchange.dialogs.lock_answers = c.answers;
    EXPECT_EQ(exchange.Take(), c.taken ? kNoError : kSilentAbort);
    EXPECT_EQ(exchange.dialogs.questions.size(), c.questions);
    EXPECT_EQ(exchange.clock.slept.size(), c.seconds);
    EXPECT_EQ(exchange.files.Has(kMarker), !c.taken);  // released, or still the other station's
  }
}

}  // namespace
}  // namespace customsconv
