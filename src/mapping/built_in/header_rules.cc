#include "mapping/built_in/header_rules.h"

#include "mapping/built_in/transit_source.h"
#include "mapping/built_in/transport.h"
#include "text/dates.h"

namespace customsconv {
namespace {

constexpr CharSet kNumberSeparator{"/"};
constexpr Date kEarliestDate = 32874;  // 01.01.1990
constexpr Date kDaysAhead = 400;

// Customs office, registration date and number of the declaration.
void WriteRegistrationNumber(RecordScope& record) {
  const std::string_view number = record.run.registration_number;
  record.Set("G071", ExtractWord(1, number, kNumberSeparator));
  record.Set("G072", RegistrationDate(ExtractWord(2, number, kNumberSeparator),
                                      record.run.environment.today.Today()));
  record.Set("G073", ExtractWord(3, number, kNumberSeparator));
}

}  // namespace

std::string RegistrationDate(std::string_view digits, Date today) {
  const std::size_t size = digits.size();
  if (size != 5 && size != 6 && size != 8) return {};
  std::string date(digits);
  if (size == 8) date.erase(4, 2);
  date.insert(4, size == 5 ? ".0" : ".");
  date.insert(2, ".");
  const std::optional<Date> day = ParseLocalDate(date, DayOf(today).year);
  const bool plausible = day && *day > kEarliestDate && *day < today + kDaysAhead;
  return plausible ? date : std::string();
}

void ApplyHeaderRules(RecordScope& record) {
  WriteRegistrationNumber(record);
  WriteTransportRecords(record);
  ReshapeTransitDeclaration(record);
}

}  // namespace customsconv
