#ifndef CUSTOMSCONV_DBF_DBF_FILE_H_
#define CUSTOMSCONV_DBF_DBF_FILE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_fields.h"
#include "dbf/dbf_image.h"
#include "platform/files.h"

namespace customsconv {

struct LayoutResult;

// Result of opening, positioning and posting.
enum class DbfStatus : std::uint16_t {
  kOk = 0,
  kNotATable = 1,
  kNoFile = 4,     // missing or not openable
  kRefused = 255,  // closed, no such record
};
enum class OnError { kThrow, kReturn };

// Record-at-a-time access to one dBase table.
//
//   TFileDbfFile goods(cache);
//   goods.Open("C:\\OUT\\DBRTOV", kModeReadWrite, OnError::kThrow);
//   for (bool found = goods.FindFirst("G32", "1"); found; found = goods.FindNext()) {
//     goods.SetFieldByName("G33", "8471300000");
//     goods.Post();
//   }
//
// The table is an image in the cache: reading and writing touch memory only,
// TDbfCache::Flush brings changed images to disk. (Tables of 10,000,000 bytes and
// more are read from the file; so are smaller ones until a record is read. Of a table that
// is opened for writing the image holds what changes, and the file the rest.) Record numbers
// count from 1. Values cross this interface in code page 1251; the table holds code page 866.
class TFileDbfFile {
 public:
  // Files of so many bytes and more are not loaded for reading.
  static constexpr std::int64_t kMaxImageSize = 10'000'000;
  // Smaller ones are loaded when they are opened.
  static constexpr std::int64_t kMinFileSize = 64 * 1024;

  // `cache` must outlive the table.
  explicit TFileDbfFile(TDbfCache& cache);
  virtual ~TFileDbfFile();
  TFileDbfFile(const TFileDbfFile&) = delete;
  TFileDbfFile& operator=(const TFileDbfFile&) = delete;

  // Opens `name`, to which ".DBF" is added when it has no extension. No record
  // is current afterwards. A table that was open is closed first. With kThrow a
  // missing or damaged table throws DbfError (FileError when it cannot be opened) whose
  // text names the file; with kReturn the cause is the result.
  DbfStatus Open(std::string_view name, FileMode mode, OnError on_error);
  // Replaces `name` by an empty table of these fields and opens it for reading and
  // writing. `fields` receives the list as read back. Nothing happens for an empty list
  // (kRefused) and for one that no table can hold (kNotATable). Throws FileError when the file
  // cannot be made.
  DbfStatus CreateTable(TDescrs& fields, std::string_view name);
  void Close();
  // Reopens when the file on disk is another than the one opened. True when it did.
  bool Refresh();

  // Reads the record into the record buffer, unless it is the current one already.
  DbfStatus GoTo(std::int64_t record);
  // Changes go to the image. The first one of a large table is refused when the file is no longer
  // the one that was opened.

  // Writes the record buffer over the current record.
  DbfStatus Post();
  // Adds the record buffer as the last record, which becomes current. The record count
  // is the table's own: two objects over one table never overwrite each other's rows.
  bool Append();
  void BlankRecord();
  // Removes the record physically. No record is current afterwards.
  DbfStatus DeleteRecord(std::int64_t record);

  // Values without the padding of their width; a date as dd.mm.yy. Empty when
  // closed or when there is no such field.
  [[nodiscard]] ShortText GetField(int field) const;
  [[nodiscard]] ShortText GetFieldByName(std::string_view name) const;
  // The field's bytes in the current record as the table holds them: code page 866, padded to
  // their width. Empty when closed or when there is no such field; valid until the record or
  // the field changes.
  [[nodiscard]] std::string_view StoredField(int field) const CUSTOMSCONV_LIFETIME_BOUND;
  // `raw` leaves out the formatting by type.
  void SetField(int field, std::string_view value, bool raw);
  // A name that begins with "||" is written raw.
  void SetFieldByName(std::string_view name, std::string_view value);
  void PutFieldByName(std::string_view name, std::string_view value);
  // Texts of any length, continued in the fields named after the first one with
  // 2, 3, … when that is a "C" field of 255 bytes or more.
  [[nodiscard]] std::string GetLongField(int field) const;
  [[nodiscard]] std::string GetLongFieldByName(std::string_view name) const;
  // The result is the number of fields that the text fills: continuations 2 to that number got a
  // part of it, the others keep what they hold.
  int SetLongField(int field, std::string_view value, bool raw);
  void SetLongFieldByName(std::string_view name, std::string_view value);
  // The field (there must be such a one) that continues `field` as part `number`, from 2; -1 when
  // there is none.
  [[nodiscard]] int Continuation(int field, int number) const;

