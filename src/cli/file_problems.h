#ifndef CUSTOMSCONV_CLI_FILE_PROBLEMS_H_
#define CUSTOMSCONV_CLI_FILE_PROBLEMS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/texts.h"
#include "entry/conversion_account.h"

namespace customsconv::cli {

// The account of a file in words (UTF-8).

// Why a file is not whole in the tables.
struct FileProblem {
  std::string_view name;  // for programs, as docs/json.md lists them
  std::string text;
};
// Why a file holds no document.
[[nodiscard]] FileProblem NoDocument(const FileContent& content);
// `error`: what ended the file's run, empty for nothing.
[[nodiscard]] std::vector<FileProblem> ProblemsOf(const FileAccount& account,
                                                  std::string_view error);

// How many values were lost in one way.
struct LossCount {
  std::string_view name;  // for programs
  std::int64_t count;
  Text text;
};
// All ways, in the order in which they are shown.
[[nodiscard]] std::vector<LossCount> LossesIn(const FileAccount& account);

// A document of the file that was not converted, as no rule asks for it.
struct SkippedDocument {
  std::string kind;
  int occurrence;
  std::string_view reason;
};
[[nodiscard]] std::vector<SkippedDocument> SkippedIn(const FileAccount& account);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_FILE_PROBLEMS_H_
