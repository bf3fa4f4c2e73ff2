// The head record: its number, what goes with it, and what is known once its lines ran.

#include "mapping/built_in/header_rules.h"

#include "base/cp1251_literal.h"
#include "mapping/built_in/transit.h"
#include "mapping/built_in/transport.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/numbers.h"

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

constexpr std::size_t kCounterDigits = 6;

void NumberAdjustment(RecordScope& record) {
  ++record.run.adjustments;
  record.Set("G011", "КТ"_cp1251);
  record.Set("TM", record.target.GetField("G071"));
  // A Cyrillic К and a Latin T: what the workstation looks for.
  record.Set("G071", JoinShort({"КT"_cp1251, PadLeft(std::to_string(record.run.adjustments), '0',
                                                     kCounterDigits)}));
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

void ApplyClosingHeaderRules(RecordScope& record) {
  record.Set("G19", StrToBoolRu(record.target.GetField("G19")) ? "1" : "0");
  if (record.kind == "KTDout") NumberAdjustment(record);
}

}  // namespace customsconv
