#ifndef CUSTOMSCONV_TESTS_SUPPORT_OPENED_TABLE_H_
#define CUSTOMSCONV_TESTS_SUPPORT_OPENED_TABLE_H_

#include <string>

#include "dbf/dbf_file.h"
#include "support/fake_host.h"
#include "support/table_image.h"

namespace customsconv {

// The table C:\OUT\T.DBF of these bytes in a world of its own, opened for writing.
struct OpenedTable {
  explicit OpenedTable(const std::string& bytes) {
    host.files[path] = bytes;
    table.Open(path, kModeReadWrite | kShareDenyNone, OnError::kThrow);
  }
  // The bytes on disk after a flush.
  const std::string& Flushed() {
    cache.Flush();
    return host.files[path].bytes();
  }

  const std::string path = "C:\\OUT\\T.DBF";
  FakeHost host;
  TDbfCache cache{host};
  TFileDbfFile table{cache};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_OPENED_TABLE_H_
