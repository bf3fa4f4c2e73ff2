#ifndef CUSTOMSCONV_CLI_VERSION_H_
#define CUSTOMSCONV_CLI_VERSION_H_

namespace customsconv::cli {

// Set by the build from the project's version.
inline constexpr const char* kVersion = CUSTOMSCONV_VERSION;

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_VERSION_H_
