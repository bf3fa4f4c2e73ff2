#include "declaration_generator.h"

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

namespace customsconv::bench {

namespace {

// One element a line: its depth in blanks, its name, and its value (see AppendValue) or,
// for a group that occurs n times, "*n". The catalogue and the schemas of examples/ know
// every element, so a file is read without a message and is valid as it stands.
constexpr std::string_view kHead = R"(cat_ru:DocumentID U
EECEDocHeaderAddInfo
 RUScat_ru:EDocCode =R.036
 RUScat_ru:EDocDateTime =2015-06-11T09:15:30
 RUScat_ru:LanguageCode =RU
CustomsProcedure =ИМ
CustomsModeCode =40
ElectronicDocumentSign =ЭД
RecipientCountryCode =RU
ExecutionPlace =Примерск
ESADout_CUGoodsShipment
 catESAD_cu:OriginCountryName =КИТАЙ
 catESAD_cu:OriginCountryCode =CN
 catESAD_cu:TotalGoodsNumber N3
 catESAD_cu:TotalPackageNumber N5
 catESAD_cu:TotalCustCost M
 catESAD_cu:CustCostCurrencyCode =RUB
 ESADout_CUConsignor
  cat_ru:OrganizationName W
  RUScat_ru:CountryA2Code =CN
  RUScat_ru:SubjectAddressDetails
   RUScat_ru:PostalCode N6
   RUScat_ru:CountryCode =CN
   RUScat_ru:City W
   RUScat_ru:StreetHouse W
 ESADout_CUConsignee
  cat_ru:OrganizationName W
  cat_ru:RFOrganizationFeatures
   cat_ru:OGRN N13
   cat_ru:INN N10
   cat_ru:KPP N9
  RUScat_ru:CountryA2Code =RU
  RUScat_ru:SubjectAddressDetails
   RUScat_ru:PostalCode N6
   RUScat_ru:CountryCode =RU
   RUScat_ru:City W
   RUScat_ru:StreetHouse W
 ESADout_CUDeclarant
  cat_ru:OrganizationName W
  cat_ru:RFOrganizationFeatures
   cat_ru:OGRN N13
   cat_ru:INN N10
   cat_ru:KPP N9
  RUScat_ru:CountryA2Code =RU
 ESADout_CUConsigment
  catESAD_cu:ContainerIndicator =true
  catESAD_cu:DispatchCountryCode =CN
  catESAD_cu:DispatchCountryName =КИТАЙ
  ESADout_CUDepartureArrivalTransport
   cat_ru:TransportModeCode =31
   TransportMeansQuantity =2
   RUTransportMeans *2
    cat_ru:TransportKindCode =310
    cat_ru:TransportIdentifier N8
    cat_ru:TransportMeansNationalityCode =RU
 ESADout_CUMainContractTerms
  catESAD_cu:ContractCurrencyCode =USD
  catESAD_cu:ContractCurrencyRate =55.1234
  catESAD_cu:TotalInvoiceAmount M
)";

constexpr std::string_view kGoods = R"(catESAD_cu:GoodsNumeric G
catESAD_cu:GoodsDescription T
catESAD_cu:GoodsDescription T
catESAD_cu:GrossWeightQuantity M
catESAD_cu:NetWeightQuantity M
catESAD_cu:InvoicedCost M
catESAD_cu:InvoicedCurrencyCode =USD
catESAD_cu:CustomsCost M
catESAD_cu:StatisticalCost M
catESAD_cu:GoodsTNVEDCode N10
catESAD_cu:BeginPeriodDate D
catESAD_cu:EndPeriodDate D
catESAD_cu:OriginCountryCode =CN
catESAD_cu:OriginCountryName =КИТАЙ
catESAD_cu:CustomsCostCorrectMethod =1
catESAD_cu:GoodsGroupDescription *2
 catESAD_cu:GoodsDescription W
 catESAD_cu:GoodsGroupInformation *2
  catESAD_cu:InfoDescription W
  catESAD_cu:Manufacturer W
  catESAD_cu:TradeMark W
  catESAD_cu:GoodsMark W
  catESAD_cu:GoodsModel W
  catESAD_cu:SerialNumber N8
  catESAD_cu:GoodsGroupQuantity
   catESAD_cu:GoodsQuantity M
   catESAD_cu:MeasureUnitQualifierName =ШТ
   catESAD_cu:MeasureUnitQualifierCode =796
catESAD_cu:Preferencii
 catESAD_cu:CustomsTax =ОО
 catESAD_cu:CustomsDuty =ОО
 catESAD_cu:Excise =-
 catESAD_cu:Rate =ОО
ESADout_CUPresentedDocument *5
 cat_ru:PrDocumentName W
 cat_ru:PrDocumentNumber N8
 cat_ru:PrDocumentDate D
 catESAD_cu:PresentedDocumentModeCode N5
 catESAD_cu:DocumentBeginActionsDate D
ESADout_CUPrecedingDocument *2
 catESAD_cu:PrecedingDocumentCustomsCode N8
 catESAD_cu:PrecedingDocumentDate D
 catESAD_cu:PrecedingDocumentNumber N7
 catESAD_cu:PrecedingDocumentGoodsNumeric N2
 catESAD_cu:PrecedingDocumentName W
ESADout_CUCustomsPaymentCalculation *4
 catESAD_cu:PaymentModeCode N4
 catESAD_cu:PaymentAmount M
 catESAD_cu:PaymentCurrencyCode =643
 catESAD_cu:TaxBase M
 catESAD_cu:Rate N2
 catESAD_cu:RateTypeCode =%
 catESAD_cu:PaymentCode =ИУ
SupplementaryGoodsQuantity
 cat_ru:GoodsQuantity M
 cat_ru:MeasureUnitQualifierName =ШТ
ESADGoodsPackaging
 catESAD_cu:PakageQuantity N4
 catESAD_cu:PakageTypeCode =1
 catESAD_cu:PackagePalleteInformation *2
  catESAD_cu:InfoKindCode =0
  catESAD_cu:PalleteCode =CT
  catESAD_cu:PalleteQuantity N2
ESADContainer
 catESAD_cu:ContainerQuantity =1
 catESAD_cu:ContainerKind =22
 catESAD_cu:ContainerNumber
  catESAD_cu:ContainerIdentificaror N10
  catESAD_cu:FullIndicator =1
ESADCustomsProcedure
 catESAD_cu:MainCustomsModeCode =40
 catESAD_cu:PrecedingCustomsModeCode =00
 catESAD_cu:GoodsTransferFeature =000
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
  std::string_view value;  // empty for a group
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
      element.value = line;
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
    for (goods_number_ = 1; goods_number_ <= goods; ++goods_number_) {
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
        if (!element.value.empty()) {
          AppendValue(element.value);
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

  // "=" and the text itself, "N" and a number of digits, or a letter for the other kinds.
  void AppendValue(std::string_view value) {
    const std::string_view rest = value.substr(1);
    switch (value[0]) {
      case '=':
        return static_cast<void>(to_.append(rest));
      case 'N':
        return Digits(rest.size() == 1 ? rest[0] - '0' : (rest[0] - '0') * 10 + rest[1] - '0');
      case 'M':
        Digits(6);
        to_.push_back('.');
        return Digits(2);
      case 'D':
        to_.append("202");
        Digits(1);
        return static_cast<void>(to_.append(Below(2) == 0 ? "-05-16" : "-11-02"));
      case 'G':  // the formats have three digits for it
        return static_cast<void>(to_.append(std::to_string((goods_number_ - 1) % 999 + 1)));
      case 'U':
        to_.append("11111111-0000-4000-8000-");
        return Digits(12);
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
  int goods_number_ = 0;
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
