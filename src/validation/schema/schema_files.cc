#include "validation/schema/schema_files.h"

#include <libxml/parser.h>

#include <limits>
#include <utility>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/file_names.h"
#include "validation/libxml_error.h"
#include "validation/libxml_schema.h"
#include "validation/schema/schema_address.h"

namespace customsconv::schema {
namespace {

constexpr std::string_view kSchemaNamespace = "http://www.w3.org/2001/XMLSchema";
// The kinds of declarations that others refer to by name. All may bear the same names, but for
// the two kinds of types.
constexpr std::string_view kGlobalKinds[] = {"element", "complexType",    "simpleType",
                                             "group",   "attributeGroup", "attribute"};

std::string_view TextOfXml(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

const xmlChar* XmlText(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

bool IsSchemaElement(const xmlNode& node) {
  return node.type == XML_ELEMENT_NODE && node.ns != nullptr &&
         TextOfXml(node.ns->href) == kSchemaNamespace;
}

// In one line, runs of blanks as one.
void AppendWords(std::string& to, std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  for (std::size_t from = text.find_first_not_of(kBlanks); from != text.npos;) {
    const std::size_t end = std::min(text.find_first_of(kBlanks, from), text.size());
    if (!to.empty()) to += ' ';
    to.append(text.substr(from, end - from));
    from = text.find_first_not_of(kBlanks, end);
  }
}

std::string ContentOfNode(const xmlNode& node) {
  const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(&node), xmlFree);
  return std::string(TextOfXml(text.get()));
}

std::string Reason(std::string_view file, int line, std::string_view reason) {
  std::string text("Не могу использовать схему "_cp1251);
  text.append(file);
  if (line > 0) text.append(", строка "_cp1251).append(std::to_string(line));
  return text.append(": ").append(reason);
}

// The bytes as a tree. The text brings nothing of its own: no document type, no other files.
xmlDoc* ParseBytes(const std::string& name, const std::string& bytes) {
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw Error(Reason(name, 0, "файл слишком велик"_cp1251));
  }
  const NoExternalFiles no_external_files;
  FirstXmlError first_error;
  xmlDoc* document = xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                                   XML_PARSE_NONET | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES);
  if (document == nullptr || first_error.occurred()) {
    xmlFreeDoc(document);
    throw Error(Reason(name, first_error.line(), first_error.sentence()));
  }
  if (document->intSubset != nullptr) {
    xmlFreeDoc(document);
    throw Error(Reason(name, 1, "DOCTYPE не допускается"_cp1251));
  }
  return document;
}

}  // namespace

std::string AttributeText(const xmlNode& node, const char* name) {
  const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlGetNoNsProp(&node, XmlText(name)),
                                                         xmlFree);
  return std::string(TextOfXml(text.get()));
}

bool HasAttribute(const xmlNode& node, const char* name) {
  return xmlHasNsProp(&node, XmlText(name), nullptr) != nullptr;
}

std::vector<const xmlNode*> SchemaChildren(const xmlNode& node) {
  std::vector<const xmlNode*> children;
  for (const xmlNode* child = node.children; child != nullptr; child = child->next) {
    if (IsSchemaElement(*child) && LocalName(*child) != "annotation") children.push_back(child);
  }
  return children;
}

std::string_view LocalName(const xmlNode& node) { return TextOfXml(node.name); }

std::string DocumentationOf(const xmlNode& node) {
  std::string text;
  for (const xmlNode* child = node.children; child != nullptr; child = child->next) {
    if (!IsSchemaElement(*child) || LocalName(*child) != "annotation") continue;
    for (const xmlNode* part = child->children; part != nullptr; part = part->next) {
      if (IsSchemaElement(*part) && LocalName(*part) == "documentation") {
        AppendWords(text, ContentOfNode(*part));
      }
    }
  }
  return text;
}

SchemaFiles::SchemaFiles(const Files& files, std::string_view schema_file)
    : host_files_(files), folder_(FolderPart(schema_file)) {
  xmlInitParser();
  Load(std::string(FileNameOf(schema_file)), {});
  // Files that are met on the way are appended and gone through in turn.
  for (std::size_t next = 0; next < files_.size(); ++next) TakeDeclarations(files_[next]);
}

