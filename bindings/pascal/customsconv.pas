{ The library for Free Pascal programs.

  The library is loaded when a TCustomsConv is created, so that a program starts
  without it, and its texts are short strings in code page 1251: exactly
  the ShortString of this language, handed over by reference.

  Errors of the library arrive as ECustomsConv. For that the library calls
  customsconv_raise, which it looks for among the exported symbols of the
  program; so the program must export it:

    uses customsconv;
    exports customsconv_raise;

  One call at a time in a process. }
unit customsconv;

{$mode objfpc}{$H+}

interface

uses
  Classes, SysUtils;

type
  { The message is UTF-8; Text is the library's own in code page 1251. }
  ECustomsConv = class(Exception)
  private
    FText: RawByteString;
  public
    constructor Create(const AText: RawByteString); reintroduce;
    property Text: RawByteString read FText;
  end;

  TCustomsConv = class
  private type
    PLines = ^TLines;
    { The string list as the library sees it. What follows Append is ours. }
    TLines = record
      Append: procedure(Lines: PLines; Line: PAnsiChar; Size: SizeUInt); cdecl;
      List: TStrings;
      Failure: TObject;
    end;
    TConvert = function(ProgramDir, RulesFile, XmlFile, OutputDir: PShortString): Byte;
      {$ifdef CPUI386} register; {$else} cdecl; {$endif}
    TCheck = function(ProgramDir, SchemaPath, XmlFile: PShortString; Lines: PLines): Byte;
      {$ifdef CPUI386} register; {$else} cdecl; {$endif}
  private
    FLibrary: TLibHandle;
    FConvert: TConvert;
    FCheck: TCheck;
    function Symbol(const Name: string): Pointer;
    class procedure Append(Lines: PLines; Line: PAnsiChar; Size: SizeUInt); cdecl; static;
  public
    { Raises ECustomsConv when the library cannot be loaded. }
    constructor Create(const LibraryFile: string);
    destructor Destroy; override;

    { ProgramDir and OutputDir end with a path separator. }
    function Xml2ArmTi(const ProgramDir, RulesFile, XmlFile, OutputDir: ShortString): Boolean;
    { Appends to Errors a line a failing document, in code page 1251; an exception
      of Errors comes out here when the check has ended. }
    function CheckXSD(const ProgramDir, SchemaPath, XmlFile: ShortString;
      Errors: TStrings): Boolean;
  end;

{ What the library calls with an error; exported by the program. }
procedure customsconv_raise(Message: PAnsiChar; Size: SizeUInt); cdecl;

{ A character that code page 1251 lacks becomes "?". }
function WinFromUtf8(const Text: RawByteString): RawByteString;
function Utf8FromWin(const Text: RawByteString): RawByteString;

implementation

uses
  DynLibs;

const
  { The upper half of code page 1251. }
  WinCharacters: array[$80..$FF] of Word = (
    $0402, $0403, $201A, $0453, $201E, $2026, $2020, $2021,
    $20AC, $2030, $0409, $2039, $040A, $040C, $040B, $040F,
    $0452, $2018, $2019, $201C, $201D, $2022, $2013, $2014,
    $0098, $2122, $0459, $203A, $045A, $045C, $045B, $045F,
    $00A0, $040E, $045E, $0408, $00A4, $0490, $00A6, $00A7,
    $0401, $00A9, $0404, $00AB, $00AC, $00AD, $00AE, $0407,
    $00B0, $00B1, $0406, $0456, $0491, $00B5, $00B6, $00B7,
    $0451, $2116, $0454, $00BB, $0458, $0405, $0455, $0457,
    $0410, $0411, $0412, $0413, $0414, $0415, $0416, $0417,
    $0418, $0419, $041A, $041B, $041C, $041D, $041E, $041F,
    $0420, $0421, $0422, $0423, $0424, $0425, $0426, $0427,
    $0428, $0429, $042A, $042B, $042C, $042D, $042E, $042F,
    $0430, $0431, $0432, $0433, $0434, $0435, $0436, $0437,
    $0438, $0439, $043A, $043B, $043C, $043D, $043E, $043F,
    $0440, $0441, $0442, $0443, $0444, $0445, $0446, $0447,
    $0448, $0449, $044A, $044B, $044C, $044D, $044E, $044F);

function WinByte(Character: WideChar): AnsiChar;
var
  Code: Byte;
begin
  if Ord(Character) < $80 then
    Exit(AnsiChar(Ord(Character)));
  for Code := Low(WinCharacters) to High(WinCharacters) do
    if WinCharacters[Code] = Ord(Character) then
      Exit(AnsiChar(Code));
  Result := '?';
end;

function WinFromUtf8(const Text: RawByteString): RawByteString;
var
  Wide: UnicodeString;
  I: SizeInt;
begin
  Wide := UTF8Decode(Text);
  Result := '';
  SetLength(Result, Length(Wide));
  for I := 1 to Length(Wide) do
    Result[I] := WinByte(Wide[I]);
end;

function Utf8FromWin(const Text: RawByteString): RawByteString;
var
  Wide: UnicodeString;
  I: SizeInt;
begin
  Wide := '';
  SetLength(Wide, Length(Text));
  for I := 1 to Length(Text) do
    if Ord(Text[I]) < $80 then
      Wide[I] := WideChar(Ord(Text[I]))
    else
      Wide[I] := WideChar(WinCharacters[Ord(Text[I])]);
  Result := UTF8Encode(Wide);
end;

{ Everything of the library's is off the stack but the exported function itself,
  so the exception may leave it. }
procedure customsconv_raise(Message: PAnsiChar; Size: SizeUInt); cdecl;
var
  Text: RawByteString;
begin
  SetString(Text, Message, Size);
  raise ECustomsConv.Create(Text);
end;

constructor ECustomsConv.Create(const AText: RawByteString);
begin
  inherited Create(Utf8FromWin(AText));
  FText := AText;
end;

constructor TCustomsConv.Create(const LibraryFile: string);
begin
  inherited Create;
  FLibrary := LoadLibrary(LibraryFile);
  if FLibrary = NilHandle then
    raise ECustomsConv.Create(WinFromUtf8(LibraryFile + ': ' + GetLoadErrorStr));
  Pointer(FConvert) := Symbol('Xml2ArmTi');
  Pointer(FCheck) := Symbol('CheckXSD');
end;

destructor TCustomsConv.Destroy;
begin
  if FLibrary <> NilHandle then
    UnloadLibrary(FLibrary);
  inherited Destroy;
end;

function TCustomsConv.Symbol(const Name: string): Pointer;
begin
  Result := GetProcedureAddress(FLibrary, Name);
  if Result = nil then
    raise ECustomsConv.Create('the library has no function ' + Name);
end;

function TCustomsConv.Xml2ArmTi(const ProgramDir, RulesFile, XmlFile,
  OutputDir: ShortString): Boolean;
begin
  Result := FConvert(@ProgramDir, @RulesFile, @XmlFile, @OutputDir) <> 0;
end;

function TCustomsConv.CheckXSD(const ProgramDir, SchemaPath, XmlFile: ShortString;
  Errors: TStrings): Boolean;
var
  Lines: TLines;
begin
  Lines.Append := @Append;
  Lines.List := Errors;
  Lines.Failure := nil;
  Result := FCheck(@ProgramDir, @SchemaPath, @XmlFile, @Lines) <> 0;
  if Lines.Failure <> nil then
    raise Lines.Failure;
end;

{ Runs inside the library, which no exception may cross: the first one is kept,
  and so is the order of what was appended before it. }
class procedure TCustomsConv.Append(Lines: PLines; Line: PAnsiChar; Size: SizeUInt); cdecl;
var
  Text: RawByteString;
begin
  if Lines^.Failure <> nil then
    Exit;
  try
    SetString(Text, Line, Size);
    Lines^.List.Add(Text);
  except
    Lines^.Failure := TObject(AcquireExceptionObject);
  end;
end;

end.
