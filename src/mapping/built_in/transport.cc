// Means of transport: the records of the header, and the columns of those that stand in blocks.

#include "mapping/built_in/transport.h"

namespace customsconv {
namespace {

constexpr CharSet kVehicleSeparators{",;"};

void WriteTransportMode(RecordScope& record, std::string_view column, std::string_view field) {
  const ShortText mode = record.HeaderValue(field);
  if (mode.empty()) return;
  record.Append("\\\\TRANS");
  record.Set("NGR", column);
  record.Set("VIDTRANS", mode);
  record.SelectTargetRoot();
}

void WriteVehicles(RecordScope& record) {
  const ShortText vehicles =
      record.SourceValue({"ESADoutGoodsLocation\\1\\Transport#TransporIdentifier"});
  if (vehicles.empty()) return;
  const ShortText kind = record.SourceValue({"ESADoutGoodsLocation\\1\\Transport#TransporKind"});
  // A blank behind a separator stays with its word.
  for (const std::string_view vehicle : Words(vehicles, kVehicleSeparators)) {
    record.Append("\\\\TRANS");
    record.Set("NGR", "30");
    record.Set("NTRANS", vehicle);
    record.Set("VIDTRANS", kind);
    record.SelectTargetRoot();
  }
}

// Mode and nationality stand once in the header and count for each means of transport.
void WriteMeansOfTransport(RecordScope& record, std::string_view column,
                           std::string_view transport) {
  record.Set("NGR", column);
  record.Set("VIDTRANS", record.HeaderValue(JoinShort({transport, "#TransportModeCode"})));
  record.Set("G212", record.HeaderValue(JoinShort({transport, "#TransportNationalityCode"})));
}

}  // namespace

void WriteTransportRecords(RecordScope& record) {
  WriteTransportMode(record, "25", "ESADoutConsigment#ESADoutBorderTransport#TransportModeCode");
  WriteTransportMode(record, "26",
                     "ESADoutConsigment#ESADoutDepartureArrivalTransport#TransportModeCode");
  WriteVehicles(record);
}

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
