#include "xml/tree/xml_parser.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "base/characters.h"
#include "base/cp1251_literal.h"
#include "xml/tree/xml_arena.h"

namespace customsconv {

namespace {

enum class Token : std::uint8_t { kName, kTagEnd, kSlash, kQuoted, kBang, kQuestion };

enum class ByteClass : std::uint8_t { kOther, kName, kTagEnd, kSlash, kQuote, kBang, kQuestion };

constexpr std::array<ByteClass, 256> MakeByteClasses() {
  std::array<ByteClass, 256> classes{};
  for (const char c : std::string_view("$%*-.:@_")) {
    classes[static_cast<unsigned char>(c)] = ByteClass::kName;
  }
  for (std::size_t c = '0'; c <= '9'; ++c) classes[c] = ByteClass::kName;
  for (std::size_t c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + 32] = ByteClass::kName;
  for (std::size_t c = 0xC0; c <= 0xFF; ++c) classes[c] = ByteClass::kName;
  classes['>'] = ByteClass::kTagEnd;
  classes['/'] = ByteClass::kSlash;
  classes['"'] = classes['\''] = ByteClass::kQuote;
  classes['!'] = ByteClass::kBang;
  classes['?'] = ByteClass::kQuestion;
  return classes;
}
constexpr std::array<ByteClass, 256> kByteClasses = MakeByteClasses();

ByteClass ClassOf(char c) { return kByteClasses[static_cast<unsigned char>(c)]; }

// An entity that the parser itself decodes, beside "&amp;".
struct Entity {
  std::string_view text;
  char character;
};
constexpr Entity kAmpersand = {"&amp;", '&'};
constexpr Entity kLess = {"&lt;", '<'};
constexpr Entity kQuote = {"&quot;", '"'};

}  // namespace

// The one pass over the text. Elements that are open stand in a stack of its own
// instead of the program's, so nesting costs memory only.
class XmlTreeBuilder {
 public:
  XmlTreeBuilder(std::string_view text, XmlArena& arena) : text_(text), arena_(arena) {}

  [[nodiscard]] const TXMLNode* Build();
  [[nodiscard]] const TXMLNodeList& header() const { return header_; }

 private:
  // What ReadMarkup leaves to be done for the node it filled.
  enum class Content : bool { kNone, kFollows };
  struct OpenElement {
    TXMLNode* node;
    TXMLNode* last_child;
  };

  static void Append(TXMLNodeList& list, TXMLNode*& last, TXMLNode* node) {
    (last == nullptr ? list.first_ : last->next) = node;
    last = node;
  }

  [[nodiscard]] bool AtEnd() const { return position_ >= text_.size(); }
  [[nodiscard]] bool At(std::string_view what) const {
    return text_.compare(std::min(position_, text_.size()), what.size(), what) == 0;
  }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(text_[position_])) ++position_;
  }
  [[nodiscard]] std::string Context(std::size_t before, std::size_t count) const;

  Token ReadToken();
  void ReadQuotedValue();
  [[nodiscard]] std::string_view Decode(std::string_view text, const Entity& entity);

  void ReadContent();
  void ReadText(OpenElement& element);
  void CloseElement(const TXMLNode& element);
  Content ReadMarkup(TXMLNode& node);
  Content ReadStartTag(TXMLNode& element);
  Token ReadAttribute(TXMLNode& owner, TXMLNode*& last);
  bool ReadBang(TXMLNode& node);
  void ReadDeclaration(const TXMLNode& node);
  Token ReadDeclarationAttribute(TXMLNode& entry, TXMLNode*& last);
  Token ReadAttributeValue(TXMLNode& owner, TXMLNode*& last, std::string_view name);

  std::string_view text_;
  std::size_t position_ = 0;  // one beyond the end of the text at most
  // Text of the last name or quoted value. Tokens of other kinds leave it alone, and
  // what is read as a name where no name stands takes it over once more.
  std::string_view token_;
  std::size_t declaration_end_ = 0;  // where the last search for "?>" ended
  std::vector<OpenElement> open_;
  XmlArena& arena_;
  TXMLNodeList header_;
  TXMLNode* last_header_ = nullptr;
};

const TXMLNode* XmlTreeBuilder::Build() {
  constexpr std::size_t kByteOrderMarkSize = 3;
  TXMLNode* root = arena_.NewNode();
  if (text_.empty()) return root;
  if (text_[0] != '<' && text_.size() > kByteOrderMarkSize && text_[kByteOrderMarkSize] == '<') {
    position_ = kByteOrderMarkSize;
  }
  if (ReadMarkup(*root) == Content::kFollows) {
    open_.push_back({root, nullptr});
    ReadContent();
  }
  return root;
}

// The `count` bytes of the text from `before` in front of the position on; the
// first byte of the text at the earliest.
std::string XmlTreeBuilder::Context(std::size_t before, std::size_t count) const {
  const std::size_t start = position_ > before ? position_ - before - 1 : 0;
  return std::string(text_.substr(std::min(start, text_.size()), count));
}

