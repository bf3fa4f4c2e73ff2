#include "xml/read/xml_container.h"

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/numbers.h"
#include "text/words.h"
#include "xml/tree/xml_parser.h"

namespace customsconv {

namespace {

// The type of that code; for customs union documents without one of their own, the type
// that the code in front of "_CU" names. -1 when there is neither.
int TypeOfRoot(std::string_view root_name, const TDocTypeList& types) {
  constexpr std::string_view kCustomsUnion = "_CU";
  const int type = types.IndexOf(root_name);
  const std::size_t suffix = root_name.find(kCustomsUnion);
  if (type >= 0 || suffix == std::string_view::npos) return type;
  return types.IndexOf(root_name.substr(0, suffix));
}

// "ESADout (3)"; short names of electronic documents lose their first word.
std::string KindText(std::string_view short_name, int count) {
  std::string text(short_name);
  text.append(" (").append(std::to_string(count)).append(")");
  if (std::string_view(text).substr(0, 2) != "ЭД"_cp1251) return text;
  return std::string(TextFromWord(1, text, " "));
}

}  // namespace

int TXMLContainer::Kind::Count() const { return IntOr(ExtractWord(2, text, "()"), 1); }

TXMLContainer::TXMLContainer(std::string_view file_name, TDocTypeList& types,
                             Environment& environment)
    : types_(types), environment_(environment), file_name_(ShortText::Cut(file_name)) {
  ReadFile();
  ListDocuments();
}

void TXMLContainer::ReadFile() {
  const Files& files = environment_.host.files;
  const FileStamp age = files.Stamp(file_name_);
  try {
    text_ = LoadXmlText(files, file_name_, &lines_);
  } catch (const Error& error) {
    throw Error(error.text() + " " + file_name_.str(), error.told());
  }
  file_age_ = age;
  finders_.clear();
}

void TXMLContainer::ListDocuments() {
  for (const RootName& root : FindRootNames(text_)) {
    const int type = TypeOfRoot(root.name, types_);
    if (type < 0) {
      unknown_roots_.push_back(root);
      continue;
    }
    doc_list_.push_back({KindText(types_.Item(type).ShortName, root.count), type});
  }
}

std::unique_ptr<TDocument> TXMLContainer::Next() {
  const auto kind = static_cast<std::size_t>(cur_index_);
  if (cur_index_ >= 0 && doc_list_[kind].Count() > cur_occurrence_) {
    return Build(cur_index_, cur_occurrence_ + 1);
  }
  if (cur_index_ + 1 < static_cast<int>(doc_list_.size())) return Build(cur_index_ + 1, 1);
  return nullptr;
}

std::unique_ptr<TDocument> TXMLContainer::Build(int index, int occurrence) {
  if (environment_.host.files.Stamp(file_name_) != file_age_) ReadFile();
  cur_index_ = index;
  cur_occurrence_ = occurrence;
  const int type = doc_list_[static_cast<std::size_t>(index)].type_index;
  auto document = CreateDocument(types_.Item(type).Code, types_, environment_);
  if (text_.empty()) throw Error(std::string("Пустой файл: "_cp1251) + file_name_.str());
  cur_text_ = DocumentText(type, occurrence);
  if (!cur_text_.empty()) {
    const XmlTree tree(cur_text_);
    document->OpenBlock("");
    DocumentFiller(*document, lost_).Fill(tree.root());
  }
  document->Modified = false;
  return document;
}

std::string_view TXMLContainer::DocumentText(int type_index, int occurrence) {
  auto finder = finders_.find(type_index);
  if (finder == finders_.end()) {
    const std::string_view prefix = types_.Item(type_index).GetHeaderValue("Prefix");
    finder = finders_.try_emplace(type_index, ExtractWord(1, prefix, " <")).first;
  }
  return finder->second.Find(text_, static_cast<std::size_t>(occurrence));
}

}  // namespace customsconv