SchemaFiles::~SchemaFiles() = default;

const xmlNode* SchemaFiles::Parse(const std::string& name) {
  auto& document = documents_[name];
  if (document == nullptr) document.reset(ParseBytes(name, host_files_.Read(folder_ + name)));
  const xmlNode* root = xmlDocGetRootElement(document.get());
  if (root == nullptr || !IsSchemaElement(*root) || LocalName(*root) != "schema") {
    throw Error(Reason(name, 1, "это не схема XML"_cp1251));
  }
  return root;
}

// Takes the file for a namespace unless it was taken for it already.
void SchemaFiles::Load(const std::string& name, std::string_view name_space) {
  const xmlNode* root = Parse(name);
  std::string own = AttributeText(*root, "targetNamespace");
  if (own.empty()) own = name_space;
  for (const File& file : files_) {
    if (file.root == root && file.name_space == own) return;
  }
  files_.push_back({name, own, AttributeText(*root, "elementFormDefault") == "qualified",
                    AttributeText(*root, "attributeFormDefault") == "qualified", root});
}

void SchemaFiles::TakeDeclarations(const File& file) {
  for (const xmlNode* child : SchemaChildren(*file.root)) {
    const std::string_view kind = LocalName(*child);
    const Node node{child, &file};
    if (kind == "include" || kind == "import") Follow(node);
    if (kind == "redefine" || kind == "override") {
      Fail(node, std::string("xs:") + std::string(kind) + std::string(" не читается"_cp1251));
    }
    for (const std::string_view global : kGlobalKinds) {
      if (kind != global) continue;
      const Name name{file.name_space, AttributeText(*child, "name")};
      const bool first = declarations_.try_emplace({std::string(kind), name}, node).second;
      if (first && kind == "element") elements_.push_back(node);
    }
  }
}

void SchemaFiles::Follow(const Node& reference) {
  const bool include = LocalName(*reference.node) == "include";
  const std::string location = AttributeText(*reference.node, "schemaLocation");
  const std::optional<std::string> name = ReferredFile(location, reference.file->name);
  if (name && host_files_.Exists(folder_ + *name)) {
    Load(*name, include ? std::string_view(reference.file->name_space) : std::string_view());
  } else if (include) {
    Fail(reference, std::string("нет файла "_cp1251) + ToWindows(location, CodePage::kUtf8));
  }
}

SchemaFiles::Node SchemaFiles::Find(std::string_view kind, const Name& name) const {
  const auto found = declarations_.find(std::tuple<std::string, Name>(kind, name));
  return found == declarations_.end() ? Node() : found->second;
}

Name SchemaFiles::Resolve(const Node& at, std::string_view value) {
  const std::size_t colon = value.find(':');
  const std::string prefix(colon == value.npos ? "" : value.substr(0, colon));
  const xmlNs* found = xmlSearchNs(at.node->doc, const_cast<xmlNode*>(at.node),
                                   prefix.empty() ? nullptr : XmlText(prefix.c_str()));
  if (found == nullptr && !prefix.empty()) {
    Fail(at, std::string("не объявлен префикс "_cp1251) + ToWindows(prefix, CodePage::kUtf8));
  }
  Name name{found == nullptr ? "" : std::string(TextOfXml(found->href)),
            std::string(colon == value.npos ? value : value.substr(colon + 1))};
  // A file without a namespace of its own that was included refers to the includer's.
  if (found == nullptr && !HasAttribute(*at.file->root, "targetNamespace")) {
    name.name_space = at.file->name_space;
  }
  return name;
}

Place SchemaFiles::PlaceOf(const Node& at) {
  return {at.file->name, static_cast<int>(xmlGetLineNo(at.node))};
}

void SchemaFiles::Fail(const Node& at, std::string_view reason_1251) {
  const Place place = PlaceOf(at);
  throw Error(Reason(place.file, place.line, reason_1251));
}

}  // namespace customsconv::schema
