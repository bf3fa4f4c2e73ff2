#include "dbf/transaction.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>

#include "dbf/dbf_file.h"
#include "dbf/journal.h"
#include "services/exchange_lock.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeReadWrite | kShareDenyNone;
const std::string kFolder = "C:\\OUT\\";
const std::string kJournal = kFolder + std::string(journal::kFileName);
const std::string kMarker = kFolder + std::string(kExchangeLockFile);

// Three tables and a save that makes, fills, posts and deletes in them: A is small, B is larger
// than what is held in memory and stands elsewhere behind a link, C has gone when the save writes
// it.
class SaveTest : public ::testing::Test {
 protected:
  static std::string Rows(int count) {
    TableImage image = TableImage().Field("N", 'N', 6).Field("T", 'C', 243);
    for (int i = 1; i <= count; ++i) image.Row({std::to_string(i), "old"});
    return image.Bytes();
  }
  static void SetUpWorld(FakeHost& host) {
    host.files[kFolder + "A.DBF"] = Rows(8);
    host.files["D:\\FAR\\B.DBF"] = Rows(400);
    host.files.Link(kFolder + "B.DBF", "D:\\FAR\\B.DBF");
    host.files[kFolder + "C.DBF"] = Rows(1);
  }
  static void Append(TDbfCache& cache, const char* name, int rows) {
    TFileDbfFile table(cache);
    table.Open(kFolder + name, kShared, OnError::kThrow);
    for (int i = 0; i < rows; ++i) {
      table.BlankRecord();
      table.SetFieldByName("T", "new");
      table.Append();
    }
    table.GoTo(3);
    table.SetFieldByName("T", "posted");
    table.Post();
    if (name[0] == 'A') table.DeleteRecord(2);
  }
  // Throws SuddenDeath where the world says so.
  static void Save(FakeHost& host) {
    TDbfCache cache(host);
    cache.NoteSaves("10702020/150324/0000001");
    cache.BeginSave(kFolder);
    for (const char* name : {"A", "B", "C"}) Append(cache, name, 12);
    host.files.Remove(kFolder + "C.DBF");
    cache.EndSave();
  }
  // The content of the tables and the names beside them; locks that nobody holds do not count,
  // nor does table C as long as nobody has taken it away.
  static std::string StateOf(FakeHost& host) {
    std::string state;
    for (const std::string_view name : {kSaveLockFile, kExchangeLockFile}) {
      host.files.Remove(kFolder + std::string(name));
    }
    const std::string table_c = kFolder + "C.DBF";
    if (host.files.Has(table_c) && host.files[table_c] == Rows(1)) host.files.Remove(table_c);
    for (const std::string& name : host.files.Names()) {
      state += name + ": " + host.files[name].bytes() + "\n";
    }
    return state;
  }
  // As the next program finds it.
  static std::string RecoveredStateOf(FakeHost& host) {
    TDbfCache cache(host);
    TFileDbfFile table(cache);
    table.Open(kFolder + "A", kModeRead | kShareDenyNone, OnError::kReturn);
    return StateOf(host);
  }

  FakeHost untouched_, saved_;
  std::string before_, after_;

  SaveTest() {
    SetUpWorld(untouched_);
    untouched_.files.Remove(kFolder + "C.DBF");
    before_ = StateOf(untouched_);
    SetUpWorld(saved_);
    Save(saved_);
    after_ = StateOf(saved_);
  }
};

// A world in which the save was killed at its `change`; false when it went through.
bool DiesAt(int change, FakeHost& host, void (*save)(FakeHost&)) {
  host.files.DieAtChange(change);
  bool died = false;
  try {
    save(host);
  } catch (const SuddenDeath&) {
    died = true;
  }
  host.files.Revive();
  return died;
}

TEST_F(SaveTest, IsWholeOrUndoneWhereverItIsKilled) {
  int change = 1, undone = 0;
  for (bool going = true; going; ++change) {
    FakeHost host;
    SetUpWorld(host);
    going = DiesAt(change, host, &Save);
    const bool touched = host.files.Has(kJournal);
    const bool marked = host.files.Has(kMarker);
    const std::string state = RecoveredStateOf(host);
    EXPECT_TRUE(state == before_ || (!touched && state == after_)) << change;
    if (host.dialogs.messages.empty()) continue;
    ++undone;
    EXPECT_TRUE(touched && marked);
    EXPECT_NE(Utf8(host.dialogs.messages[0]).find("2024-03-15 10:30:00, 10702020/150324"),
              std::string::npos);
  }
  EXPECT_GT(undone, 8);
  EXPECT_EQ(after_.find("~cc"), std::string::npos);
  EXPECT_NE(before_, after_);
}

