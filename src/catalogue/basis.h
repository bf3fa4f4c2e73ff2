#ifndef CUSTOMSCONV_CATALOGUE_BASIS_H_
#define CUSTOMSCONV_CATALOGUE_BASIS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/field_info.h"
#include "text/key_index.h"

namespace customsconv {

// One level of a type's field tree: its fields in file order and the look-ups
// over them. Positions count from 0. Shared, read-only, by all documents of the type.
//
// Levels may nest as deep as their file says; nothing here recurses over them.
class TBasis {
 public:
  TBasis() = default;
  virtual ~TBasis();
  TBasis(const TBasis&) = delete;
  TBasis& operator=(const TBasis&) = delete;

  [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] const TFieldInfo& Item(int position) const CUSTOMSCONV_LIFETIME_BOUND {
    return items_[static_cast<std::size_t>(position)];
  }
  // The entry's owner may go on filling it until the level is indexed.
  TFieldInfo& MutableItem(int position) CUSTOMSCONV_LIFETIME_BOUND {
    return items_[static_cast<std::size_t>(position)];
  }
  // The reference is good until the next Append.
  TFieldInfo& Append(TFieldInfo&& field) CUSTOMSCONV_LIFETIME_BOUND;
  // Appends the entry of a block whose level is complete, and links that level to this one.
  TFieldInfo& AppendBlock(TFieldInfo&& block,
                          std::unique_ptr<TBasis> level) CUSTOMSCONV_LIFETIME_BOUND;
  // Drops all entries with all levels below them, and the look-ups.
  void Clear();

  // Position or -1. Without regard to letter case once the level is indexed (the first
  // position wins among equal names), then in constant time; exact and linear before.
  [[nodiscard]] int IndexOfName(std::string_view name) const;
  // The same for the name of a block: -1 also when a field has the name.
  [[nodiscard]] int IndexOfBlock(std::string_view name) const;
  [[nodiscard]] bool HasBlock(std::string_view name) const { return IndexOfBlock(name) >= 0; }
  // The caller knows that the name exists.
  [[nodiscard]] const TFieldInfo& FieldByName(std::string_view name) const
      CUSTOMSCONV_LIFETIME_BOUND;
  // The first field whose XML path without its namespace prefixes equals `path` without regard to
  // letter case; -1 when there is none. `path` is cut at 255 bytes, so a field with a longer path
  // is never found. An empty path finds the first field that has no XML path. Constant time;
  // finds nothing before the level is indexed.
  [[nodiscard]] int IndexOfXmlPath(std::string_view path) const;
  // The deepest level reached by walking the "\"-separated path of block names; record
  // numbers and empty parts are skipped.
  [[nodiscard]] const TBasis& FindSubBasis(std::string_view path) const CUSTOMSCONV_LIFETIME_BOUND;
  // Characters that all lines of the field hold together.
  [[nodiscard]] int TotalWidth(int position) const;

  // Builds the look-ups and the checksum once the level is complete.
  void Reindex();
  [[nodiscard]] bool indexed() const { return indexed_; }
  [[nodiscard]] std::uint32_t checksum() const { return checksum_; }

  // Block names from the top joined by "\"; empty at the top. Put together on each call:
  // kept texts would take quadratic room in deeply nested levels.
  [[nodiscard]] std::string Path() const;
  // The entry of the parent level that this level hangs on; null at the top.
  [[nodiscard]] const TFieldInfo* Owner() const CUSTOMSCONV_LIFETIME_BOUND {
    return parent == nullptr ? nullptr : &parent->Item(owner_position_);
  }

  const TBasis* parent = nullptr;  // the level above, once this one was appended to it
  std::string key_fields;  // "&&NUM" for a block of a Fields section, a table's key field list
  std::string link_fields;

 private:
  std::vector<TFieldInfo> items_;
  KeyIndex names_;
  KeyIndex xml_paths_;
  int owner_position_ = 0;
  bool indexed_ = false;
  std::uint32_t checksum_ = 0;
};

// A level that is a dBase table. All levels below it are of this class, too.
class TDbfBasis : public TBasis {
 public:
  // The lines of the type's Files section; kept by the top level only.
  std::vector<std::string> file_list;
  std::string table_file;  // name of the level's table, at most 255 bytes
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_BASIS_H_
