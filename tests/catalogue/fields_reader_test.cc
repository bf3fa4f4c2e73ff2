#include "catalogue/fields_reader.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

// "N18.2" or "C20x3 {10,20}"; a space stands for the type of plain text.
std::string Sizes(const TFieldInfo& field) {
  std::string text = std::string(1, static_cast<char>(field.type)) + std::to_string(field.width);
  if (field.decimals != 0) text += "." + std::to_string(field.decimals);
  if (field.lines != 1) text += "x" + std::to_string(field.lines);
  for (const int width : field.line_widths) text += "," + std::to_string(width);
  return text;
}

// All entries as "NAME sizes", blocks as "NAME{...}".
std::string Tree(const TBasis& basis) {
  std::string text;
  for (int i = 0; i < basis.Count(); ++i) {
    const TFieldInfo& field = basis.Item(i);
    if (!text.empty()) text += ' ';
    text += Utf8(field.name);
    if (field.block != nullptr) text += "{" + Tree(*field.block) + "}";
  }
  return text;
}

using TextPair = std::pair<const char*, const char*>;

TEST(FieldsReader, UnderstandsFormats) {
  for (const auto& [line, sizes] :
       Cases({"F=20 ->  20", "F C20 -> F1", "F=c20X3x5 -> C20x3", "F=N -> N15", "F=N15.2 -> N18.2",
              "F=D8 -> D10", "F=D8 | NAMESPACE=\"a\" -> D8", "F=10,20,30 ->  30x3,10,20,30",
              "F=C10,20X7 ->  20x2,1,20", "F=10,,20, ->  20x2,10,20",
              "F=N5.1 4 | SEQ=\"1\" -> N7.1", "F=B|группа -> B1"})) {
    EXPECT_EQ(Sizes(TypeWorld(line).Basis().Item(0)), sizes) << line;
  }
}

TEST(FieldsReader, UpperCasesNamesUnlessBoundToXml) {
  constexpr const char* kFields = "gёod=5\n&&BLOCK\na=1\n&&BLOCK\nbl {\nb=1\n}\n";
  TypeWorld plain(kFields, "MainBlock=tov\n");
  EXPECT_EQ(Tree(plain.Basis()), "GёOD TOV{A} BL{B}");
  TypeWorld xml(kFields, "XmlType=1\n");
  EXPECT_EQ(Tree(xml.Basis()), "gёod BLOCK{a} bl{b}");
}

TEST(FieldsReader, NestsBlocksAndEndsThemAllAtASectionLine) {
  for (const auto& [fields, tree] :
       Cases({"A=1\nB {\nC {\nD=1\n}\nE=1\n}\nF=1\n}\nG=1\n -> A B{C{D} E} F",
              "A {\nB {\nC=1\n[\nD=1\n -> A{B{C}}", "A {\nB {\nC=1 -> A{B{C}}",
              "A {\nB=1\n&&BLOCK x\nC=1\n -> A{B} C", "&&BLOCK\nB=1\n}\nC=1\n -> BLOCK{B} C",
              "A { | x }\nB=1\n -> A B", "A {\n}\n -> A{}"})) {
    EXPECT_EQ(Tree(TypeWorld(fields).Basis()), tree) << fields;
  }
}

TEST(FieldsReader, TakesCaptionsFromTheLineOrTheCommentBefore) {
  TypeWorld type(
      ";=> первая <=\nA=1\nB=1\n; потеряна\nC=1 | своя\nD=1|тоже\nD.E=x;1;r|не подпись\n"
      ";блок\nF {\n;в конце блока\n}\nG=1 | NAMESPACE=\"g\"\n"
      "H { | надпись MAX=\"1\" NAMESPACE=\"a:h\"\n");
  const TBasis& basis = type.Basis();
  const TextPair cases[] = {
      {"A", "первая <"}, {"B", ""},     {"C", "своя"},          {"D", "тоже"},
      {"D.E", ""},       {"F", "блок"}, {"G", "в конце блока"}, {"H", "надпись MAX=\"1\""}};
  for (const auto& [name, caption] : cases) {
    EXPECT_EQ(Utf8(basis.FieldByName(name).caption), caption) << name;
  }
  EXPECT_EQ(basis.FieldByName("H").xml_path, "a:h");
}

