// What a program would do that keeps its rows in a database: sqlite_peer DATABASE ROWS
// inserts the rows in one transaction, safe on the disk. A line of ROWS is a table's number of
// columns, its name and the row's values, separated by tabs. The tables exist.

#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

namespace {

class Database {
 public:
  explicit Database(const char* file) {
    Check(sqlite3_open(file, &database_));
    Run("PRAGMA synchronous = FULL");
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() {
    for (const auto& [table, statement] : inserts_) sqlite3_finalize(statement);
    sqlite3_close(database_);
  }

  void Run(const char* sql) { Check(sqlite3_exec(database_, sql, nullptr, nullptr, nullptr)); }

  void Insert(const std::string& line) {
    std::istringstream cells(line);
    std::string columns, table, value;
    std::getline(cells, columns, '\t');
    std::getline(cells, table, '\t');
    sqlite3_stmt*& insert = inserts_[table];
    if (insert == nullptr) insert = Prepare(table, std::stoi(columns));
    for (int column = 1; std::getline(cells, value, '\t'); ++column) {
      Check(sqlite3_bind_text(insert, column, value.data(), static_cast<int>(value.size()),
                              SQLITE_TRANSIENT));
    }
    if (sqlite3_step(insert) != SQLITE_DONE) Check(sqlite3_errcode(database_));
    Check(sqlite3_reset(insert));
  }

 private:
  sqlite3_stmt* Prepare(const std::string& table, int columns) {
    std::string sql = "INSERT INTO " + table + " VALUES (?";
    for (int column = 1; column < columns; ++column) sql += ",?";
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database_, (sql + ")").c_str(), -1, &statement, nullptr));
    return statement;
  }

  void Check(int result) const {
    if (result == SQLITE_OK) return;
    std::cerr << sqlite3_errmsg(database_) << '\n';
    std::exit(1);
  }

  sqlite3* database_ = nullptr;
  std::map<std::string, sqlite3_stmt*> inserts_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  Database database(argv[1]);
  std::ifstream rows(argv[2]);
  database.Run("BEGIN");
  for (std::string line; std::getline(rows, line);) database.Insert(line);
  database.Run("COMMIT");
}
