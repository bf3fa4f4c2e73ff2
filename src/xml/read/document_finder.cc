#include "xml/read/document_finder.h"

#include <unordered_map>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "text/words.h"

namespace customsconv {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

// Finds the places behind which documents stand.
class MarkSearch {
 public:
  explicit MarkSearch(std::string_view text) : text_(text) {}

  // The next envelope from `from` on, or, where there is none, the next declaration.
  std::size_t Next(std::size_t from) {
    constexpr std::string_view kEnvelope = "<DocBody>";
    constexpr std::string_view kDeclaration = "<?xml version=\"1.0\"";
    if (envelopes_left_) {
      const std::size_t envelope = FindInLong(text_, kEnvelope, from);
      if (envelope != kNowhere) return envelope;
      envelopes_left_ = false;
    }
    return FindInLong(text_, kDeclaration, from);
  }

 private:
  std::string_view text_;
  bool envelopes_left_ = true;
};

}  // namespace

std::vector<RootName> FindRootNames(std::string_view text) {
  constexpr std::size_t kLongestName = 100;
  std::vector<RootName> names;
  std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> index;
  MarkSearch marks(text);
  for (std::size_t from = 0;;) {
    const std::size_t mark = marks.Next(from);
    if (mark == kNowhere) return names;
    const std::size_t root = text.find('<', mark + 1);
    if (root == kNowhere) return names;
    const std::string_view name = ExtractWord(1, text.substr(root, kLongestName), " <>");
    const auto known = index.find(name);
    if (known != index.end()) {
      ++names[known->second].count;
    } else {
      index.emplace(name, names.size());
      names.push_back({std::string(name), 1});
    }
    from = root + 1;
  }
}

DocumentFinder::DocumentFinder(std::string_view root_tag)
    : start_tag_("<" + std::string(root_tag) + " "), end_tag_("</" + std::string(root_tag) + ">") {}

std::string_view DocumentFinder::Find(std::string_view text, std::size_t number) {
  const std::size_t start = StartOf(text, number);
  if (start == kNowhere) return {};
  std::size_t end = EndTagBehind(text, start);
  if (end == kNowhere) {
    throw Error(std::string("Отсутствует окончание документа: "_cp1251) + end_tag_);
  }
  end += end_tag_.size();
  while (end < text.size() && (text[end] == '\r' || text[end] == '\n')) ++end;
  return text.substr(start, end - start);
}

std::size_t DocumentFinder::StartOf(std::string_view text, std::size_t number) {
  while (starts_.size() < number && (starts_.empty() || starts_.back() != kNowhere)) {
    starts_.push_back(FindInLong(text, start_tag_, starts_.empty() ? 0 : starts_.back() + 1));
  }
  return number <= starts_.size() ? starts_[number - 1] : kNowhere;
}

std::size_t DocumentFinder::EndTagBehind(std::string_view text, std::size_t start) {
  // A start in front of the one asked for last begins the search anew.
  const bool still_the_next = end_tag_searched_from_ <= start && start < end_tag_position_;
  if (!still_the_next) {
    end_tag_searched_from_ = start;
    end_tag_position_ = FindInLong(text, end_tag_, start);
  }
  return end_tag_position_;
}

}  // namespace customsconv
