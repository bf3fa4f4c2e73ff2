#include "mapping/built_in/transport_columns.h"

namespace customsconv {
namespace {

// Mode and nationality stand once in the header and count for each means of transport.
void WriteMeansOfTransport(RecordScope& record, std::string_view column,
                           std::string_view transport) {
  record.Set("NGR", column);
  record.Set("VIDTRANS", record.HeaderValue(JoinShort({transport, "#TransportModeCode"})));
  record.Set("G212", record.HeaderValue(JoinShort({transport, "#TransportNationalityCode"})));
}

}  // namespace

void WriteTransportColumns(RecordScope& record) {
  if (!record.PathHolds("outConsigment#")) return;
  if (record.PathHolds("DepartureArrivalTransport#TransportMeans\\")) {
    WriteMeansOfTransport(record, "18", "ESADoutConsigment#ESADoutDepartureArrivalTransport");
  }
  if (record.PathHolds("BorderTransport#TransportMeans\\")) {
    WriteMeansOfTransport(record, "21", "ESADoutConsigment#ESADoutBorderTransport");
  }
  if (record.PathHolds("LoadingPlace#LoadingPlaceOther\\")) record.Set("NGR", "27");
  if (record.PathHolds("Consigment#BorderCustomsOffice")) record.Set("NGR", "29");
}

}  // namespace customsconv
