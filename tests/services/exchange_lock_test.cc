#include "services/exchange_lock.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"

namespace customsconv {
namespace {

constexpr std::string_view kFolder = "C:\\OUT\\";
constexpr std::string_view kMarker = "C:\\OUT\\veltlock.$$$";

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
  FakeHost host;
  host.files[kMarker] = "";
  host.clock.on_sleep = [&](std::uint32_t) {
    if (host.clock.slept.size() == 22) host.files.Remove(kMarker);
  };
  const ExchangeLock lock(host, kFolder);
  const auto& log = host.dialogs.log;
  ASSERT_EQ(log.size(), 24U);
  EXPECT_EQ(log[0], "progress: База занята - ждем... (20)");
  EXPECT_EQ(log[21],
            "choose: База занята!: База АРМ-ТИ занята с другого компьютера. Возможно выгружается "
            "длинная ГТД, или программа зависла. [Подождать еще|Снять блокировку и выгрузить"
            "                 |Прервать выгрузку]");
  EXPECT_EQ(log[22] + log[23], "progress: 1progress closed");
}

}  // namespace
}  // namespace customsconv
