#include "support/table_image.h"

#include <sstream>
#include <stdexcept>

namespace customsconv {
namespace {

std::string LittleEndian(std::size_t value, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i, value >>= 8) bytes += static_cast<char>(value & 0xFF);
  return bytes;
}

std::size_t Number(std::string_view bytes, std::size_t at, int size) {
  std::size_t value = 0;
  for (int i = size; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i)));
  }
  return value;
}

}  // namespace

TableImage::TableImage(std::string_view fields) {
  std::istringstream words{std::string(fields)};
  for (std::string name, size; words >> name >> size;) {
    const std::size_t point = size.find('.');
    const int decimals = point == std::string::npos ? 0 : std::stoi(size.substr(point + 1));
    Field(name, size.at(0), std::stoi(size.substr(1)), decimals);
  }
}

TableImage& TableImage::AddRow(char mark, const std::vector<std::string>& values) {
  std::string row(1, mark);
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const auto width = static_cast<std::size_t>(fields_[i].length);
    const std::string value = i < values.size() ? DosFromWin(Win(values[i])) : "";
    if (value.size() > width) throw std::invalid_argument("too wide: " + values[i]);
    const std::string padding(width - value.size(), ' ');
    row += fields_[i].type == 'N' ? padding + value : value + padding;
  }
  rows_.push_back(row);
  return *this;
}

std::string TableImage::Bytes() const {
  const std::string tail = extended_ ? "\x0D" + std::string(263, '\0') : std::string("\x0D\0", 2);
  std::string descriptors;
  std::size_t record_length = 1;
  for (const FieldSpec& field : fields_) {
    std::string descriptor(32, '\0');
    descriptor.replace(0, field.name.size(), field.name);
    descriptor[11] = field.type;
    descriptor[16] = static_cast<char>(field.length & 0xFF);
    descriptor[17] = static_cast<char>(field.length > 0xFF ? field.length >> 8 : field.decimals);
    descriptors += descriptor;
    record_length += static_cast<std::size_t>(field.length);
  }
  std::string bytes = extended_ ? "\x30" : "\x03";
  bytes += std::string("\x18\x03\x0F", 3) + LittleEndian(rows_.size(), 4);
  bytes += LittleEndian(32 + descriptors.size() + tail.size(), 2);
  bytes += LittleEndian(record_length, 2) + std::string(17, '\0') + "\x26" + std::string(2, '\0');
  bytes += descriptors + tail;
  for (const std::string& row : rows_) bytes += row;
  return bytes + '\x1A';
}

std::string TableDump(std::string_view bytes) {
  struct Column {
    std::string name;
    std::size_t at, length;
  };
  std::vector<Column> columns;
  std::string dump;
  std::size_t record_length = 1;
  for (std::size_t at = 32; bytes.at(at) != '\x0D'; at += 32) {
    const std::string_view name = bytes.substr(at, 11);
    const char type = bytes.at(at + 11);
    const bool wide = type == 'C';  // has its length in both bytes
    const std::size_t length = Number(bytes, at + 16, wide ? 2 : 1);
    const std::size_t decimals = wide ? 0 : Number(bytes, at + 17, 1);
    columns.push_back({Utf8(WinFromDos(name.substr(0, name.find('\0')))), record_length, length});
    record_length += length;
    dump += (at == 32 ? "" : ", ") + columns.back().name + " " + type + std::to_string(length);
    if (decimals > 0) dump += "." + std::to_string(decimals);
  }
  dump += '\n';
  const std::size_t header_length = Number(bytes, 8, 2);
  for (std::size_t row = 0; row < Number(bytes, 4, 4); ++row) {
    const std::string_view record = bytes.substr(header_length + row * record_length);
    dump += std::to_string(row + 1) + (record.at(0) == '*' ? " deleted:" : ":");
    for (const Column& column : columns) {
      std::string value(record.substr(column.at, column.length));
      value.erase(value.find_last_not_of(' ') + 1);
      if (!value.empty()) dump += " " + column.name + "=\"" + Utf8(WinFromDos(value)) + "\"";
    }
    dump += '\n';
  }
  return dump;
}

std::string WithNumber(std::string table, std::size_t at, int size, std::size_t number) {
  return table.replace(at, static_cast<std::size_t>(size), LittleEndian(number, size));
}

}  // namespace customsconv
