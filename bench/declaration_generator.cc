#include "declaration_generator.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace customsconv::bench {

namespace {

// One element a line: its depth in blanks, its name, and the kind of its value
// (see AppendValue) or, for a group that occurs n times, "*n".
constexpr std::string_view kHead = R"(cat_ru:DocumentID W
CustomsProcedure K
CustomsModeCode K
ElectronicDocumentSign K
RecipientCountryCode C
ESADout_CUGoodsShipment
 catESAD_cu:OriginCountryName W
 catESAD_cu:TotalGoodsNumber N
 catESAD_cu:TotalCustCost M
 ESADout_CUConsignor
  cat_ru:OrganizationName W
  RUScat_ru:SubjectAddressDetails
   RUScat_ru:PostalCode N
   RUScat_ru:CountryCode C
   RUScat_ru:Town W
   RUScat_ru:StreetHouse W
 ESADout_CUConsigment
  catESAD_cu:ContainerIndicator N
  catESAD_cu:DispatchCountryCode C
  ESADout_CUBorderTransport
   cat_ru:TransportModeCode N
   ESADout_CUTransportMeans *2
    cat_ru:TransportIdentifier W
    cat_ru:TransportMeansNationalityCode C
 ESADout_CUMainContractTerms
  catESAD_cu:ContractCurrencyCode C
  catESAD_cu:TotalInvoiceAmount M
)";

constexpr std::string_view kGoods = R"(catESAD_cu:GoodsNumeric N
catESAD_cu:GoodsDescription T
catESAD_cu:GoodsDescription T
catESAD_cu:GrossWeightQuantity M
catESAD_cu:NetWeightQuantity M
catESAD_cu:InvoicedCost M
catESAD_cu:CustomsCost M
catESAD_cu:StatisticalCost M
catESAD_cu:GoodsTNVEDCode N
catESAD_cu:BeginPeriodDate D
catESAD_cu:EndPeriodDate D
catESAD_cu:OriginCountryCode C
catESAD_cu:OriginCountryName W
catESAD_cu:CustomsCostCorrectMethod N
GoodsGroupDescription *2
 catESAD_cu:GoodsDescription W
 GoodsGroupInformation *2
  catESAD_cu:Manufacturer W
  catESAD_cu:TradeMark W
  catESAD_cu:GoodsMark W
  catESAD_cu:GoodsModel W
  GoodsGroupQuantity
   cat_ru:GoodsQuantity M
   cat_ru:MeasureUnitQualifierName K
   cat_ru:MeasureUnitQualifierCode N
Preferencii
 catESAD_cu:CustomsTax K
 catESAD_cu:CustomsDuty K
 catESAD_cu:Excise K
 catESAD_cu:Rate K
ESADout_CUPrecedingDocument *2
 catESAD_cu:PrecedingDocumentID N
 catESAD_cu:PrecedingDocumentDate D
 catESAD_cu:PrecedingDocumentNumber W
 catESAD_cu:PrecedingDocumentName W
 catESAD_cu:NetWeightQuantity M
ESADout_CUPresentedDocument *4
 cat_ru:PrDocumentName W
 cat_ru:PrDocumentNumber N
 cat_ru:PrDocumentDate D
 catESAD_cu:PresentedDocumentModeCode N
 catESAD_cu:DocumentBeginActionsDate D
ESADout_CUCustomsPaymentCalculation *3
 catESAD_cu:PaymentModeCode N
 catESAD_cu:PaymentAmount M
 catESAD_cu:PaymentCurrencyCode N
 catESAD_cu:TaxBase M
 catESAD_cu:Rate N
 catESAD_cu:RateTypeCode K
 catESAD_cu:PaymentCode K
SupplementaryGoodsQuantity
 cat_ru:GoodsQuantity M
 cat_ru:MeasureUnitQualifierName K
ESADGoodsPackaging
 catESAD_cu:PakageQuantity N
 catESAD_cu:PakageTypeCode N
 PackagePalleteInformation *2
  catESAD_cu:InfoKindCode N
  catESAD_cu:PalleteCode C
  catESAD_cu:PalleteQuantity N
ESADCustomsProcedure
 catESAD_cu:MainCustomsModeCode N
 catESAD_cu:PrecedingCustomsModeCode N
 catESAD_cu:GoodsTransferFeature N
)";

constexpr std::string_view kGoodsElement = "ESADout_CUGoods";
constexpr std::string_view kRootTag =
    "ESADout_CU xmlns:cat_ru=\"urn:customs.ru:CommonAggregateTypes:5.22.0\" "
    "xmlns:catESAD_cu=\"urn:customs.ru:CUESADCommonAggregateTypesCust:5.22.0\" "
    "xmlns:RUScat_ru=\"urn:customs.ru:RUSCommonAggregateTypes:5.22.0\" "
    "xmlns=\"urn:customs.ru:Information:CustomsDocuments:ESADout_CU:5.23.0\" "
    "DocumentModeID=\"1006107E\"";

