#ifndef CUSTOMSCONV_CLI_CONVERSION_LOG_H_
#define CUSTOMSCONV_CLI_CONVERSION_LOG_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "cli/command.h"
#include "entry/conversion_account.h"

namespace customsconv::cli {

// What became of one XML file. Texts of the command line are UTF-8.
struct FileLog {
  std::string file;
  FileAccount account;
  std::optional<bool> returned;  // by the library's function; none when it threw
  std::string error;             // that ended the file's run, or kept its rows out of the tables
  std::string problem;           // what else fails it
  std::size_t done = 0;          // documents that are done with
  std::size_t safe = 0;          // those of them that are in the tables for good
  bool lost = false;             // the others were not written after all
};

// Writes a conversion down as it runs: one line a file and a progress line, or JSON; with `explain`
// every mapping line of every record.
class ConversionLog : public ConversionObserver {
 public:
  // `strict`: a file with losses is not whole.
  ConversionLog(CommandContext& context, std::string rules_file, bool explain, bool strict,
                std::size_t files);

  // The account that the file's conversion fills.
  [[nodiscard]] FileAccount& BeginFile(const std::string& file) CUSTOMSCONV_LIFETIME_BOUND;
  // `returned`: the library's answer, none when it threw. `error`: empty when the run went through.
  // The file's line waits until its rows are safe. False when the file is not whole.
  bool EndFile(std::optional<bool> returned, std::string_view error);
  // Prints the lines that wait: the rows of all that was done are safe or, when there is an `error`
  // (UTF-8), were not written after all. True when that is so for documents of the file at hand.
  bool Release(std::string_view error = {});
  // The run ends here. Only files of which a part is in the tables get a line.
  void Interrupt();
  [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }
  // Closes the JSON result.
  void Finish(bool result, std::string_view error_utf8 = {});

  void TextRead(std::size_t bytes) override;
  void DocumentDone() override;
  void Record(std::string_view source_path) override;
  [[nodiscard]] bool WantsLines() const override { return explain_; }
  void Line(const LineReport& report) override;

 private:
  void ShowProgress();
  void WriteText(const FileLog& log);
  void OpenJson(const FileLog& log);
  void WriteJson(const FileLog& log);
  void ExplainText(const LineReport& report);
  void ExplainJson(const LineReport& report);

  CommandContext& context_;
  JsonWriter json_;
  std::string rules_file_;
  bool explain_;
  bool strict_;
  std::size_t files_;
  std::size_t file_number_ = 0;
  std::size_t records_ = 0;
  FileLog log_;
  bool in_file_ = false;
  bool is_long_ = false;  // the text of the file at hand
  std::vector<FileLog> waiting_;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CONVERSION_LOG_H_
