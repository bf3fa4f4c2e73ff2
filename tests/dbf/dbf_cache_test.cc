#include "dbf/dbf_cache.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "dbf/dbf_file.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"
#include "support/opened_table.h"
#include "support/table_image.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeReadWrite | kShareDenyNone;

std::string OneRow(const char* value) {
  return TableImage().Field("A", 'C', 3).Row({value}).Bytes();
}
std::string Path(std::string_view name) { return "C:\\OUT\\DBR" + std::string(name) + ".DBF"; }

// Three tables on disk with the value "old".
class TDbfCacheTest : public ::testing::Test {
 protected:
  TDbfCacheTest() {
    for (const char* name : {"DOCS", "HEAD", "TOVAR"}) host.files[Path(name)] = OneRow("old");
  }
  void Change(const char* name, std::string_view value = "new") { Change(name, value, cache); }
  static void Change(const char* name, std::string_view value, TDbfCache& in) {
    TFileDbfFile table(in);
    table.Open(Path(name), kShared, OnError::kThrow);
    table.GoTo(1);
    table.SetField(0, value, false);
    table.Post();
  }
  // Which tables hold the new value on disk.
  std::string OnDisk() {
    std::string changed;
    for (const char* name : {"DOCS", "HEAD", "TOVAR"}) {
      if (host.files[Path(name)] == OneRow("new")) changed += name[0];
    }
    return changed;
  }

  FakeHost host;
  TDbfCache cache{host};
};

TEST_F(TDbfCacheTest, LoadsAFileOnceUnderAllItsSpellings) {
  host.files.current_folder = "C:\\OUT\\";
  TFileDbfFile first(cache), second(cache);
  first.Open(Path("HEAD"), kShared, OnError::kThrow);
  for (const char* name : {"c:/out/dbrhead", "dbrhead"}) {
    second.Open(name, kShared, OnError::kThrow);
    first.Append();
    EXPECT_EQ(second.RecordCount(), first.RecordCount());
  }
  EXPECT_EQ(host.files.Count(FileOp::kStreamRead), 1);
  host.files.ResetCounts();
  second.Open("dbrhead", kShared, OnError::kThrow);
  EXPECT_EQ(host.files.Count(FileOp::kStamp), 1);
  EXPECT_EQ(host.files.Count(FileOp::kExists) + host.files.Count(FileOp::kOpen), 0);
}

TEST_F(TDbfCacheTest, DropsAnImageWhenAskedOrWhenTheFileChanged) {
  for (const bool asked : {true, false}) {
    host.files[Path("HEAD")] = OneRow("old");
    Change("HEAD");
    TFileDbfFile detached(cache), fresh(cache);
    detached.Open(Path("HEAD"), kShared, OnError::kThrow);
    detached.GoTo(1);
    if (asked) {
      cache.DropCachedFile("c:\\out\\dbrhead");
    } else {
      host.files[Path("HEAD")] = OneRow("old");
    }
    fresh.Open(Path("head"), kShared, OnError::kThrow);
    fresh.GoTo(1);
    EXPECT_EQ(fresh.GetField(0), "old");
    EXPECT_EQ(detached.GetField(0), "new") << "the record buffer is the table's own";
    EXPECT_EQ(detached.Post(), DbfStatus::kRefused);
    EXPECT_FALSE(detached.Append());
    EXPECT_FALSE(detached.FindFirst("A", "new"));
    cache.Flush();
    EXPECT_EQ(OnDisk(), "");
  }
}

TEST_F(TDbfCacheTest, FlushesTheTablesThatAreNamed) {
  for (const char* name : {"TOVAR", "HEAD", "DOCS"}) Change(name);
  cache.Flush("DBRHEA dbrhead  DBR", true);
  EXPECT_EQ(OnDisk(), "H");
  cache.Flush("DBRDOCS.DBF dbrtovar", true);
  EXPECT_EQ(OnDisk(), "HT");
  EXPECT_TRUE(host.dialogs.progress_titles.empty());
  cache.Flush({}, true);
  EXPECT_EQ(OnDisk(), "DHT");
  EXPECT_EQ(host.dialogs.log, (std::vector<std::string>{"progress: Сохраняю файлы (1)",
                                                        "progress: 1", "progress closed"}));
  host.files.ResetCounts();
  cache.Flush({}, true);
  EXPECT_EQ(host.files.changes(), 0);
  Change("HEAD", "two");
  EXPECT_EQ(host.files.Count(FileOp::kOpen), 0) << "images outlive their flush";
}

TEST_F(TDbfCacheTest, FlushesWhenItGoes) {
  {
    TDbfCache short_lived(host);
    Change("HEAD", "new", short_lived);
  }
  EXPECT_EQ(OnDisk(), "H");
}

