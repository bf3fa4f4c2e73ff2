#include "services/numbering.h"

#include "base/characters.h"
#include "config/settings.h"
#include "services/numbering_store.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::int32_t kLargestNumber = 9'999'999;
constexpr std::size_t kNumberDigits = 7;
constexpr std::string_view kLastDate = "LastDate";
constexpr std::string_view kDailyNumber = "TodayOrdNumber";
constexpr std::string_view kRunningNumber = "TotalOrdNumber";

// ---- counters; the caller holds the numbering lock

std::int32_t Read(std::string_view series, std::string_view key, std::int32_t default_value,
                  Environment& environment) {
  NumberingStore store(environment);
  return store->ReadInteger(series, key, default_value);
}

// A change that cannot be stored is forgotten: its number was not given out, and nobody may write
// it over what others draw meanwhile.
void Store(TConfiguration& store, std::string_view series, std::string_view key,
           std::int32_t value) {
  try {
    store.WriteInteger(series, key, value);
  } catch (const Error&) {
    store.Reload();
    throw;
  }
}

void Write(std::string_view series, std::string_view key, std::int32_t value,
           Environment& environment) {
  NumberingStore store(environment);
  Store(*store, series, key, value);
}

std::int32_t Next(std::string_view series, std::string_view key, std::int32_t start,
                  std::int32_t maximum, NumberingLock& lock, Environment& environment) {
  lock.OfferSharedFile();
  NumberingStore store(environment);
  // An absent counter stands at the start value and is advanced like any other.
  std::int32_t number = store->ReadInteger(series, key, start);
  number = number < maximum ? number + 1 : start;
  Store(*store, series, key, number);
  return number;
}

// ---- registration numbers

void ReplaceFirst(std::string& text, std::string_view placeholder, std::string_view value) {
  const std::size_t position = text.find(placeholder);
  if (position == std::string::npos) return;
  text.replace(position, placeholder.size(), value);
}

// "ddmmyyyy", "ddmmyy" or, with years of one digit, "ddmmy".
std::string NumberDate(Date today, bool four_digit_year, const TConfiguration& config) {
  if (four_digit_year) return CompactDateText(today, 4);
  return CompactDateText(today, settings::RegNumsYear2Digit(config) ? 2 : 1);
}

// The counters of one series on one day. A number is drawn only when it is asked
// for; one that begins anew is the minimum itself.
class SeriesCounters {
 public:
  SeriesCounters(std::string_view series, Date today, NumberingLock& lock, Environment& environment)
      : series_(series), today_(today), lock_(lock), environment_(environment) {
    minimum_ = settings::MinOrdNumber(*NumberingStore(environment));
    last_date_ = Read(series, kLastDate, today, environment);
    Write(series, kLastDate, today, environment);
  }

  std::string DailyNumber() { return Draw(kDailyNumber, last_date_ != today_); }

  std::string RunningNumber() {
    const bool new_year = DayOf(last_date_).year != DayOf(today_).year;
    return Draw(kRunningNumber, new_year && settings::NewYearNumber(*environment_.config));
  }

 private:
  std::string Draw(std::string_view key, bool begin_anew) {
    std::int32_t number = minimum_;
    if (begin_anew) {
      Write(series_, key, minimum_, environment_);
    } else {
      number = Next(series_, key, minimum_, kLargestNumber, lock_, environment_);
    }
    return PadLeft(std::to_string(number), '0', kNumberDigits);
  }

  std::string_view series_;
  Date today_;
  NumberingLock& lock_;
  Environment& environment_;
  std::int32_t minimum_ = 0;
  Date last_date_ = 0;
};

bool AlwaysFourDigitYear(std::string_view series) { return series == "KD1" || series == "DUT"; }

}  // namespace

std::string CheckCompactDate(std::string_view date, const Environment& environment) {
  const Date today = environment.host.clock.Today();
  const std::optional<Date> day =
      ParseLocalDate(DottedFromDigits(Trim(date)), environment.ThisYear());
  const bool plausible = day && MayBeRegistrationDay(*day, today, EndDays::kIncluded);
  return plausible ? std::string(date) : std::string();
}

ShortText NextRegNumber(std::string_view series, bool four_digit_year, Environment& environment) {
  NumberingLock lock(environment);
  const TConfiguration& config = *environment.config;
  const Date today = environment.host.clock.Today();
  const std::string code = settings::CustomHouseCode(config);
  std::string number = settings::RegNumStructure(config);
  SeriesCounters counters(series, today, lock, environment);

  ReplaceFirst(number, "%CODE", code);
  ReplaceFirst(number, "%DATE",
               NumberDate(today, four_digit_year || AlwaysFourDigitYear(series), config));
  if (Contains(number, "%DNUM")) ReplaceFirst(number, "%DNUM", counters.DailyNumber());
  if (Contains(number, "%GNUM")) ReplaceFirst(number, "%GNUM", counters.RunningNumber());
  // The number travels in short texts; only a pattern that is no number's is longer.
  return ShortText::Cut(number);
}

std::int32_t ReadCounter(std::string_view series, std::string_view key, std::int32_t default_value,
                         Environment& environment) {
  const NumberingLock lock(environment);
  return Read(series, key, default_value, environment);
}

void WriteCounter(std::string_view series, std::string_view key, std::int32_t value,
                  Environment& environment) {
  const NumberingLock lock(environment);
  Write(series, key, value, environment);
}

std::int32_t NextCounter(std::string_view series, std::string_view key, std::int32_t start,
                         std::int32_t maximum, Environment& environment) {
  NumberingLock lock(environment);
  return Next(series, key, start, maximum, lock, environment);
}

}  // namespace customsconv
