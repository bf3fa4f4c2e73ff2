#include "storage/dbf_cache.h"

#include <gtest/gtest.h>

#include "storage/dbf_file.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeReadWrite | kShareDenyNone;

std::string OneRow(const char* value) {
  return TableImage().Field("A", 'C', 3).Row({value}).Bytes();
}

class TDbfCacheTest : public ::testing::Test {
 protected:
  TDbfCacheTest() {
    for (const char* name : {"DBRHEAD", "DBRTOVAR", "DBRDOCS"})
      host.files[Path(name)] = OneRow("old");
  }
  static std::string Path(std::string_view name) {
    return "C:\\OUT\\" + std::string(name) + ".DBF";
  }
  void Change(std::string_view path, std::string_view value = "new") {
    TFileDbfFile table(cache);
    table.Open(path, kShared, OnError::kThrow);
    table.GoTo(1);
    table.SetField(0, value, false);
    table.Post();
  }
  // Which tables hold the new value on disk: "HEAD TOVAR".
  std::string OnDisk() {
    std::string changed;
    for (const char* name : {"HEAD", "TOVAR", "DOCS"}) {
      if (host.files[Path("DBR" + std::string(name))] == OneRow("new"))
        changed += std::string(" ") + name;
    }
    return changed;
  }

  FakeHost host;
  TDbfCache cache{host};
};

TEST_F(TDbfCacheTest, LoadsAFileOnceUnderAllItsSpellings) {
  host.files.current_folder = "C:\\OUT\\";
  TFileDbfFile first(cache), second(cache), third(cache);
  first.Open("C:\\OUT\\DBRHEAD.DBF", kShared, OnError::kThrow);
  second.Open("c:/out/dbrhead", kShared, OnError::kThrow);
  third.Open("dbrhead", kShared, OnError::kThrow);
  EXPECT_EQ(host.files.Count(FileOp::kStreamRead), 1);
  first.Append();
  EXPECT_EQ(third.RecordCount(), 2);
  host.files.ResetCounts();
  third.Open("dbrhead", kShared, OnError::kThrow);
  EXPECT_EQ(host.files.Count(FileOp::kStamp), 1);
  EXPECT_EQ(host.files.Count(FileOp::kExists) + host.files.Count(FileOp::kOpen), 0);
}

TEST_F(TDbfCacheTest, LoadsAgainWhatChangedOnDiskAndForgetsItsOwnChanges) {
  TFileDbfFile stale(cache);
  stale.Open(Path("DBRHEAD"), kShared, OnError::kThrow);
  Change(Path("DBRHEAD"));
  host.files[Path("DBRHEAD")] = TableImage().Field("B", 'C', 4).Bytes();
  TFileDbfFile fresh(cache);
  fresh.Open(Path("dbrhead"), kShared, OnError::kThrow);
  EXPECT_EQ(fresh.FieldIndex("B"), 0);
  EXPECT_TRUE(stale.is_open());
  EXPECT_EQ(stale.GoTo(1), DbfStatus::kRefused);
  EXPECT_EQ(stale.RecordCount(), 0);
  EXPECT_FALSE(stale.Append());
  EXPECT_FALSE(stale.FindFirst("A", ""));
  cache.Flush();
  EXPECT_EQ(host.files.Count(FileOp::kStage), 0);
}

TEST_F(TDbfCacheTest, FlushesTheTablesThatAreNamed) {
  for (const char* name : {"DBRHEAD", "DBRTOVAR", "DBRDOCS"}) Change(Path(name));
  EXPECT_EQ(OnDisk(), "");
  cache.Flush("DBRHEA dbrhead  DBR", true);
  EXPECT_EQ(OnDisk(), " HEAD");
  EXPECT_TRUE(host.dialogs.progress_titles.empty());
  cache.Flush("DBRDOCS.DBF dbrtovar", true);
  EXPECT_EQ(OnDisk(), " HEAD TOVAR");
  cache.Flush({}, true);
  EXPECT_EQ(OnDisk(), " HEAD TOVAR DOCS");
  EXPECT_EQ(host.dialogs.log, (std::vector<std::string>{"progress: Сохраняю файлы (1)",
                                                        "progress: 1", "progress closed"}));
  host.files.ResetCounts();
  cache.Flush({}, true);
  EXPECT_EQ(host.files.changes(), 0);
  EXPECT_EQ(host.dialogs.progress_titles.size(), 1u);
}

