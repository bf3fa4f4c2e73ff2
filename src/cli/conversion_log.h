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
  bool saved = true;             // what was converted is in the tables
};

// Writes a conversion down as it runs: one line a file and a progress line, or JSON; with `explain`
// every mapping line of every record.
class ConversionLog : public ConversionObserver {
 public:
  ConversionLog(CommandContext& context, std::string rules_file, bool explain, std::size_t files);

  // The account that the file's conversion fills.
  [[nodiscard]] FileAccount& BeginFile(const std::string& file) CUSTOMSCONV_LIFETIME_BOUND;
  // `returned`: the library's answer, none when it threw. `error`: empty when the run went through.
  // The file's line waits until its rows are safe. False when the file is not whole.
  bool EndFile(std::optional<bool> returned, std::string_view error);
  // Prints the lines that wait. `error` (UTF-8): why the rows of these files were not written after
  // all.
  void Release(std::string_view error = {});
  // The run ends here, and files whose lines wait are not in the tables.
  void Interrupt();
  [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }
  // Closes the JSON result.
  void Finish(bool result, std::string_view error_utf8 = {});

  void DocumentDone() override;
  void Record(std::string_view source_path) override;
  [[nodiscard]] bool WantsLines() const override { return explain_; }
  void Line(const LineReport& report) override;

 private:
  void ShowProgress();
  // What was converted of the file is not in the tables.
  static void Lose(FileLog& file, std::string_view why);
  void WriteText(const FileLog& log);
  void OpenJson(const FileLog& log);
  void WriteJson(const FileLog& log);
  void ExplainText(const LineReport& report);
  void ExplainJson(const LineReport& report);

  CommandContext& context_;
  JsonWriter json_;
  std::string rules_file_;
  bool explain_;
  std::size_t files_;
  std::size_t file_number_ = 0;
  std::size_t records_ = 0;
  FileLog log_;
  bool in_file_ = false;
  std::vector<FileLog> waiting_;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CONVERSION_LOG_H_
