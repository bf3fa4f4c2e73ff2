// One document after the other: which section and which table set serve it, and why it is skipped
// when none does.

#include "entry/conversion_driver.h"

#include <memory>
#include <optional>
#include <string>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "entry/registration_number.h"
#include "mapping/rules_file.h"
#include "mapping/section_mapper.h"
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
                ConversionObserver* observer)
      : run_{environment, rules, observer},
        container_(container),
        output_dir_(output_dir),
        types_(types),
        tables_(tables),
        observer_(observer) {}

  void Run() {
    run_.registration_number =
        RegistrationNumberOf(container_.FileName(), container_.Text(), tables_, run_.environment);
    tables_.NoteSaves(run_.registration_number);
    if (observer_ != nullptr) observer_->RegistrationNumber(run_.registration_number);
    container_.ClearUnknownIds();
    while (const std::unique_ptr<TDocument> source = container_.Next()) Convert(*source);
  }

 private:
  void Convert(TDocument& source) {
    DocumentReport report{.kind = source.DocInfo().Code, .occurrence = container_.CurOccurrence()};
    const std::optional<SkipReason> skipped = TryConvert(source, report);
    if (observer_ == nullptr) return;
    if (skipped) {
      observer_->Skipped(report, *skipped);
    } else {
      observer_->Converted(report);
    }
  }

  std::optional<SkipReason> TryConvert(TDocument& source, DocumentReport& report) {
    // A declaration adjustment is served by the sections of the declaration.
    const std::string_view kind = report.kind == "KTDout" ? "ESADout" : report.kind;
    if (kind == "ESADout") {
      if (declaration_seen_) return SkipReason::kNotFirstDeclaration;
      declaration_seen_ = true;
    }
    if (!IsConverted(kind)) return SkipReason::kKindNotConverted;
    const std::optional<int> section = run_.rules.FindSection(kind);
    if (!section) return SkipReason::kNoSection;
    report.section = *section;
    table_ = UpperCaseRu(run_.rules.TableName(*section)) + ".DBF";
    report.table = table_;
    const bool components = table_ == kComponentTable;
    const std::string_view head = components ? kHeadTable : std::string_view(table_);
    if (report.occurrence > 1 && TakesFirstOfKindOnly(head)) return SkipReason::kNotFirstOfKind;
    const TDocInfo* type = types_.TableSetOf(head);
    if (type == nullptr) return SkipReason::kNoTableSet;
    const auto target =
        CreateDbfDocument(type->Code, output_dir_, types_, tables_, run_.environment);
    if (components) target->Load(output_dir_);
    MapSection(source, *target, *section);
    // Components go back to the folder that their head row was loaded from.
    target->Save(components ? std::string_view() : output_dir_);
    report.rows_added = target->AppendedRows();
    return std::nullopt;
  }

  // What goes wrong in a mapping is shown; what was mapped before is saved.
  void MapSection(TDocument& source, TDbfDocument& target, int section) {
    Dialogs& dialogs = run_.environment.host.dialogs;
    try {
      MapTableSection({run_, source, target}, section);
    } catch (const SilentAbort&) {
    } catch (const Error& error) {
      dialogs.Exception(error.text());
    } catch (const std::exception& error) {
      dialogs.Exception(error.what());
    }
  }

  MappingRun run_;
  TXMLContainer& container_;
  std::string_view output_dir_;
  TDocTypeList& types_;
  TDbfCache& tables_;
  ConversionObserver* observer_;
  std::string table_;
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
                   Environment& environment, ConversionObserver* observer) {
  bool unknown_ids = false;
  {
    const RulesFile rules = RulesFile::Load(environment.host.files, rules_file);
    TXMLContainer container(xml_file, types, environment);
    ConversionRun(rules, container, output_dir, types, tables, environment, observer).Run();
    unknown_ids = container.UnknownIdsFound();
  }
  if (unknown_ids) TellUnknownIds(xml_file, environment.host.dialogs);
}

}  // namespace customsconv