TEST_F(TDbfCacheTest, FlushesWhenItGoes) {
  {
    TDbfCache short_lived(host);
    TFileDbfFile table(short_lived);
    table.Open(Path("DBRHEAD"), kShared, OnError::kThrow);
    table.SetField(0, "add", false);
    table.Append();
  }
  EXPECT_EQ(TableDump(host.files[Path("DBRHEAD")].bytes()), "A C3\n1: A=\"old\"\n2: A=\"add\"\n");
}

TEST_F(TDbfCacheTest, KeepsItsImagesAfterAFlush) {
  Change(Path("DBRHEAD"));
  cache.Flush();
  host.files.ResetCounts();
  Change(Path("DBRHEAD"), "two");
  EXPECT_EQ(host.files.Count(FileOp::kOpen), 0);
  cache.Flush();
  EXPECT_EQ(host.files[Path("DBRHEAD")], OneRow("two"));
}

// All tables are written before the first is put in place.
TEST_F(TDbfCacheTest, LeavesEachTableWholeWhereverTheProgramDies) {
  for (int change = 1; change <= 6; ++change) {
    SCOPED_TRACE(change);
    FakeHost world;
    for (const char* name : {"DBRHEAD", "DBRTOVAR", "DBRDOCS"})
      world.files[Path(name)] = OneRow("old");
    TDbfCache doomed(world);
    for (const char* name : {"DBRHEAD", "DBRTOVAR", "DBRDOCS"}) {
      TFileDbfFile table(doomed);
      table.Open(Path(name), kShared, OnError::kThrow);
      table.SetField(0, "new", false);
      table.Append();
    }
    world.files.DieAtChange(change, /*tear=*/true);
    EXPECT_THROW(doomed.Flush(), SuddenDeath);
    int grown = 0;
    for (const char* name : {"DBRHEAD", "DBRTOVAR", "DBRDOCS"}) {
      const std::string& bytes = world.files[Path(name)];
      grown += bytes != OneRow("old");
      if (bytes != OneRow("old")) {
        EXPECT_EQ(TableDump(bytes), "A C3\n1: A=\"old\"\n2: A=\"new\"\n");
      }
    }
    EXPECT_EQ(grown, std::max(0, change - 4));
  }
}

TEST_F(TDbfCacheTest, ShowsWhatCannotBeWrittenAndKeepsItForTheNextFlush) {
  const struct {
    FileOp op;
    FileError::Kind kind;
  } cases[] = {{FileOp::kStage, FileError::Kind::kCreate},
               {FileOp::kStage, FileError::Kind::kWrite},
               {FileOp::kCommit, FileError::Kind::kCreate}};
  for (const auto& c : cases) {
    FakeHost world;
    for (const char* name : {"DBRHEAD", "DBRTOVAR"}) world.files[Path(name)] = OneRow("old");
    TDbfCache busy(world);
    for (const char* name : {"DBRHEAD", "DBRTOVAR"}) {
      TFileDbfFile table(busy);
      table.Open(Path(name), kShared, OnError::kThrow);
      table.GoTo(1);
      table.SetField(0, "new", false);
      table.Post();
    }
    world.files.FailPath(Path("DBRHEAD"), c.op, c.kind);
    busy.Flush();
    ASSERT_EQ(world.dialogs.exceptions.size(), 1u);
    EXPECT_NE(world.dialogs.exceptions[0].find("DBRHEAD"), std::string::npos);
    EXPECT_EQ(world.files[Path("DBRHEAD")], OneRow("old"));
    EXPECT_EQ(world.files[Path("DBRTOVAR")], OneRow("new"));

    // A file that could not be created for more than ten seconds is tried twice in one flush.
    const auto failures_after = [&](int seconds) {
      world.dialogs.Clear();
      world.clock.Advance(seconds * 1000);
      busy.Flush();
      return world.dialogs.exceptions.size();
    };
    EXPECT_EQ(failures_after(9), 1u);
    const std::size_t attempts = c.kind == FileError::Kind::kCreate ? 2 : 1;
    EXPECT_EQ(failures_after(2), attempts);
    EXPECT_EQ(failures_after(2), 1u);
    world.files.StopFailing();
    EXPECT_EQ(failures_after(0), 0u);
    EXPECT_EQ(world.files[Path("DBRHEAD")], OneRow("new"));
  }
}