TEST(FieldsReader, TakesAttributesOutOfTheCaption) {
  TypeWorld type(
      "A=C5 | x PATTERN=\"[|]\"y PRNT=\"1\" SEQ=\"2\"CHOICE=\"257\" MAX=\"many\" "
      "NAMESPACE=\"a:B\" z\nB=C5 | NAMESPACE=a:B\nC=C5 | NAMESPACE=\"a:B\n");
  const TFieldInfo& a = type.Basis().Item(0);
  EXPECT_EQ(a.caption + "/" + a.pattern + "/" + a.xml_path, "x y     z/[|]/a:B");
  EXPECT_EQ((std::vector<int>{a.prnt, a.seq, a.choice, a.max}), (std::vector{1, 2, 1, 0}));
  for (const int i : {1, 2}) EXPECT_EQ(type.Basis().Item(i).xml_path, "") << i;
  EXPECT_EQ(type.Basis().Item(1).caption, "NAMESPACE=a:B");
}

TEST(FieldsReader, MakesCompositesOfFieldsWithParts) {
  TypeWorld type(
      "EARLY.1=x;1\nG31=C250\nNUM=N5\n"
      "G31.1=№#место;2;ссылка12;x | часть\nG31.2= ;300;R\nNUM.1=a;0\n");
  const TBasis& basis = type.Basis();
  const TFieldInfo& composite = basis.FieldByName("G31");
  EXPECT_EQ(Sizes(composite), "M250");
  std::string described;
  for (const TSubField& part : composite.sub_fields) {
    described += part.full_name + ";" + part.prefix + ";" + std::to_string(part.number) + ";" +
                 part.ref_name + ";" + std::to_string(part.ref_number) + ";" +
                 (part.flag ? "x;" : ";") + part.caption + "|";
  }
  // A level is kept in 8 bits.
  EXPECT_EQ(Utf8(described), "G31.1;№\rМЕСТО;2;ССЫЛКА12;12;x;часть|G31.2; ;44;R;0;;|");
  const std::pair<const char*, int> parts[] = {
      {"EARLY.1", -1}, {"G31.1", 0}, {"G31.2", 1}, {"NUM.1", 0}};
  for (const auto& [name, part] : parts) EXPECT_EQ(basis.FieldByName(name).part, part) << name;
  EXPECT_EQ(basis.FieldByName("NUM").type, FieldType::kNumber);
  EXPECT_EQ(basis.FieldByName("NUM.1").type, FieldType::kPart);
}

TEST(FieldsReader, NamesFileAndSectionOfWhatItCannotRead) {
  const TextPair cases[] = {{"F=20ABC\n", "Отсутствует пробел между длиной поля и описанием"},
                            {"A=C5\nA.b=x;y\n", "Неверный формат префикса A.B"}};
  const std::string place = "Файл: C:\\PROG\\Data\\Kordwin.dcf  Раздел: [T.Fields]\r\r";
  for (const auto& [fields, message] : cases) {
    EXPECT_EQ(Utf8(ErrorOf([&fields = fields] { TypeWorld(fields).Basis(); })), place + message);
  }
  TypeWorld type("EMPTY=\nA.B=x;1\n");
  EXPECT_EQ(Sizes(type.Basis().Item(0)), " 0");
  EXPECT_EQ(type.host.dialogs.log,
            std::vector<std::string>{"message: Не указана длина поля EMPTY"});
}

TEST(FieldsReader, NestsAsDeepAsTheFileSays) {
  constexpr int kDepth = 100000;
  std::string fields;
  for (int i = 0; i < kDepth; ++i) fields += "B {\n";
  TypeWorld type(fields + "F=1\n");
  const TBasis* level = &type.Basis();
  int depth = 0;
  for (; level->Item(0).block != nullptr; ++depth) level = level->Item(0).block.get();
  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(level->Item(0).name, "F");
}

}  // namespace
}  // namespace customsconv
