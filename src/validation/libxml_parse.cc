// The parser of libxml2 turns the text into events; the validator stands between it and our own
// handler and looks at each. The first thing that either finds wrong ends the parse.

#include "validation/libxml_parse.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlschemas.h>

#include <limits>
#include <memory>
#include <new>
#include <string>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/lifetime.h"
#include "base/unicode.h"
#include "validation/error_text.h"
#include "validation/libxml_error.h"
#include "validation/libxml_schema.h"

namespace customsconv {
namespace {

// Line `number` (from 1) of a text, without its line end.
std::string_view LineOf(std::string_view text CUSTOMSCONV_LIFETIME_BOUND, int number) {
  std::size_t start = 0;
  for (int line = 1; line < number; ++line) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) return {};
    start = end + 1;
  }
  return text.substr(start, text.find_first_of("\r\n", start) - start);
}

// One parse of a text. Everything that libxml2 says goes to `first_error`.
class ValidatingParse {
 public:
  ValidatingParse(std::string_view utf8, const CompiledSchema* schema)
      : parser_(xmlNewParserCtxt(), &xmlFreeParserCtxt),
        validator_(nullptr, &xmlSchemaFreeValidCtxt) {
    if (parser_ == nullptr) throw std::bad_alloc();
    xmlCtxtUseOptions(parser_.get(), XML_PARSE_NONET | XML_PARSE_IGNORE_ENC | XML_PARSE_NOWARNING);
    Open(utf8);
    handler_.initialized = XML_SAX2_MAGIC;
    handler_.internalSubset = &ValidatingParse::RefuseDocumentType;
    if (schema != nullptr) Watch(*schema);
  }

  void Run() {
    xmlSAXHandlerPtr own_handler = parser_->sax;
    void* own_data = parser_->userData;
    parser_->sax = &handler_;
    parser_->userData = this;
    xmlSchemaSAXPlugPtr plug = nullptr;
    if (validator_ != nullptr) {
      plug = xmlSchemaSAXPlug(validator_.get(), &parser_->sax, &parser_->userData);
    }
    xmlParseDocument(parser_.get());
    if (plug != nullptr) {
      xmlSchemaSAXUnplug(plug);
      if (first_error_.occurred()) ReleaseConstraints();
    }
    parser_->sax = own_handler;
    parser_->userData = own_data;
  }

  [[nodiscard]] const FirstXmlError& first_error() const { return first_error_; }

 private:
  void Open(std::string_view utf8) {
    // A copy: libxml2 loses its place in a buffer that it may not shrink.
    xmlParserInputBufferPtr buffer = xmlParserInputBufferCreateMem(
        utf8.data(), static_cast<int>(utf8.size()), XML_CHAR_ENCODING_NONE);
    if (buffer == nullptr) throw std::bad_alloc();
    xmlParserInputPtr input = xmlNewIOInputStream(parser_.get(), buffer, XML_CHAR_ENCODING_NONE);
    if (input == nullptr) {
      xmlFreeParserInputBuffer(buffer);
      throw std::bad_alloc();
    }
    inputPush(parser_.get(), input);
  }

  void Watch(const CompiledSchema& schema) {
    validator_.reset(xmlSchemaNewValidCtxt(schema.get()));
    if (validator_ == nullptr) throw std::bad_alloc();
    xmlSchemaSetValidStructuredErrors(validator_.get(), &ValidatingParse::OnInvalid, this);
    xmlSchemaValidateSetLocator(validator_.get(), &ValidatingParse::Locate, this);
  }

  // A document that fails within an element with an identity constraint (xs:unique, xs:key)
  // leaves the constraint's working memory with the validator, which puts it aside for the next
  // document and forgets to free it at its own end. The end of a next document frees it.
  void ReleaseConstraints() {
    xmlSAXHandlerPtr handler = &handler_;
    void* data = this;
    xmlSchemaSAXUnplug(xmlSchemaSAXPlug(validator_.get(), &handler, &data));
  }

  [[nodiscard]] int Line() const { return parser_->input == nullptr ? 0 : parser_->input->line; }

  static int Locate(void* self, const char** file, unsigned long* line) {
    if (file != nullptr) *file = nullptr;
    if (line != nullptr) {
      *line = static_cast<unsigned long>(static_cast<ValidatingParse*>(self)->Line());
    }
    return 0;
  }

  static void OnInvalid(void* self, xmlErrorPtr error) {
    auto* parse = static_cast<ValidatingParse*>(self);
    FirstXmlError::Take(&parse->first_error_, error);
    if (parse->first_error_.occurred()) xmlStopParser(parse->parser_.get());
  }

  // Customs documents have no document type; one could only define entities to blow the text up
  // or to bring foreign files in.
  static void RefuseDocumentType(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto* parse = static_cast<ValidatingParse*>(self);
    parse->first_error_.Take(XML_ERR_DOCTYPE_NOT_FINISHED, parse->Line(),
                             "A document type declaration (DOCTYPE) is not allowed.");
    xmlStopParser(parse->parser_.get());
  }

  FirstXmlError first_error_;
  NoExternalFiles no_external_files_;
  std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser_;
  std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)> validator_;
  xmlSAXHandler handler_{};
};

}  // namespace

XmlParseReport ParseXml(std::string_view text_1251, const CompiledSchema* schema) {
  xmlInitParser();
  const std::string utf8 = Utf8FromWin(text_1251);
  if (utf8.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw Error(std::string("Документ слишком велик для проверки (больше 2 ГБ)."_cp1251));
  }
  ValidatingParse parse(utf8, schema);
  parse.Run();
  const FirstXmlError& error = parse.first_error();
  if (!error.occurred()) return {};
  return {.error_code = error.code(),
          .reason = WithBracedTextsMarked(error.sentence()),
          .exact_reason = error.sentence(),
          .line = error.line(),
          .src_text = std::string(LineOf(text_1251, error.line()))};
}

}  // namespace customsconv
