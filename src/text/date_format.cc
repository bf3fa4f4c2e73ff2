#include "text/date_format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "base/characters.h"
#include "base/letter_case.h"

namespace customsconv {
namespace {

constexpr char LowerLatin(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }

// A run of one letter of a format, or a single other character.
struct FormatRun {
  char letter;   // lower case
  char written;  // as it stands in the format
  std::size_t length;
};

constexpr std::string_view kFormatLetters = "dmyhns";

FormatRun TakeRun(std::string_view& format) {
  FormatRun run{LowerLatin(format.front()), format.front(), 1};
  if (kFormatLetters.find(run.letter) != std::string_view::npos) {
    while (run.length < format.size() && LowerLatin(format[run.length]) == run.letter) ++run.length;
  }
  format.remove_prefix(run.length);
  return run;
}

// ---- reading

// Month of the English abbreviation that `letters` begins, 0 for none.
int MonthOf(std::string_view letters) {
  constexpr std::array<std::string_view, 12> kBeginnings{"JA",  "FE", "MAR", "AP", "MAY", "JUN",
                                                         "JUL", "AU", "SE",  "OC", "NO",  "DE"};
  const auto found =
      std::find_if(kBeginnings.begin(), kBeginnings.end(), [letters](std::string_view beginning) {
        return letters.size() == 3 && StartsWithRu(letters, beginning);
      });
  return found == kBeginnings.end() ? 0 : static_cast<int>(found - kBeginnings.begin()) + 1;
}

class DateTimeReader {
 public:
  explicit DateTimeReader(std::string_view text) : text_(text) {}

  // False when the text does not fit.
  bool Read(FormatRun run) {
    switch (run.letter) {
      case 'd':
        return ReadDay(run.length);
      case 'm':
        if (run.length < 3) return ReadNumber(Take(2), month_);
        month_ = MonthOf(Take(3));
        return month_ != 0;
      case 'y':
        return ReadYear(run.length);
      case 'h':
        return ReadTimePart(hour_);
      case 'n':
        return ReadTimePart(minute_);
      case 's':
        return ReadTimePart(second_);
      default:
        Take(1);
        return true;
    }
  }

  [[nodiscard]] std::optional<DateTime> Result() const {
    const auto date = DateOf({year_, month_, day_});
    if (!date || hour_ > 23 || minute_ > 59 || second_ > 59) return std::nullopt;
    if (!has_time_) return *date;
    return *date + ((hour_ * 60 + minute_) * 60 + second_) / 86400.0;
  }

 private:
  // Fewer characters at the end of the text.
  std::string_view Take(std::size_t count) {
    const std::string_view taken = text_.substr(0, count);
    text_.remove_prefix(taken.size());
    return taken;
  }

  static bool ReadNumber(std::string_view text, int& number) {
    const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
    text.remove_prefix(blanks);
    number = 0;
    for (const char c : text) {
      if (!IsDigit(c)) return false;
      number = number * 10 + (c - '0');
    }
    return !text.empty();
  }

  bool ReadDay(std::size_t length) {
    const bool one_digit = length == 1 && (text_.size() < 2 || !IsDigit(text_[1]));
    std::string_view day = Take(one_digit ? 1 : 2);
    // Days alone may stand left in their two places.
    if (day.ends_with(' ')) day.remove_suffix(1);
    return ReadNumber(day, day_);
  }

  bool ReadYear(std::size_t length) {
    if (length >= 3) return text_.size() >= 3 && ReadNumber(Take(4), year_);
    if (!ReadNumber(Take(2), year_)) return false;
    year_ += year_ < 50 ? 2000 : 1900;
    return true;
  }

  bool ReadTimePart(int& part) {
    has_time_ = true;
    return ReadNumber(Take(2), part);
  }

  std::string_view text_;
  int year_ = 0;
  int month_ = 0;
  int day_ = 0;
  int hour_ = 0;
  int minute_ = 0;
  int second_ = 0;
  bool has_time_ = false;
};

// ---- writing

// A moment taken apart; a moment within half a millisecond of the next second
// belongs to that second, so that fractions that are not exact do not lose one.
struct Parts {
  explicit Parts(DateTime moment) {
    constexpr std::int64_t kDay = 86'400'000;
    const double days = std::floor(moment);
    std::int64_t milliseconds = std::llround((moment - days) * static_cast<double>(kDay));
    day = DayOf(static_cast<Date>(days) + static_cast<Date>(milliseconds / kDay));
    milliseconds %= kDay;
    hour = static_cast<int>(milliseconds / 3'600'000);
    minute = static_cast<int>(milliseconds / 60'000 % 60);
    second = static_cast<int>(milliseconds / 1000 % 60);
  }
  CalendarDay day{};
  int hour;
  int minute;
  int second;
};

void AppendPadded(std::string& text, int number, std::size_t width) {
  const std::string digits = std::to_string(number);
  text.append(width > digits.size() ? width - digits.size() : 0, '0').append(digits);
}

void AppendRun(std::string& text, const Parts& parts, FormatRun run) {
  const std::size_t width = std::min<std::size_t>(run.length, 2);
  switch (run.letter) {
    case 'd':
      return AppendPadded(text, parts.day.day, width);
    case 'm':
      return AppendPadded(text, parts.day.month, width);
    case 'y':
      if (run.length >= 3) return AppendPadded(text, parts.day.year, 4);
      return AppendPadded(text, parts.day.year % 100, 2);
    case 'h':
      return AppendPadded(text, parts.hour, width);
    case 'n':
      return AppendPadded(text, parts.minute, width);
    case 's':
      return AppendPadded(text, parts.second, width);
    default:
      text += run.written;
  }
}

}  // namespace

std::optional<DateTime> ParseDateTimeFmt(std::string_view format, std::string_view text) {
  DateTimeReader reader(text);
  while (!format.empty()) {
    if (!reader.Read(TakeRun(format))) return std::nullopt;
  }
  return reader.Result();
}

DateTime TextToDateTimeFmt(std::string_view format, std::string_view text) {
  if (const auto moment = ParseDateTimeFmt(format, text)) return *moment;
  throw InvalidDateError();
}

DateTime TextToDateFmtDef(std::string_view format, std::string_view text, DateTime default_value) {
  return ParseDateTimeFmt(format, text).value_or(default_value);
}

std::string FormatDateTime(std::string_view format, DateTime moment) {
  const Parts parts(moment);
  std::string text;
  while (!format.empty()) AppendRun(text, parts, TakeRun(format));
  return text;
}

}  // namespace customsconv
