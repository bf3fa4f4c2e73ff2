#ifndef CUSTOMSCONV_DBF_TRANSACTION_H_
#define CUSTOMSCONV_DBF_TRANSACTION_H_

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace customsconv {

// What a save writes into one table. A table that is not there (no file) is made.
struct TableChange {
  struct Piece {
    std::int64_t at;
    std::string_view bytes;
  };
  std::string path;
  FileStream* file = nullptr;  // open for reading and writing
  std::int64_t new_size = 0;
  std::vector<Piece> pieces;  // ascending, none overlaps another
};

// Why nothing was written.
struct TransactionFailure {
  std::optional<std::size_t> table;  // that could not be written; none when it was the journal
  std::exception_ptr cause;
  bool undone = true;  // else the journal stands there, and the next who opens the folder undoes it
};

// Changes tables of a folder (with closing separator): all of them or, when the result is a
// failure, none. Wherever the process or the machine dies meanwhile, whoever opens the folder
// next finds by the journal what has to be undone. The caller holds the folder's SaveLock. `note`
// says what is saved, for whoever is told that it was undone.
[[nodiscard]] std::optional<TransactionFailure> WriteTables(Host& host, const std::string& folder,
                                                            std::string_view note,
                                                            const std::vector<TableChange>& tables);

// Room was reserved for rows that will not come.
void GiveSpareRoomBack(FileStream& file);

// What became of the save that a dead process left in a folder.
struct Recovery {
  enum class Outcome {
    kNone,     // there was none, or it had not touched any table
    kUndone,   // the tables are as they were before it
    kForeign,  // another program has changed `table` since: nothing was touched
  };
  Outcome outcome = Outcome::kNone;
  std::string moment;   // when that save began, "yyyy-mm-dd hh:nn:ss"
  std::string note;     // what it saved
  std::string table;    // the table that is another one now
  std::string kept_as;  // the journal's name from now on
};

// A save into the folder (with closing separator) is under way, or was when its process died.
[[nodiscard]] bool HasJournal(const Files& files, const std::string& folder);

// Undoes what a dead process left. The caller holds the folder's SaveLock. Throws FileError when
// it cannot be done (now); the journal then stays.
[[nodiscard]] Recovery Recover(Host& host, const std::string& folder);

// The journal of a save that could not be undone, for somebody to look at.
struct KeptJournal {
  std::string name;
  std::string moment, note;  // as of a Recovery; empty when it cannot be read
};
[[nodiscard]] std::vector<KeptJournal> KeptJournals(Host& host, const std::string& folder);

// The sentences for people, code page 1251.
[[nodiscard]] std::string Told(const KeptJournal& kept, std::string_view folder);
// Empty when there is nothing to tell.
[[nodiscard]] std::string Told(const Recovery& recovery, std::string_view folder);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_TRANSACTION_H_