TEST_F(TDbfCacheTest, ForgetsChangesWhoseFolderIsGoneButNotInAFlushByNames) {
  struct VanishingFiles : FakeFiles {
    [[nodiscard]] bool FolderExists(std::string_view path) const override {
      return !gone && FakeFiles::FolderExists(path);
    }
    bool gone = true;
  };
  VanishingFiles files;
  files[Path("DBRHEAD")] = OneRow("old");
  Host world{files, host.clock, host.dialogs, host.processes};
  TDbfCache own(world);
  const auto stored_after = [&](std::string_view first_names) {
    TFileDbfFile table(own);
    table.Open(Path("DBRHEAD"), kShared, OnError::kThrow);
    table.GoTo(1);
    table.SetField(0, "new", false);
    table.Post();
    files.gone = true;
    own.Flush(first_names);
    files.gone = false;
    own.Flush();
    return files[Path("DBRHEAD")].bytes();
  };
  EXPECT_EQ(stored_after(""), OneRow("old"));
  EXPECT_EQ(stored_after("DBRHEAD"), OneRow("new"));
}

TEST_F(TDbfCacheTest, DropsAnImageAndDetachesItsTables) {
  Change(Path("DBRHEAD"));
  TFileDbfFile table(cache);
  table.Open(Path("DBRHEAD"), kShared, OnError::kThrow);
  table.GoTo(1);
  cache.DropCachedFile("c:\\out\\dbrhead");
  EXPECT_EQ(table.Post(), DbfStatus::kRefused);
  EXPECT_EQ(table.GetField(0).view(), "new") << "the record buffer is the table's own";
  cache.Flush();
  EXPECT_EQ(OnDisk(), "");
  table.Open(Path("DBRHEAD"), kShared, OnError::kThrow);
  table.GoTo(1);
  EXPECT_EQ(table.GetField(0).view(), "old");
}

TEST_F(TDbfCacheTest, LooksUpThroughAlternativeFields) {
  host.files[Path("REG")] = TableImage()
                                .Field("CODE", 'C', 5)
                                .Field("OLDCODE", 'C', 5)
                                .Field("NAME", 'C', 9)
                                .Row({"10", "11", "Москва"})
                                .Row({"12", "10", "Тверь"})
                                .Bytes();
  const auto name = [&](std::string_view fields, std::string_view key) {
    const auto found = cache.Lookup(Path("REG"), fields, key, "NAME");
    return found ? Utf8(*found) : "(none)";
  };
  EXPECT_EQ(name("CODE", "12"), "Тверь");
  EXPECT_EQ(name("NONE|OLDCODE|CODE", "10"), "Тверь");
  EXPECT_EQ(name("CODE|OLDCODE", "11"), "Москва");
  EXPECT_EQ(name("CODE", "11"), "(none)");
  EXPECT_FALSE(cache.Lookup(Path("MISSING"), "CODE", "10", "NAME"));
}

}  // namespace
}  // namespace customsconv