Token XmlTreeBuilder::ReadToken() {
  if (AtEnd()) {
    token_ = {};
    return Token::kName;
  }
  switch (ClassOf(text_[position_])) {
    case ByteClass::kTagEnd:
      ++position_;
      return Token::kTagEnd;
    case ByteClass::kSlash:
      ++position_;
      return Token::kSlash;
    case ByteClass::kBang:
      ++position_;
      return Token::kBang;
    case ByteClass::kQuestion:
      ++position_;
      return Token::kQuestion;
    case ByteClass::kQuote:
      ReadQuotedValue();
      return Token::kQuoted;
    case ByteClass::kName: {
      const std::size_t start = position_;
      while (++position_ < text_.size() && ClassOf(text_[position_]) == ByteClass::kName) {
      }
      token_ = text_.substr(start, position_ - start);
      return Token::kName;
    }
    case ByteClass::kOther:
      break;
  }
  return Token::kName;
}

void XmlTreeBuilder::ReadQuotedValue() {
  const char quote = text_[position_++];
  const std::size_t end = text_.find(quote, position_);
  if (end == std::string_view::npos) throw XmlParseError("Unterminated attribute");
  token_ = Decode(text_.substr(position_, end - position_), kQuote);
  position_ = end + 1;
}

// `text` with every `entity` and then every "&amp;" decoded, which one pass from left to
// right does as well. The text itself when there is nothing to decode.
std::string_view XmlTreeBuilder::Decode(std::string_view text, const Entity& entity) {
  std::size_t from = text.find('&');
  if (from == std::string_view::npos) return text;
  char* const decoded = arena_.NewText(text.size());
  std::size_t size = 0;
  const auto keep = [&](std::string_view part) {
    std::copy(part.begin(), part.end(), decoded + size);
    size += part.size();
  };
  keep(text.substr(0, from));
  while (from < text.size()) {
    const std::string_view rest = text.substr(from);
    const Entity* found = nullptr;
    for (const Entity* e : {&entity, &kAmpersand}) {
      if (rest.starts_with(e->text)) found = e;
    }
    decoded[size++] = found != nullptr ? found->character : '&';
    from += found != nullptr ? found->text.size() : 1;
    const std::size_t next = std::min(text.find('&', from), text.size());
    keep(text.substr(from, next - from));
    from = next;
  }
  const bool changed = size < text.size();
  arena_.GiveBack(changed ? text.size() - size : size);
  return changed ? std::string_view(decoded, size) : text;
}

// Everything inside the root. What is open when the text ends closes silently.
void XmlTreeBuilder::ReadContent() {
  while (!open_.empty() && !AtEnd()) {
    OpenElement& element = open_.back();
    if (text_[position_] != '<') {
      ReadText(element);
    } else if (position_ + 1 < text_.size() && text_[position_ + 1] == '/') {
      CloseElement(*element.node);
      open_.pop_back();
    } else {
      TXMLNode* child = arena_.NewNode();
      child->parent = element.node;
      const Content content = ReadMarkup(*child);
      Append(element.node->children, element.last_child, child);
      if (content == Content::kFollows) open_.push_back({child, nullptr});
    }
  }
}

void XmlTreeBuilder::ReadText(OpenElement& element) {
  const std::size_t start = position_;
  SkipBlanks();
  if (AtEnd()) return;
  if (text_[position_] == '<') return;  // nothing but blanks
  position_ = std::min(text_.find('<', position_), text_.size());
  TXMLNode* text = arena_.NewNode();
  text->type = NodeType::kText;
  text->parent = element.node;
  text->value = Decode(text_.substr(start, position_ - start), kLess);
  Append(element.node->children, element.last_child, text);
}

// Compares no more of the end tag than the element's name is long, and takes the
// byte behind that for the closing ">" whatever it is.
void XmlTreeBuilder::CloseElement(const TXMLNode& element) {
  constexpr std::size_t kEndTagStart = 2;  // "</"
  if (text_.compare(position_ + kEndTagStart, element.name.size(), element.name) != 0) {
    throw XmlParseError("Tag order error. Tag: \"" + std::string(element.name) +
                        "\" code: " + Context(100, 200));
  }
  position_ += kEndTagStart + element.name.size() + 1;
}

// Reads from a "<" on until it is known what `node` is: declarations (and for the root
// also comments) in front of it are passed.
XmlTreeBuilder::Content XmlTreeBuilder::ReadMarkup(TXMLNode& node) {
  while (!AtEnd() && text_[position_] == '<') {
    ++position_;
    const Token token = ReadToken();
    node.name = token_;
    switch (token) {
      case Token::kName:
        return ReadStartTag(node);
      case Token::kBang:
        if (ReadBang(node)) return Content::kNone;
        break;
      case Token::kQuestion:
        ReadDeclaration(node);
        break;
      default:
        throw XmlParseError("Tag name expected: " + Context(20, 200));
    }
  }
  throw XmlParseError("< expected");
}