TEST_F(TDbfCacheTest, ShowsWhatCannotBeWrittenAndKeepsItForTheNextFlush) {
  const struct {
    FileOp op;
    FileError::Kind kind;
    std::size_t attempts_after_ten_seconds;
  } cases[] = {{FileOp::kOpen, FileError::Kind::kCreate, 2},
               {FileOp::kReserve, FileError::Kind::kWrite, 1},
               {FileOp::kOtherChange, FileError::Kind::kWrite, 1}};
  for (const auto& c : cases) {
    const auto failures_after = [&](int seconds) {
      host.dialogs.Clear();
      host.clock.Advance(seconds * 1000);
      cache.Flush();
      return host.dialogs.exceptions.size();
    };
    for (const char* name : {"HEAD", "TOVAR"}) {
      host.files[Path(name)] = OneRow("old");
      Change(name);
    }
    host.files.FailPath(Path("HEAD"), c.op, c.kind);
    EXPECT_EQ(failures_after(0), 1u);
    EXPECT_NE(host.dialogs.exceptions[0].find("DBRHEAD"), std::string::npos);
    EXPECT_EQ(OnDisk(), "T");
    EXPECT_EQ(failures_after(9), 1u);
    EXPECT_EQ(failures_after(2), c.attempts_after_ten_seconds);
    EXPECT_EQ(failures_after(2), 1u);
    host.files.StopFailing();
    EXPECT_EQ(failures_after(0), 0u);
    EXPECT_EQ(OnDisk(), "HT");
  }
}

TEST_F(TDbfCacheTest, KeepsAHundredLargeTablesOpenAtMost) {
  TableImage large = TableImage().Field("A", 'C', 250);
  for (int i = 0; i < 300; ++i) large.Row({"old"});
  for (int i = 0; i < 200; ++i) {
    host.files[Path(std::to_string(i))] = large.Bytes();
    Change(std::to_string(i).c_str());
    cache.Flush();
  }
  EXPECT_LE(host.files.open_streams(), 129U);
  EXPECT_FALSE(cache.HasUnsaved());
}

// The flush gives the first image the second one's file.
TEST(TDbfCache, KeepsItsImagesWhenAFileAppearsThatDiffersInLetterCaseOnly) {
  const TempFolder folder;
  folder.Write("out/T.DBF", OneRow("old"));
  std::filesystem::create_symlink("out", folder / "link");
  QuietDialogs dialogs;
  PosixHost host(dialogs);
  TDbfCache cache(host);
  TFileDbfFile first(cache), second(cache);
  first.Open(folder.Win("out/t.dbf"), kShared, OnError::kThrow);
  folder.Write("out/t.dbf", OneRow("two"));
  second.Open(folder.Win("link/t.dbf"), kShared, OnError::kThrow);
  for (const std::int64_t rows : {2, 3}) {
    first.Append();
    cache.Flush();
    second.Open(folder.Win("link/t.dbf"), kShared, OnError::kThrow);
    EXPECT_EQ(second.RecordCount(), rows);
  }
}

TEST(TDbfCache, AFileIsTheWholeImageAfterEveryFlush) {
  const TempFolder folder;
  TableImage image = TableImage().Field("A", 'C', 250);
  for (int i = 0; i < 400; ++i) image.Row({std::to_string(i)});
  OpenedTable expected(image.Bytes());
  folder.Write("T.DBF", image.Bytes());
  QuietDialogs dialogs;
  PosixHost host(dialogs);
  {
    TDbfCache cache(host);
    TFileDbfFile table(cache);
    table.Open(folder.Win("T.DBF"), kShared, OnError::kThrow);
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
      const auto change = random() % 12;
      const auto row = static_cast<std::int64_t>(1 + random() % 400);
      for (TFileDbfFile* changed : {&table, &expected.table}) {
        if (change == 0) changed->DeleteRecord(row);
        changed->GoTo(row);
        changed->SetFieldByName("A", std::to_string(round));
        change == 1 ? static_cast<void>(changed->Post()) : static_cast<void>(changed->Append());
      }
      cache.Flush();
      ASSERT_EQ(folder.Read("T.DBF"), expected.Flushed()) << round;
    }
  }
  EXPECT_EQ(folder.Listing(), "T.DBF");
}

TEST_F(TDbfCacheTest, LooksUpThroughAlternativeFields) {
  TableImage image = TableImage().Field("CODE", 'C', 5).Field("OLDCODE", 'C', 5);
  host.files[Path("REG")] =
      image.Field("NAME", 'C', 9).Row({"10", "11", "one"}).Row({"12", "10", "two"}).Bytes();
  const auto name = [&](const char* table, std::string_view fields, std::string_view key) {
    return cache.Lookup(Path(table), fields, key, "NAME").value_or("(none)");
  };
  EXPECT_EQ(name("REG", "CODE", "12"), "two");
  EXPECT_EQ(name("REG", "NONE|OLDCODE|CODE", "10"), "two");
  EXPECT_EQ(name("REG", "CODE|OLDCODE", "11"), "one");
  EXPECT_EQ(name("REG", "CODE", "11"), "(none)");
  EXPECT_EQ(name("MISSING", "CODE", "10"), "(none)");
}

}  // namespace
}  // namespace customsconv
