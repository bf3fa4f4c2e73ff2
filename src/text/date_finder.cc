#include "text/date_finder.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/characters.h"
#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "text/dates.h"

namespace customsconv {
namespace {

// What the automaton of dates has read of a candidate so far.
enum State : std::uint8_t {
  kStart,
  kDay1,
  kDay2,
  kFirstSeparator,
  kMonth1,
  kMonth2,
  kSecondSeparator,
  kYear1,
  kYear2,
  kYear3,
  kYear4,
  kAccepted,
};

enum CharClass : std::uint8_t { kDigit, kSeparator, kOther };

// By state and by class of the next character. Years have two or four digits.
constexpr std::array<std::array<State, 3>, kAccepted> kNext{{
    {kDay1, kStart, kStart},              // kStart
    {kDay2, kFirstSeparator, kStart},     // kDay1
    {kStart, kFirstSeparator, kStart},    // kDay2
    {kMonth1, kStart, kStart},            // kFirstSeparator
    {kMonth2, kSecondSeparator, kStart},  // kMonth1
    {kStart, kSecondSeparator, kStart},   // kMonth2
    {kYear1, kStart, kStart},             // kSecondSeparator
    {kYear2, kStart, kStart},             // kYear1
    {kYear3, kAccepted, kAccepted},       // kYear2
    {kYear4, kStart, kStart},             // kYear3
    {kStart, kAccepted, kAccepted},       // kYear4
}};

constexpr CharSet LettersAnd(std::string_view signs) {
  CharSet set = kLettersAndDigits;
  for (char digit = '0'; digit <= '9'; ++digit) set.Remove(digit);
  for (const char c : signs) set.Add(c);
  return set;
}

constexpr CharSet Without(CharSet set, std::string_view members) {
  for (const char c : members) set.Remove(c);
  return set;
}

// What makes digits part of a number or name when it touches them. Some letters may touch a date:
// those that end the prepositions "до", "от", "по" and "с" before it, and those that begin the
// year mark "г" and the prepositions behind it.
constexpr CharSet kTouching = LettersAnd("#&-./_");
constexpr CharSet kTouchingBefore = Without(kTouching, "остОСТ"_cp1251);
constexpr CharSet kTouchingAfter = Without(kTouching, "гдопсГДОПС"_cp1251);

struct Candidate {
  std::size_t start = 0;
  std::size_t end = 0;
};

// Walks over the dates of a text, one a call.
class DateWalk {
 public:
  DateWalk(std::string_view text, const DateSearch& search)
      : text_(search.limit == 0 ? text : text.substr(0, search.limit)), search_(search) {}

  bool Next(Candidate& date) {
    while (NextCandidate(date)) {
      if (IsDate(date)) return true;
    }
    return false;
  }

 private:
  // Runs the automaton up to the next accepted run of digits and separators. The
  // character that ended it is looked at again: it may begin the next one.
  bool NextCandidate(Candidate& candidate) {
    State state = kStart;
    char separator = '\0';
    while (true) {
      const State next = kNext[state][ClassAt(state, separator)];
      if (next == kAccepted) {
        candidate.end = position_;
        return true;
      }
      if (position_ >= text_.size()) return false;
      if (state == kStart && next == kDay1) candidate.start = position_;
      if (next == kFirstSeparator) separator = text_[position_];
      if (state != kStart && next == kStart) {
        SkipRest();
      } else {
        ++position_;
      }
      state = next;
    }
  }

  // The end of the text counts as "other", and so does a separator that is not
  // the candidate's first one.
  CharClass ClassAt(State state, char separator) const {
    if (position_ >= text_.size()) return kOther;
    const char c = text_[position_];
    if (IsDigit(c)) return kDigit;
    if (!search_.separators.Has(c)) return kOther;
    return state >= kFirstSeparator && c != separator ? kOther : kSeparator;
  }

  // What failed as a date is skipped to the end of its run of digits and "-", so
  // that no date is found inside a longer number.
  void SkipRest() {
    const std::size_t start = position_;
    while (position_ < text_.size() && (IsDigit(text_[position_]) || text_[position_] == '-')) {
      ++position_;
    }
    if (position_ == start) ++position_;
  }

