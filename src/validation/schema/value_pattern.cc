#include "validation/schema/value_pattern.h"

#include <algorithm>
#include <utility>

#include "base/characters.h"
#include "base/internal/cp1251_table.h"
#include "base/unicode.h"
#include "text/char_set.h"
#include "text/numbers.h"

namespace customsconv::schema {
namespace {

using Node = ValuePattern::Node;
using Kind = ValuePattern::Kind;
using Characters = std::bitset<256>;

std::size_t ByteOf(char c) { return static_cast<unsigned char>(c); }

char32_t UnicodeOf(std::size_t byte) {
  return internal::UnicodeOf1251(static_cast<unsigned char>(byte));
}

Characters Only(std::string_view characters) {
  Characters set;
  for (const char c : characters) set.set(ByteOf(c));
  return set;
}

// Ranges follow the order of Unicode.
Characters Between(char first, char last) {
  Characters set;
  for (std::size_t byte = 0; byte < set.size(); ++byte) {
    const char32_t c = UnicodeOf(byte);
    set[byte] = UnicodeOf(ByteOf(first)) <= c && c <= UnicodeOf(ByteOf(last));
  }
  return set;
}

// Of a set with one member.
char TheOne(const Characters& set) {
  std::size_t byte = 0;
  while (!set[byte]) ++byte;
  return static_cast<char>(byte);
}

// What "\x" stands for; empty for what is not understood.
std::optional<Characters> Escaped(char letter) {
  const Characters digits = Between('0', '9');
  const Characters blanks = Only(" \t\r\n");
  switch (letter) {
    case 'd':
      return digits;
    case 'D':
      return ~digits;
    case 's':
      return blanks;
    case 'S':
      return ~blanks;
    case 'n':
      return Only("\n");
    case 'r':
      return Only("\r");
    case 't':
      return Only("\t");
    default:
      if (IsLetterOrDigit(letter)) return std::nullopt;
      return Only({&letter, 1});
  }
}

// Letters and digits stand for themselves, all else is escaped: a catalogue keeps the expression
// between quotes, in a line where braces count.
void AppendByte(std::string& to, std::size_t byte) {
  constexpr std::string_view kPlain = " !#%&',/:;<=>@_`~";
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const char c = static_cast<char>(byte);
  if (IsLetterOrDigit(c) || kPlain.find(c) != kPlain.npos) {
    to += c;
  } else if (c == '"' || c == '{' || c == '}' || byte < 0x20 || byte > 0x7E) {
    to.append("\\x") += kHexDigits[byte / 16];
    to += kHexDigits[byte % 16];
  } else {
    to.append("\\") += c;
  }
}

void AppendClass(std::string& to, const Characters& bytes) {
  for (std::size_t first = 0; first < bytes.size(); ++first) {
    if (!bytes[first]) continue;
    std::size_t last = first;
    while (last + 1 < bytes.size() && bytes[last + 1]) ++last;
    AppendByte(to, first);
    if (last > first + 1) to += '-';
    if (last > first) AppendByte(to, last);
    first = last;
  }
}

std::string CharacterExpression(const Characters& bytes) {
  std::string text;
  if (bytes.count() == 1) {
    AppendByte(text, ByteOf(TheOne(bytes)));
    return text;
  }
  const bool negated = bytes.count() > bytes.size() / 2 && !bytes.all();
  text = negated ? "[^" : "[";
  AppendClass(text, negated ? ~bytes : bytes);
  return text + "]";
}

std::string Quantifier(const Occurs& occurs) {
  if (occurs == Occurs{1, 1}) return {};
  if (occurs == Occurs{0, 1}) return "?";
  if (occurs == Occurs{0, kUnbounded}) return "*";
  if (occurs == Occurs{1, kUnbounded}) return "+";
  std::string text = "{" + std::to_string(occurs.min);
  if (occurs.max != occurs.min) {
    text += ',';
    if (occurs.max != kUnbounded) text += std::to_string(occurs.max);
  }
  return text + "}";
}

}  // namespace

// Reads an expression from left to right; brackets that are open are kept on a stack of its own.
class ValuePatternParser {
 public:
  explicit ValuePatternParser(std::string text_1251) : text_(std::move(text_1251)) {}

  std::optional<ValuePattern> Parse() {
    open_.emplace_back();
    while (at_ < text_.size()) {
      if (!TakePiece()) return std::nullopt;
    }
    if (open_.size() != 1) return std::nullopt;
    pattern_.root_ = CloseBranches();
    return std::move(pattern_);
  }

 private:
  // Between two brackets: the branches that are complete, and the parts of the one that is not.
  struct Open {
    std::vector<std::size_t> branches;
    std::vector<std::size_t> parts;
  };

  bool TakePiece() {
    const char c = text_[at_++];
    switch (c) {
      case '(':
        open_.emplace_back();
        return true;
      case ')':
        if (open_.size() == 1) return false;
        return TakePart(CloseBranches());
      case '|':
        CloseBranch();
        return true;
      case '[':
        return TakeClass();
      case '?':
      case '*':
      case '+':
      case '{':
      case '}':
      case ']':
        return false;
      default:
        return TakeCharacter(c);
    }
  }

  bool TakeCharacter(char c) {
    std::optional<Characters> characters = Only({&c, 1});
    if (c == '.') characters = ~Only("\r\n");
    if (c == '\\') characters = TakeEscape();
    return characters && TakePart(AddCharacter(*characters));
  }

