#include "mapping/built_in/header_rules.h"

#include "mapping/built_in/transit_source.h"
#include "mapping/built_in/transport.h"
#include "text/date_forms.h"
#include "text/dates.h"

namespace customsconv {
namespace {

constexpr CharSet kNumberSeparator{"/"};

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
  const std::string date = DottedFromDigits(WithoutCentury(digits));
  const std::optional<Date> day = ParseLocalDate(date, DayOf(today).year);
  const bool plausible = day && MayBeRegistrationDay(*day, today, EndDays::kExcluded);
  return plausible ? date : std::string();
}

void ApplyHeaderRules(RecordScope& record) {
  WriteRegistrationNumber(record);
  WriteTransportRecords(record);
  ReshapeTransitDeclaration(record);
}

}  // namespace customsconv