// The marker of a dead process is not waited for.
TEST_F(SaveTest, GoesOnAtOnceAfterADeadOne) {
  FakeHost host;
  SetUpWorld(host);
  ASSERT_TRUE(DiesAt(10, host, &Save));
  ASSERT_TRUE(host.files.Has(kMarker));
  host.clock.slept.clear();
  TDbfCache cache(host);
  cache.BeginSave(kFolder);
  EXPECT_TRUE(host.clock.slept.empty());
  EXPECT_TRUE(host.files.Has(kMarker));
  cache.EndSave();
  EXPECT_TRUE(StateOf(host) == before_);
}

// Every way in which the disk can lose what it was not made to keep, at every moment.
TEST_F(SaveTest, IsWholeOrUndoneAfterALossOfPower) {
  for (int change = 1, going = 1; going != 0; ++change) {
    for (unsigned order = 0; order < 12; ++order) {
      FakeHost host;
      SetUpWorld(host);
      going = DiesAt(change, host, &Save) ? 1 : 0;
      host.files.LosePower(order);
      const std::string state = RecoveredStateOf(host);
      EXPECT_TRUE(state == after_ || (going != 0 && state == before_)) << change << " " << order;
    }
  }
}

TEST_F(SaveTest, IsUndoneByARecoveryThatIsKilledItself) {
  FakeHost probe;
  SetUpWorld(probe);
  probe.files.ResetCounts();
  Save(probe);
  const int late = probe.files.changes() - 6;  // tables are written, the journal is there
  for (int change = 1, going = 1; going != 0; ++change) {
    for (unsigned order = 0; order < 6; ++order) {
      FakeHost host;
      SetUpWorld(host);
      ASSERT_TRUE(DiesAt(late, host, &Save));
      ASSERT_TRUE(host.files.Has(kJournal));
      going = DiesAt(change, host, [](FakeHost& world) { RecoveredStateOf(world); }) ? 1 : 0;
      if (order > 0) host.files.LosePower(order - 1);
      EXPECT_EQ(RecoveredStateOf(host), before_) << change << " " << order;
    }
  }
}

// A change that is refused is made up for by the flush's second attempt, or by the next flush.
TEST_F(SaveTest, GoesOnAfterARefusedChange) {
  FakeHost probe;
  SetUpWorld(probe);
  probe.files.ResetCounts();
  Save(probe);
  const int changes = probe.files.changes();
  for (int change = 3; change <= changes; ++change) {
    FakeHost host;
    SetUpWorld(host);
    host.files.FailChange(change);
    Save(host);  // the cache's end flushes what waits
    EXPECT_EQ(StateOf(host), after_) << change;
  }
}

// Whatever stands in a table that is neither the old nor the new was put there by somebody else.
TEST_F(SaveTest, IsNotUndoneOverWhatOthersWroteSince) {
  const auto overwrite = [](std::size_t at, const std::string& with) {
    return [at, with](std::string bytes) {
      at < bytes.size() ? bytes.replace(at, with.size(), with) : bytes.append(with);
      return bytes;
    };
  };
  const std::function<std::string(std::string)> others[] = {
      overwrite(4, "\x07"), overwrite(600, "posted by others"), overwrite(1u << 30, "grown"),
      [](const std::string& bytes) { return bytes.substr(0, 1000); }};
  for (const auto& other : others) {
    FakeHost host;
    SetUpWorld(host);
    ASSERT_TRUE(DiesAt(10, host, &Save));
    ASSERT_TRUE(host.files.Has(kJournal));
    const std::string journal = host.files[kJournal];
    host.files[kFolder + "A.DBF"] = other(host.files[kFolder + "A.DBF"]);
    const std::string a = host.files[kFolder + "A.DBF"], b = host.files[kFolder + "B.DBF"];
    RecoveredStateOf(host);
    EXPECT_TRUE(host.files[kFolder + "A.DBF"] == a && host.files[kFolder + "B.DBF"] == b);
    EXPECT_EQ(host.files[kFolder + "ccsave-1.jnl"], journal);
    ASSERT_EQ(host.dialogs.messages.size(), 1U);
    EXPECT_NE(Utf8(host.dialogs.messages[0]).find("таблицу A.DBF с тех пор изменила другая"),
              std::string::npos);
    for (int i = 0; i < 2; ++i) TDbfCache(host).BeginSave(kFolder);
    ASSERT_EQ(host.dialogs.messages.size(), 3U) << "each program says it that saves there";
    EXPECT_NE(Utf8(host.dialogs.messages[2]).find("0000001) осталось не отменено, его журнал ccsave-1"),
              std::string::npos);
  }
}