  std::optional<Characters> TakeEscape() {
    if (at_ == text_.size()) return std::nullopt;
    return Escaped(text_[at_++]);
  }

  // One character of a class, or what an escape in it stands for.
  std::optional<Characters> TakeClassMember() {
    const char c = text_[at_++];
    if (c == '[') return std::nullopt;  // a class that is subtracted
    if (c == '\\') return TakeEscape();
    return Only({&c, 1});
  }

  bool TakeClass() {
    const bool negated = at_ < text_.size() && text_[at_] == '^';
    if (negated) ++at_;
    Characters characters;
    while (at_ < text_.size() && text_[at_] != ']') {
      const std::optional<Characters> member = TakeClassMember();
      if (!member) return false;
      characters |= *member;
      if (!IsRangeSign()) continue;
      ++at_;
      const std::optional<Characters> end = TakeClassMember();
      if (!end || member->count() != 1 || end->count() != 1) return false;
      const Characters range = Between(TheOne(*member), TheOne(*end));
      if (range.none()) return false;
      characters |= range;
    }
    if (at_ == text_.size() || characters.none()) return false;
    ++at_;
    return TakePart(AddCharacter(negated ? ~characters : characters));
  }

  // A "-" with something else than the end of the class behind it.
  [[nodiscard]] bool IsRangeSign() const {
    return at_ + 1 < text_.size() && text_[at_] == '-' && text_[at_ + 1] != ']';
  }

  // The part with the quantifier that follows it.
  bool TakePart(std::size_t part) {
    const std::optional<Occurs> occurs = TakeQuantifier();
    if (!occurs) return false;
    pattern_.nodes_[part].occurs = *occurs;
    open_.back().parts.push_back(part);
    return true;
  }

  std::optional<Occurs> TakeQuantifier() {
    if (at_ == text_.size()) return Occurs{};
    switch (text_[at_]) {
      case '?':
        ++at_;
        return Occurs{0, 1};
      case '*':
        ++at_;
        return Occurs{0, kUnbounded};
      case '+':
        ++at_;
        return Occurs{1, kUnbounded};
      case '{':
        ++at_;
        return TakeCounts();
      default:
        return Occurs{};
    }
  }

  // "2}", "2,}" or "2,5}".
  std::optional<Occurs> TakeCounts() {
    const std::optional<int> min = TakeNumber();
    if (!min || at_ == text_.size()) return std::nullopt;
    Occurs occurs{*min, *min};
    if (text_[at_] == ',') {
      ++at_;
      occurs.max = TakeNumber().value_or(kUnbounded);
    }
    if (at_ == text_.size() || text_[at_++] != '}' || occurs.max < occurs.min) return std::nullopt;
    return occurs;
  }

  std::optional<int> TakeNumber() {
    std::string digits;
    for (; at_ < text_.size() && IsDigit(text_[at_]); ++at_) digits += text_[at_];
    return digits.empty() ? std::nullopt : ParseInt(digits);
  }

  std::size_t Add(Node node) {
    pattern_.nodes_.push_back(std::move(node));
    return pattern_.nodes_.size() - 1;
  }

  std::size_t AddCharacter(const Characters& characters) {
    Node node;
    node.kind = Kind::kCharacter;
    node.characters = characters;
    return Add(std::move(node));
  }

  void CloseBranch() {
    Node sequence;
    sequence.parts = std::exchange(open_.back().parts, {});
    open_.back().branches.push_back(Add(std::move(sequence)));
  }

  std::size_t CloseBranches() {
    CloseBranch();
    Node branches;
    branches.kind = Kind::kBranches;
    branches.parts = std::move(open_.back().branches);
    if (open_.size() > 1) open_.pop_back();
    return Add(std::move(branches));
  }

  std::string text_;
  std::size_t at_ = 0;
  std::vector<Open> open_;
  ValuePattern pattern_;
};

std::optional<ValuePattern> ValuePattern::Parse(std::string_view utf8) {
  std::optional<std::string> text = WinFromUtf8(utf8);
  if (!text || Utf8FromWin(*text) != utf8) return std::nullopt;
  return ValuePatternParser(std::move(*text)).Parse();
}

std::optional<int> ValuePattern::MostCharacters() const {
  std::vector<int> most(nodes_.size(), 1);
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    if (node.kind != Kind::kCharacter) most[i] = 0;
    for (const std::size_t part : node.parts) {
      most[i] =
          node.kind == Kind::kBranches ? std::max(most[i], most[part]) : Sum(most[i], most[part]);
    }
    most[i] = Times(most[i], node.occurs.max);
  }
  return most[root_] == kUnbounded ? std::nullopt : std::optional(most[root_]);
}

std::string ValuePattern::PerlExpression() const {
  std::vector<std::string> texts(nodes_.size());
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    if (node.kind == Kind::kCharacter) texts[i] = CharacterExpression(node.characters);
    for (const std::size_t part : node.parts) {
      if (node.kind == Kind::kBranches && part != node.parts.front()) texts[i] += '|';
      texts[i] += std::exchange(texts[part], {});
    }
    const bool branches = node.kind == Kind::kBranches && node.parts.size() > 1;
    const std::string quantifier = Quantifier(node.occurs);
    if ((branches && i != root_) || (!quantifier.empty() && node.kind != Kind::kCharacter)) {
      texts[i] = "(" + texts[i] + ")";
    }
    texts[i] += quantifier;
  }
  return texts[root_];
}

}  // namespace customsconv::schema