  bool IsDate(const Candidate& candidate) const {
    const std::string_view written = text_.substr(candidate.start, candidate.end - candidate.start);
    if (TextToDate(written, 0, search_.this_year) == 0) return false;
    if (!search_.strict) return true;
    return (candidate.start == 0 || !kTouchingBefore.Has(text_[candidate.start - 1])) &&
           (candidate.end == text_.size() || !kTouchingAfter.Has(text_[candidate.end]));
  }

  std::string_view text_;
  const DateSearch& search_;
  std::size_t position_ = 0;
};

constexpr std::size_t kShortestDate = 6;

FoundDate Found(std::string_view text, const Candidate& date) {
  return {std::string(text.substr(date.start, date.end - date.start)), date.start + 1};
}

bool FindDate(std::size_t n, std::string_view text, const DateSearch& search, Candidate& date) {
  if (n == 0 || text.size() < kShortestDate) return false;
  DateWalk walk(text, search);
  while (walk.Next(date)) {
    if (--n == 0) return true;
  }
  return false;
}

bool IsLetter(char c, std::string_view upper) { return UpperCaseChar(c) == upper.front(); }

std::size_t SkipBlanks(std::string_view text, std::size_t position) {
  while (position < text.size() && text[position] == ' ') ++position;
  return position;
}

// End of what belongs to the date behind it: blanks, the year mark "г" or "г.", blanks.
std::size_t EndOfSurroundings(std::string_view text, std::size_t end) {
  end = SkipBlanks(text, end);
  if (end == text.size() || !IsLetter(text[end], "Г"_cp1251)) return end;
  const std::size_t behind_mark = end + 1;
  constexpr CharSet kAfterMark{" ,.;"};
  if (behind_mark < text.size() && !kAfterMark.Has(text[behind_mark])) return end;
  end = behind_mark;
  if (end < text.size() && text[end] == '.') ++end;
  return SkipBlanks(text, end);
}

// Size of the preposition that ends `text`, with the blank before "с"; 0 for none.
std::size_t PrepositionSize(std::string_view text) {
  for (const std::string_view preposition : {"ОТ"_cp1251, "ДО"_cp1251, "ПО"_cp1251, " С"_cp1251}) {
    if (text.size() >= preposition.size() &&
        SameTextRu(text.substr(text.size() - preposition.size()), preposition)) {
      return preposition.size();
    }
  }
  return 0;
}

// Start of what belongs to the date before it: blanks and "_", a preposition,
// blanks and "_".
std::size_t StartOfSurroundings(std::string_view text, std::size_t start) {
  const auto skip_filling = [text](std::size_t position) {
    while (position > 0 && (text[position - 1] == ' ' || text[position - 1] == '_')) --position;
    return position;
  };
  const std::size_t behind_preposition = skip_filling(start);
  const std::size_t size = PrepositionSize(text.substr(0, behind_preposition));
  return size == 0 ? behind_preposition : skip_filling(behind_preposition - size);
}

}  // namespace

FoundDate ExtractDate(std::size_t n, std::string_view text, const DateSearch& search) {
  Candidate date;
  return FindDate(n, text, search, date) ? Found(text, date) : FoundDate();
}

FoundDate RemoveDate(std::size_t n, std::string& text, const DateSearch& search) {
  Candidate date;
  if (!FindDate(n, text, search, date)) return {};
  FoundDate found = Found(text, date);
  const std::size_t start = StartOfSurroundings(text, date.start);
  text.erase(start, EndOfSurroundings(text, date.end) - start);
  return found;
}

std::size_t CountDates(std::string_view text, const DateSearch& search) {
  if (text.size() < kShortestDate) return 0;
  DateWalk walk(text, search);
  Candidate date;
  std::size_t count = 0;
  while (walk.Next(date)) ++count;
  return count;
}

FoundDate ExtractLastDate(std::string_view text, std::size_t limit, int this_year) {
  DateSearch search;
  search.limit = limit;
  search.this_year = this_year;
  if (text.size() < kShortestDate) return {};
  DateWalk walk(text, search);
  Candidate last;
  for (Candidate date; walk.Next(date);) last = date;
  return last.end == 0 ? FoundDate() : Found(text, last);
}

}  // namespace customsconv
