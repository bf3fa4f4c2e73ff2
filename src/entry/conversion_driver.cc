// One document after the other: which section and which table set serve it, and why it is skipped
// when none does.

#include "entry/conversion_driver.h"

#include <memory>
#include <optional>
#include <string>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "entry/failure_text.h"
#include "entry/registration_number.h"
#include "mapping/rules_file.h"
#include "mapping/section_mapper.h"
#include "services/exchange_lock.h"
#include "tables/dbf_document.h"
#include "text/file_names.h"
#include "text/words.h"
#include "xml/read/xml_container.h"

namespace customsconv {
namespace {

constexpr std::string_view kConvertedKinds =
    ",ESADout,Inventory,DTSout,DTSout_CU,KTSout,TransportMeanCardOut,GoodsComponentList,"
    "GoodsInfoAndDescriptionsOut,KTDout,KDTout_CU,";
constexpr std::string_view kHeadTable = "DBRHEAD.DBF";
constexpr std::string_view kComponentTable = "DBRKMP.DBF";

// Value declarations and adjustments: the table set takes one of a kind.
bool TakesFirstOfKindOnly(std::string_view table) {
  return table == "SBRHEAD.DBF" || table == "KBRHEAD.DBF";
}

bool IsConverted(std::string_view kind) {
  return ContainsNoCase(kConvertedKinds, "," + std::string(kind) + ",");
}

// One run over the documents of a file.
class ConversionRun {
 public:
  ConversionRun(const RulesFile& rules, TXMLContainer& container, std::string_view output_dir,
                TDocTypeList& types, TDbfCache& tables, Environment& environment,
                FileAccount& account)
      : run_{environment, rules, account.observer},
        container_(container),
        output_dir_(output_dir),
        types_(types),
        tables_(tables),
        account_(account) {}

  void Run() {
    if (account_.observer != nullptr) account_.observer->TextRead(container_.Text().size());
    const RegistrationNumber number =
        RegistrationNumberOf(container_.FileName(), container_.Text(), tables_, run_.environment);
    run_.registration_number = number.text;
    tables_.NoteSaves(number.text);
    account_.number = number.text;
    account_.number_drawn = number.drawn;
    account_.content = ContentOf(container_);
    container_.ClearUnknownIds();
    account_.losses.replaced = container_.ReplacedCharacters();
    while (const std::unique_ptr<TDocument> source = container_.Next()) {
      Convert(*source);
      account_.losses.elements = container_.Lost();
      account_.losses.lines = run_.losses;
    }
  }

 private:
  void Convert(TDocument& source) {
    DocumentAccount& document = account_.documents.emplace_back();
    document.kind = source.DocInfo().Code;
    document.occurrence = container_.CurOccurrence();
    document.is_empty = container_.CurText().empty();
    try {
      document.skipped = TryConvert(source, document);
    } catch (...) {
      account_.documents.pop_back();  // the error is the run's, and the document nowhere
      throw;
    }
    if (account_.observer != nullptr) account_.observer->DocumentDone();
  }

  std::optional<SkipReason> TryConvert(TDocument& source, DocumentAccount& document) {
    // A declaration adjustment is served by the sections of the declaration.
    const std::string_view kind =
        document.kind == "KTDout" ? "ESADout" : std::string_view(document.kind);
    if (kind == "ESADout") {
      if (declaration_seen_) return SkipReason::kNotFirstDeclaration;
      declaration_seen_ = true;
    }
    if (!IsConverted(kind)) return SkipReason::kKindNotConverted;
    const std::optional<int> section = run_.rules.FindSection(kind);
    if (!section) return SkipReason::kNoSection;
    document.section = *section;
    document.table = UpperCaseRu(run_.rules.TableName(*section)) + ".DBF";
    const bool components = document.table == kComponentTable;
    const std::string_view head = components ? kHeadTable : std::string_view(document.table);
    if (document.occurrence > 1 && TakesFirstOfKindOnly(head)) return SkipReason::kNotFirstOfKind;
    const TDocInfo* type = types_.TableSetOf(head);
    if (type == nullptr) return SkipReason::kNoTableSet;
    const auto target =
        CreateDbfDocument(type->Code, output_dir_, types_, tables_, run_.environment);
    document.missing_tables = target->MissingTables();
    if (account_.counts_losses) target->CountLosses();
    if (components) target->Load(output_dir_);
    document.section_error = MapSection(source, *target, *section);
    // Components go back to the folder that their head row was loaded from.
    target->Save(components ? std::string_view() : output_dir_);
    document.rows_added = target->AppendedRows();
    account_.losses.cells += target->Losses();
    if (target->abandoned())
      document.abandoned_at = std::string(output_dir_).append(kExchangeLockFile);
    return std::nullopt;
  }

  // What goes wrong in a mapping is shown; what was mapped before is saved. The error, if any.
  std::string MapSection(TDocument& source, TDbfDocument& target, int section) {
    try {
      MapTableSection({run_, source, target}, section);
      return {};
    } catch (const std::exception& error) {
      const std::string text = FailureText(error);
      if (!text.empty()) run_.environment.host.dialogs.Exception(text);
      const std::string told = ToldText(error);
      return told.empty() ? std::string("прервано"_cp1251) : told;
    }
  }

  MappingRun run_;
  TXMLContainer& container_;
  std::string_view output_dir_;
  TDocTypeList& types_;
  TDbfCache& tables_;
  FileAccount& account_;
  bool declaration_seen_ = false;
};

void TellUnknownIds(std::string_view xml_file, Dialogs& dialogs) {
  std::string text("В документе "_cp1251);
  text.append(FileNameOf(xml_file));
  text.append(
      " были найдены неверные идентифиаторы (устаревший формат?).\n\r"
      "Возможно при конвертации XML файла часть информации была потеряна"_cp1251);
  dialogs.Message(text);
}

}  // namespace

void RunConversion(std::string_view rules_file, std::string_view xml_file,
                   std::string_view output_dir, TDocTypeList& types, TDbfCache& tables,
                   Environment& environment, FileAccount* account) {
  bool unknown_ids = false;
  FileAccount unwatched;
  unwatched.counts_losses = false;
  FileAccount& filled = account == nullptr ? unwatched : *account;
  {
    const RulesFile rules = RulesFile::Load(environment.host.files, rules_file);
    filled.foreign_files = types.ForeignFiles();
    if (const auto encoding = ForeignEncodingOf(rules.Text())) {
      filled.foreign_files.push_back({std::string(rules_file), *encoding});
    }
    TXMLContainer container(xml_file, types, environment);
    ConversionRun(rules, container, output_dir, types, tables, environment, filled).Run();
    unknown_ids = container.UnknownIdsFound();
  }
  if (unknown_ids) TellUnknownIds(xml_file, environment.host.dialogs);
}

}  // namespace customsconv