struct Element {
  std::size_t depth = 0;
  std::string_view name;
  char kind = '\0';  // of a value; '\0' for a group
  int times = 1;
};

std::vector<Element> ParseOutline(std::string_view outline) {
  std::vector<Element> elements;
  while (!outline.empty()) {
    std::string_view line = outline.substr(0, outline.find('\n'));
    outline.remove_prefix(line.size() + 1);
    Element element;
    element.depth = line.find_first_not_of(' ');
    line.remove_prefix(element.depth);
    element.name = line.substr(0, line.find(' '));
    line.remove_prefix(std::min(element.name.size() + 1, line.size()));
    if (line.substr(0, 1) == "*") {
      element.times = line[1] - '0';
    } else if (!line.empty()) {
      element.kind = line[0];
    }
    elements.push_back(element);
  }
  return elements;
}

// Writes the documents of one file.
class Generator {
 public:
  explicit Generator(std::string& to) : to_(to) {}

  void Declaration(int goods) {
    to_.append("<").append(kRootTag).append(">\n");
    Level(head_, 0, head_.size(), 1);
    // The goods belong inside the shipment, whose end tag the head has written last.
    constexpr std::string_view kShipmentEnd = " </ESADout_CUGoodsShipment>\n";
    to_.resize(to_.size() - kShipmentEnd.size());
    for (int i = 0; i < goods; ++i) {
      to_.append("  <").append(kGoodsElement).append(">\n");
      Level(goods_, 0, goods_.size(), 3);
      to_.append("  </").append(kGoodsElement).append(">\n");
    }
    to_.append(kShipmentEnd).append("</ESADout_CU>\n");
  }

 private:
  void Level(const std::vector<Element>& elements, std::size_t from, std::size_t to,
             std::size_t indent) {
    while (from < to) {
      const Element& element = elements[from];
      std::size_t end = from + 1;
      while (end < to && elements[end].depth > element.depth) ++end;
      for (int i = 0; i < element.times; ++i) {
        const std::size_t blanks = indent + element.depth;
        to_.append(blanks, ' ').append("<").append(element.name).append(">");
        if (element.kind != '\0') {
          AppendValue(element.kind);
        } else {
          to_.append("\n");
          Level(elements, from + 1, end, indent);
          to_.append(blanks, ' ');
        }
        to_.append("</").append(element.name).append(">\n");
      }
      from = end;
    }
  }

  void AppendValue(char kind) {
    constexpr std::string_view kLetters = "ABCDEFGHIJ";
    switch (kind) {
      case 'N':
        return Digits(5);
      case 'M':
        Digits(6);
        to_.push_back('.');
        return Digits(2);
      case 'D':
        to_.append("202");
        Digits(1);
        return static_cast<void>(to_.append(Below(2) == 0 ? "-05-16" : "-11-02"));
      case 'C':
        to_.push_back(kLetters[Below(kLetters.size())]);
        to_.push_back(kLetters[Below(kLetters.size())]);
        return;
      case 'K':
        return static_cast<void>(to_.append(Below(2) == 0 ? "ИМ" : "ЭК"));
      case 'T':
        return Words(20);
      default:
        return Words(3);
    }
  }

  void Words(int count) {
    static constexpr std::string_view kWords[] = {"НАСОС", "КАБЕЛЬ", "СТАНОК", "ДЕТАЛЬ",
                                                  "МЕСТО", "ТКАНЬ",  "ПРИБОР", "УЗЕЛ"};
    for (int i = 0; i < count; ++i) {
      if (i > 0) to_.push_back(' ');
      to_.append(kWords[Below(std::size(kWords))]);
    }
  }

  void Digits(int count) {
    for (int i = 0; i < count; ++i) to_.push_back(static_cast<char>('1' + Below(9)));
  }
  std::size_t Below(std::size_t limit) { return random_() % limit; }

  std::string& to_;
  std::vector<Element> head_ = ParseOutline(kHead);
  std::vector<Element> goods_ = ParseOutline(kGoods);
  std::minstd_rand random_;
};

}  // namespace

DeclarationShape ShapeOfSize(std::size_t bytes, int documents) {
  constexpr int kSample = 20;
  const std::size_t without = GenerateDeclarations({1, 0}).size();
  const std::size_t goods = (GenerateDeclarations({1, kSample}).size() - without) / kSample;
  const std::size_t per_document = bytes / static_cast<std::size_t>(documents);
  return {documents, static_cast<int>((per_document - std::min(without, per_document)) / goods)};
}

std::string GenerateDeclarations(const DeclarationShape& shape) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  Generator generator(text);
  if (shape.documents == 1) {
    generator.Declaration(shape.goods_per_document);
    return text;
  }
  text += "<ED_Container>\n";
  for (int i = 0; i < shape.documents; ++i) {
    text += "<ContainerDoc><DocBody>\n";
    generator.Declaration(shape.goods_per_document);
    text += "</DocBody></ContainerDoc>\n";
  }
  return text + "</ED_Container>\n";
}

}  // namespace customsconv::bench