XmlTreeBuilder::Content XmlTreeBuilder::ReadStartTag(TXMLNode& element) {
  TXMLNode* last = nullptr;
  Content content = Content::kFollows;
  Token token = Token::kName;
  do {
    SkipBlanks();
    token = ReadToken();
    if (token == Token::kSlash) content = Content::kNone;
    if (token == Token::kName) token = ReadAttribute(element, last);
  } while (token != Token::kTagEnd && !AtEnd());
  if (token != Token::kTagEnd) throw XmlParseError("> expected");
  return content;
}

// Reads from behind an attribute's name on. Returns the value's token: a ">" in place of the
// value ends the tag, and the attribute then has its own name as value.
Token XmlTreeBuilder::ReadAttribute(TXMLNode& owner, TXMLNode*& last) {
  const std::string_view name = token_;
  SkipBlanks();
  if (!At("=")) throw XmlParseError("= expected:" + Context(50, 100));
  ++position_;  // a blank that follows is no value
  return ReadAttributeValue(owner, last, name);
}

Token XmlTreeBuilder::ReadAttributeValue(TXMLNode& owner, TXMLNode*& last, std::string_view name) {
  const Token token = ReadToken();
  TXMLNode* attribute = arena_.NewNode();
  attribute->type = NodeType::kAttribute;
  attribute->parent = &owner;
  attribute->name = Trim(name);
  attribute->value = token_;
  if (attribute->name.empty()) throw XmlParseError("Attribute/Node name cannot be empty");
  Append(owner.attributes, last, attribute);
  if (token == Token::kName) throw XmlParseError("Attribute value expected");
  return token;
}

// What follows "<!". True when it made the node what it is; a comment in front of the root
// does not. Other markup leaves an element without content.
bool XmlTreeBuilder::ReadBang(TXMLNode& node) {
  constexpr std::string_view kCDataStart = "[CDATA[", kCDataEnd = "]]>";
  constexpr std::string_view kCommentStart = "--", kCommentEnd = "-->";
  if (At(kCDataStart)) {
    position_ += kCDataStart.size();
    const std::size_t end = std::min(text_.find(kCDataEnd, position_), text_.size());
    node.type = NodeType::kCData;
    node.name = "#cdata-section";
    node.value = text_.substr(position_, end - position_);
    position_ = std::min(end + kCDataEnd.size(), text_.size());
    return true;
  }
  if (!At(kCommentStart)) return true;
  position_ += kCommentStart.size();
  const std::size_t end = text_.find(kCommentEnd, position_);
  if (end == std::string_view::npos) {
    throw XmlParseError(std::string("Не найден конец комментария"_cp1251));
  }
  const std::string_view comment = text_.substr(position_, end - position_);
  position_ = end + kCommentEnd.size();
  SkipBlanks();
  if (node.parent == nullptr) return false;
  node.type = NodeType::kComment;
  node.name = "#comment";
  node.value = comment;
  return true;
}

// What follows "<?". Only what stands in front of the root is kept.
void XmlTreeBuilder::ReadDeclaration(const TXMLNode& node) {
  if (declaration_end_ < position_) declaration_end_ = text_.find("?>", position_);
  if (declaration_end_ == std::string_view::npos) throw XmlParseError("Unclosed XML header");
  ReadToken();
  TXMLNode* entry = arena_.NewNode();
  entry->name = Trim(token_);
  if (node.parent == nullptr) Append(header_, last_header_, entry);
  TXMLNode* last = nullptr;
  Token token = Token::kName;
  do {
    SkipBlanks();
    token = ReadToken();
    if (token == Token::kName) token = ReadDeclarationAttribute(*entry, last);
  } while (token != Token::kTagEnd);
  SkipBlanks();
}

Token XmlTreeBuilder::ReadDeclarationAttribute(TXMLNode& entry, TXMLNode*& last) {
  const std::string_view name = token_;
  SkipBlanks();
  if (!At("=")) throw XmlParseError("= expected");
  ++position_;
  SkipBlanks();
  return ReadAttributeValue(entry, last, name);
}

namespace {

// Enough for a small document in one chunk.
std::size_t FirstChunkSize(std::size_t text_size) {
  constexpr std::size_t kSmallest = 1024, kLargest = 65536;
  return std::clamp(2 * text_size, kSmallest, kLargest);
}

}  // namespace

XmlTree::XmlTree(std::string_view text)
    : arena_(std::make_unique<XmlArena>(FirstChunkSize(text.size()))) {
  XmlTreeBuilder builder(text, *arena_);
  root_ = builder.Build();
  header_ = builder.header();
}

XmlTree::~XmlTree() = default;
XmlTree::XmlTree(XmlTree&&) noexcept = default;
XmlTree& XmlTree::operator=(XmlTree&&) noexcept = default;

}  // namespace customsconv
