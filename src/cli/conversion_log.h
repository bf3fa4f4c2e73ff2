#ifndef CUSTOMSCONV_CLI_CONVERSION_LOG_H_
#define CUSTOMSCONV_CLI_CONVERSION_LOG_H_

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command.h"
#include "entry/conversion_report.h"

namespace customsconv::cli {

// What became of one XML file; all texts UTF-8.
struct FileLog {
  struct Converted {
    std::string kind;
    int occurrence;
    int section_line;  // from 1
    std::string table;
  };
  struct Skipped {
    std::string kind;
    int occurrence;
    std::string reason;
  };
  std::string file;
  std::string number;  // registration number
  std::vector<Converted> converted;
  std::vector<Skipped> skipped;
  std::map<std::string, int> rows_added;  // by table file
  std::string error;                      // that ended the file's run
};

// Writes a conversion down as it runs: one line a file and a progress line, or JSON; with `explain`
// every mapping line of every record.
class ConversionLog : public ConversionObserver {
 public:
  ConversionLog(CommandContext& context, std::string rules_file, bool explain, std::size_t files);

  void BeginFile(const std::string& file);
  // `error` is code page 1251, empty when the run went through. The file's line waits until its
  // rows are safe.
  void EndFile(std::string_view error);
  // Prints the lines that wait. `error`: why the rows of these files were not written after all.
  void Release(std::string_view error = {});
  // The run ends here, and files whose lines wait are not in the tables.
  void Interrupt();
  [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }
  // Closes the JSON result.
  void Finish(bool result, std::string_view error_1251);

  void RegistrationNumber(std::string_view number) override;
  void Skipped(const DocumentReport& document, SkipReason reason) override;
  void Converted(const DocumentReport& document) override;
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
  std::size_t files_;
  std::size_t file_number_ = 0;
  std::size_t records_ = 0;
  FileLog log_;
  bool in_file_ = false;
  std::vector<FileLog> waiting_;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CONVERSION_LOG_H_
