#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_ADDRESS_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_ADDRESS_H_

#include <optional>
#include <string>
#include <string_view>

// Schema files go by addresses of a scheme of their own, "schema:///FILE", relative to the folder
// of the schema that is being read; every other address, and one that leads out of that folder,
// leads nowhere. So no schema makes the system read a foreign file or ask a network.
namespace customsconv::schema {

inline constexpr std::string_view kAddressScheme = "schema:///";

// The address of a file in the schema's folder (code page 1251).
[[nodiscard]] std::string AddressOf(std::string_view file_name);

// The file below the schema's folder that an address stands for, code page 1251; empty for one
// that leads nowhere.
[[nodiscard]] std::optional<std::string> FileBelowFolder(std::string_view address);

// The file below the folder that the location (UTF-8, as "schemaLocation" gives it) means in a
// file.
[[nodiscard]] std::optional<std::string> ReferredFile(std::string_view location,
                                                      std::string_view from_file);

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_SCHEMA_ADDRESS_H_
