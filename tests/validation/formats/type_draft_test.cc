#include "validation/formats/type_draft.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/fake_files.h"
#include "support/temp_folder.h"
#include "support/text.h"
#include "text/words.h"

namespace customsconv {
namespace {

namespace fs = std::filesystem;

// The folder drafts: schemas, and beside each what its draft must be.
class TypeDraftTest : public testing::Test {
 protected:
  TypeDraftTest() {
    for (const auto& entry : fs::directory_iterator(folder_)) {
      if (entry.path().extension() == ".dcf") names_.push_back(entry.path().stem());
      files_["C:\\XSD\\" + entry.path().filename().string()] = FileBytes(entry.path());
    }
  }

  std::string Draft(const std::string& name, const DraftOptions& options = {"r", "", ""}) {
    schema::SchemaSet schemas(files_, "C:\\XSD\\" + name + ".xsd");
    return ReplaceAll(Utf8(DraftType(schemas, options)), "\r\n", "\n");
  }

  const fs::path folder_ = CUSTOMSCONV_SOURCE_DIR "/tests/validation/formats/drafts";
  std::vector<std::string> names_;
  FakeFiles files_;
};

TEST_F(TypeDraftTest, IsWhatStandsBesideTheSchema) {
  EXPECT_EQ(names_.size(), 4U);
  for (const std::string& name : names_) {
    EXPECT_EQ(Draft(name), FileBytes(folder_ / (name + ".dcf"))) << name;
  }
  files_.ResetCounts();
  (void)Draft("header");
  EXPECT_EQ(files_.Count(FileOp::kRead), 3) << "nothing from outside the folder";
}

TEST_F(TypeDraftTest, TakesCodeAndPrefixFromTheOptions) {
  const std::string prefixed = Draft("header", {.root = "r", .prefix = "D", .code = "Doc"});
  for (const char* line : {"Prefix=<D:r xmlns:D=\"urn:t\" xmlns:o=\"urn:o\" Mode=\"7E\">",
                           "[Doc.Fields]", "NAMESPACE=\"o:far\"", "NAMESPACE=\"D:g\""}) {
    EXPECT_TRUE(Contains(prefixed, std::string(line) + "\n")) << prefixed;
  }
}

}  // namespace
}  // namespace customsconv
