#ifndef CUSTOMSCONV_DOCUMENT_RECORD_H_
#define CUSTOMSCONV_DOCUMENT_RECORD_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document/basis.h"

namespace customsconv {

class TDocFieldList;

// The records of one block inside one record. Record numbers count from 1.
class RecordList {
 public:
  explicit RecordList(const TBasis& basis) : basis_(&basis) {}
  [[nodiscard]] int Count() const { return static_cast<int>(records_.size()); }
  [[nodiscard]] TDocFieldList& Record(int number) const;
  // Adds behind the last record, labelled `label`.
  TDocFieldList& Append(std::string_view label);
  // Puts a new record in front of record `number`.
  TDocFieldList& Insert(int number, std::string_view label);
  [[nodiscard]] std::string Label(int number) const;
  [[nodiscard]] const TBasis& basis() const { return *basis_; }
  void Remove(int number);

 private:
  const TBasis* basis_;
  std::vector<std::unique_ptr<TDocFieldList>> records_;
};

// One record of a level: one text per entry of the level's basis. The text of a
// block entry is the block's name; its records hang on it.
class TDocFieldList {
 public:
  explicit TDocFieldList(const TBasis& basis) : basis_(&basis) {}

  [[nodiscard]] const TBasis& Basis() const { return *basis_; }
  // Number of slots: 0 until Fill, then the basis's count.
  [[nodiscard]] int Count() const;
  // Gives the record its slots: empty values, block entries holding their names.
  void Fill();
  // The stored text; `position` is below Count().
  [[nodiscard]] std::string_view Text(int position) const;
  void SetText(int position, std::string_view text);
  // Adds to the stored text in amortised constant time a byte.
  void AppendText(int position, std::string_view text);
  // Null when the entry has no record list (yet).
  [[nodiscard]] RecordList* Records(int position) const;
  // The entry's record list, made when absent.
  RecordList& EnsureRecords(int position);

  // Row (from 1) of the table that the record came from or was last written to;
  // 0 without one.
  std::int32_t RecNo = 0;

 private:
  const TBasis* basis_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_RECORD_H_