  // Index (from 0) of the last field of that name, any case; -1 when there is none.
  [[nodiscard]] int FieldIndex(std::string_view name) const;
  [[nodiscard]] int FieldWidth(std::string_view name) const;
  [[nodiscard]] char FieldType(std::string_view name) const;
  // The caller knows that there is such a field.
  [[nodiscard]] const FieldDescriptor& FieldAt(int field) const CUSTOMSCONV_LIFETIME_BOUND;
  // Empty when closed; valid until the table is closed.
  [[nodiscard]] const TDescrs& fields() const CUSTOMSCONV_LIFETIME_BOUND;

  // A field name that ends in "*" asks for values that contain `value`.
  bool FindFirst(std::string_view field, std::string_view value);
  bool FindNext();
  // From record `record` on, which then is the number behind the last record looked at; a
  // record that was found is current.
  bool Search(std::string_view field, std::string_view value, std::int64_t& record);

  [[nodiscard]] bool IsDeleted() const;
  // One line "<field>=<value>" a field.
  void GetRecordText(std::vector<std::string>& lines) const;

  [[nodiscard]] bool is_open() const { return layout_ != nullptr; }
  // 0 when closed, and once the table's image was dropped from the cache.
  [[nodiscard]] std::int64_t RecordCount() const;
  // -1 after opening, 0 after a deletion.
  [[nodiscard]] std::int64_t current_record() const { return current_record_; }
  // Whether the last GoTo asked for a record below 1, or beyond the count.
  [[nodiscard]] bool at_beginning() const { return at_beginning_; }
  [[nodiscard]] bool past_end() const { return past_end_; }
  // The expanded name in upper case, for messages.
  [[nodiscard]] const ShortText& file_name() const CUSTOMSCONV_LIFETIME_BOUND { return file_name_; }

 private:
  friend class TDbfCache;

  [[nodiscard]] DbfStatus OpenExpanded(OnError on_error);
  // The cached image of the file, or the file itself when that is large.
  [[nodiscard]] bool AttachWhole(LayoutResult& found);
  [[nodiscard]] bool Attach(LayoutResult& found);
  void Use(TDbfMemoryStream& image, LayoutResult& found);
  [[nodiscard]] std::unique_ptr<TDbfMemoryStream> LoadImage(FileStream& file) const;
  [[nodiscard]] std::unique_ptr<TDbfMemoryStream> Named(
      std::unique_ptr<TDbfMemoryStream> image) const;
  [[nodiscard]] std::unique_ptr<TDbfMemoryStream> ImageOverFile();
  [[nodiscard]] bool WantsToWrite() const;
  void LoadToRead();
  // A table that reads the file of this image goes over to the image.
  void JoinImage(TDbfMemoryStream& image);
  // The cache drops the image: the table stays open without bytes.
  void Detach() { bytes_ = TableBytes(); }

  // Sees to it that there is an image to change, which is noted. False when there is none.
  [[nodiscard]] bool PrepareChange();
  void NormaliseMark();

  // Null when closed or when there is no such field.
  [[nodiscard]] const FieldDescriptor* Field(int field) const;
  [[nodiscard]] std::string_view Stored(const FieldDescriptor& field) const;
  int StoreLongText(int field, std::string_view dos);
  [[nodiscard]] int ThisYear();

  TDbfCache& cache_;
  bool listed_ = false;  // among the cache's open tables

  std::string path_;  // expanded, as given
  ShortText file_name_;
  FileMode mode_ = 0;
  FileStamp file_time_ = kNoStamp;
  std::shared_ptr<const TableLayout> layout_;  // null when closed
  TableBytes bytes_;
  bool becomes_image_ = false;  // with the first record that is read

  std::string record_;  // the record buffer, and the end mark that follows a last record
  std::int64_t current_record_ = -1;
  bool at_beginning_ = false;
  bool past_end_ = false;
  int this_year_ = 0;  // asked for once while the table is open

  ShortText search_field_;
  ShortText search_value_;
  std::int64_t search_position_ = 0;
};

// A table that could also stand on a database server; here always a file.
class TSqlDbfFile : public TFileDbfFile {
 public:
  using TFileDbfFile::TFileDbfFile;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_FILE_H_