TEST_F(SaveTest, ABrokenOneThatMayNotBeUndoneNamesTheCommand) {
  for (const bool keeps_locks : {true, false}) {
    FakeHost host;
    SetUpWorld(host);
    ASSERT_TRUE(DiesAt(10, host, &Save));
    host.files.Remove(kFolder + std::string(kSaveLockFile));
    host.files.SetReadOnly(kFolder, keeps_locks);
    host.files.keeps_locks = keeps_locks;
    TDbfCache cache(host);
    TFileDbfFile table(cache);
    const std::string told = Utf8(
        ErrorOf([&] { table.Open(kFolder + "A", kModeRead | kShareDenyNone, OnError::kReturn); }));
    EXPECT_NE(told.find("customsconv tables recover C:\\OUT\\"), std::string::npos) << told;
    EXPECT_TRUE(host.files.Has(kJournal));
    if (!keeps_locks) continue;
    host.clock.on_sleep = [&](std::uint32_t) {
      host.files.Put(kFolder + "A.DBF", Rows(1));
      host.files.Remove(kJournal);
    };
    EXPECT_EQ(table.Open(kFolder + "A", kModeRead | kShareDenyNone, OnError::kReturn),
              DbfStatus::kOk) << "its maker lived and is done";
  }
}

TEST_F(SaveTest, WaitsForALivingOne) {
  FakeHost host;
  SetUpWorld(host);
  auto living = std::make_optional<SaveLock>(host, kFolder);
  host.clock.on_sleep = [&](std::uint32_t) {
    if (host.clock.Ticks() > 26'000) living.reset();
  };
  Save(host);
  EXPECT_EQ(StateOf(host), after_);
  EXPECT_EQ(host.dialogs.questions.size(), 1U);
  living.emplace(host, kFolder);
  host.clock.on_sleep = nullptr;
  host.dialogs.lock_answers = {LockAnswer::kTakeOver, LockAnswer::kAbandon};
  TDbfCache cache(host);
  EXPECT_THROW(cache.BeginSave(kFolder), SilentAbort) << "a living one is not taken over";
  const auto told = [&] { return Utf8(ErrorOf([&] { cache.BeginSave(kFolder); })); };
  EXPECT_NE(told().find("который не отвечает"), std::string::npos) << "it may be stopped";
  EXPECT_NEAR(static_cast<double>(host.clock.Ticks()), 1000 * (27 + 40 + 121), 1000);
  host.files[kJournal] = "";
  TFileDbfFile table(cache);
  TDescrs fields;
  host.files[kFolder + "D.DBF"] = Rows(1);
  for (const auto& waits : std::initializer_list<std::function<void()>>{
           [&] { table.Open(kFolder + "D", kShared, OnError::kReturn); },
           [&] { table.CreateTable(fields = {{"A", 1, 5}}, kFolder + "E"); }}) {
    host.dialogs.lock_answers = {LockAnswer::kAbandon};
    EXPECT_NE(Utf8(ErrorOf(waits)).find("ожидание прервано: C:\\OUT\\"), std::string::npos);
  }
}

// Each folder has locks and a journal of its own.
TEST_F(SaveTest, OfTablesInTwoFoldersIsWholeOrUndoneInEach) {
  std::set<std::string> states;
  for (int change = 1, going = 1; going != 0; ++change) {
    FakeHost host;
    SetUpWorld(host);
    host.files["C:\\FAR\\E.DBF"] = Rows(2);
    going = DiesAt(change, host, [](FakeHost& world) {
      TDbfCache cache(world);
      cache.SaveAllOrNone();
      cache.BeginSave(kFolder);
      Append(cache, "B", 3);
      Append(cache, "..\\FAR\\E", 3);
      cache.EndSave();
      cache.Commit();
    }) ? 1 : 0;
    EXPECT_TRUE(!host.files.Has("C:\\FAR\\~ccsave.jnl") ||
                host.files.Has("C:\\FAR\\veltlock.$$$"));
    TDbfCache cache(host);
    std::string state;
    for (const char* name : {"C:\\OUT\\B", "C:\\FAR\\E"}) {
      TFileDbfFile table(cache);
      table.Open(name, kShared, OnError::kThrow);
      state += std::to_string(table.RecordCount()) + " ";
    }
    states.insert(state);
  }
  EXPECT_EQ(states, (std::set<std::string>{"400 2 ", "400 5 ", "403 5 "}));
}

// Two processes that waited for each other's folders would wait for good.
TEST_F(SaveTest, HoldsNoFolderWhileItWaitsForAnother) {
  for (const bool dies : {false, true}) {
    FakeHost host;
    SetUpWorld(host);
    host.files["D:\\T.DBF"] = Rows(1);
    TDbfCache cache(host);
    TFileDbfFile table(cache);
    table.Open("D:\\T.DBF", kShared, OnError::kThrow);
    table.Append();
    auto other = host.files.HoldFile("D:\\" + std::string(kSaveLockFile));
    const auto is_free = [&] { return host.files.HoldFile(kFolder + std::string(kSaveLockFile)); };
    host.clock.on_sleep = [&](std::uint32_t) {
      EXPECT_TRUE(is_free());
      other.reset();
    };
    cache.BeginSave(kFolder);
    Append(cache, "A", 1);
    EXPECT_FALSE(is_free());
    if (dies) host.files.DieAtChange(4);
    try {
      cache.EndSave();
    } catch (const SuddenDeath&) {
    }
    host.files.Revive();
    EXPECT_TRUE(is_free());
    host.files.Remove(kMarker);
    EXPECT_EQ(other == nullptr, !dies);
  }
}

// Rows that a flush could not write wait for a later one, but not in the way of other stations.
TEST_F(SaveTest, LateRowsAreWrittenUnderTheLockOrLostAndTold) {
  for (const bool changed : {false, true}) {
    FakeHost host;
    SetUpWorld(host);
    TDbfCache cache(host);
    cache.NoteSaves("10702020/150324/0000001");
    Append(cache, "B", 1);
    host.files.FailPath("D:\\FAR\\B.DBF", FileOp::kReserve, FileError::Kind::kWrite);
    cache.Flush();
    host.files.StopFailing();
    if (changed) host.files[kFolder + "B.DBF"] = Rows(401);
    host.files[kMarker] = "";
    host.clock.on_sleep = [&](std::uint32_t) { host.files.Remove(kMarker); };
    host.dialogs.Clear();
    cache.Flush();
    EXPECT_EQ(host.clock.slept.size(), 1U) << "the other station's marker is waited for";
    EXPECT_FALSE(cache.HasUnsaved());
    const std::string dump = TableDump(host.files[kFolder + "B.DBF"].bytes());
    EXPECT_EQ(dump.find("new") == std::string::npos, changed);
    ASSERT_EQ(host.dialogs.exceptions.size(), changed ? 1U : 0U);
    if (changed) {
      EXPECT_EQ(Utf8(host.dialogs.exceptions[0]),
                "Несохраненные строки таблицы C:\\OUT\\B.DBF (10702020/150324/0000001) потеряны: "
                "файл с тех пор изменился");
    }
  }
}

// Others may write where they take our locks over: their rows stay.
TEST_F(SaveTest, WritesNothingOverWhatOthersWroteWhileItWaited) {
  for (const bool all_or_none : {false, true}) {
    SCOPED_TRACE(all_or_none);
    FakeHost host;
    SetUpWorld(host);
    {
      TDbfCache cache(host);
      if (all_or_none) cache.SaveAllOrNone();
      cache.BeginSave(kFolder);
      Append(cache, "A", 1);
      if (all_or_none) {
        cache.EndSave();  // waits for its transaction
      } else {
        cache.AbandonSave();  // waits for the next flush, here the end
      }
      host.files[kFolder + "A.DBF"] = Rows(9);
      EXPECT_EQ(ErrorOf([&] { cache.Commit(); }) == kNoError, !all_or_none);
    }
    EXPECT_EQ(host.files[kFolder + "A.DBF"].bytes(), Rows(9));
    EXPECT_EQ(host.dialogs.exceptions.size(), all_or_none ? 0U : 1U);
  }
}

TEST(Journal, NamesFilesOfItsOwnFolderOnly) {
  for (const char* name : {"..\\A.DBF", "C:A.DBF", "/A.DBF", ""}) {
    const journal::Journal made{"2024-03-15 10:30:00", "", {{name, -1, 10, {}}}};
    EXPECT_EQ(journal::Read(Bytes(made)).form, journal::Form::kTorn) << name;
  }
}

TEST(Journal, IsReadAsItWasWrittenOrNotAtAll) {
  journal::Table table{"A.DBF", 1000, 3000, {}};
  table.ranges = {{4, "\x01\x02\x03\x04", 4, journal::SectorSums(4, 4, "abcd")},
                  {999, "\x1A", 2001, journal::SectorSums(999, 2001, std::string(2001, 'r'))}};
  const journal::Journal made{"2024-03-15 10:30:00", "note", {table, {"B", -1, 10, {}}}};
  const std::string bytes = Bytes(made);
  const journal::Reading whole = journal::Read(bytes);
  ASSERT_EQ(whole.form, journal::Form::kWhole);
  EXPECT_EQ(Bytes(whole.journal), bytes);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    EXPECT_EQ(journal::Read(bytes.substr(0, at)).form, journal::Form::kTorn) << at;
    std::string damaged = bytes;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x40);
    EXPECT_EQ(journal::Read(damaged).form, journal::Form::kTorn) << at;
  }
  EXPECT_EQ(journal::Read(bytes + '\0').form, journal::Form::kTorn);
  EXPECT_EQ(journal::Checksum("123456789"), 0xCBF43926U);
}

}  // namespace
}  // namespace customsconv
