#include "dbf/dbf_layout.h"

#include <string>
#include <utility>

namespace customsconv {
namespace {

constexpr std::string_view kTooShort = "DBF not DBF: ";
constexpr std::string_view kWrongSize = "DBF not DBF2: ";
constexpr std::string_view kWrongRecordLength = "DBF not DBF3: ";

// Records inside the header would overwrite their own count.
bool SizeFits(const dbf::Header& header, std::int64_t size) {
  const std::int64_t wanted = header.SizeOfRecords();
  return header.header_length >= dbf::kHeaderSize && wanted <= size &&
         size <= wanted + dbf::kSizeTolerance;
}

// The fields that the descriptors in `head` describe, and the record length that they make.
std::pair<TDescrs, std::size_t> ReadFields(std::string_view head, int count) {
  TDescrs fields;
  fields.reserve(static_cast<std::size_t>(count));
  std::size_t offset = dbf::kMarkSize;
  for (int i = 1; i <= count; ++i) {
    FieldDescriptor field =
        dbf::ReadDescriptor(head.substr(static_cast<std::size_t>(i) * dbf::kDescriptorSize));
    field.offset = static_cast<std::uint16_t>(offset);
    offset += field.length;
    fields.push_back(std::move(field));
  }
  return {std::move(fields), offset};
}

}  // namespace

LayoutResult ReadLayout(const TableBytes& bytes) {
  const std::int64_t size = bytes.Size();
  if (size <= dbf::kTooSmall) return {nullptr, kTooShort};
  std::string head(dbf::kHeaderSize, '\0');
  if (!bytes.Read(0, head.data(), head.size())) return {nullptr, kTooShort};
  auto layout = std::make_shared<TableLayout>();
  layout->header = dbf::ReadHeader(head);
  if (!SizeFits(layout->header, size)) return {nullptr, kWrongSize};

  // The descriptors that are counted lie within the header, and the header
  // within the file.
  head.resize(layout->header.header_length);
  if (!bytes.Read(0, head.data(), head.size())) return {nullptr, kWrongSize};
  auto [fields, record_length] = ReadFields(head, layout->header.FieldCount());
  if (record_length != layout->header.record_length) return {nullptr, kWrongRecordLength};
  layout->fields = std::move(fields);
  layout->names = FieldNames(layout->fields);
  return {std::move(layout), {}};
}

}  // namespace customsconv
