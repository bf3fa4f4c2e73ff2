{ A host program in Free Pascal.

    sample_host LIBRARY EXAMPLES OUTPUT

  LIBRARY is libcustomsconv.so, EXAMPLES a copy of the examples with a closing
  separator, OUTPUT a folder with the empty tables, closing separator too. }
program sample_host;

{$mode objfpc}{$H+}

uses
  Classes, SysUtils, customsconv;

exports
  customsconv_raise;

procedure Convert(Converter: TCustomsConv; const Examples, ProgramDir, Output: RawByteString);
var
  Converted: Boolean;
begin
  try
    Converted := Converter.Xml2ArmTi(Examples + ProgramDir, Examples + 'rules/armti.txt',
      Examples + 'xml/10702020_110615_0001234.xml', Output);
    WriteLn('Xml2ArmTi: ', Converted);
  except
    on E: ECustomsConv do
      WriteLn('error: ', E.Message);
  end;
end;

procedure Check(Converter: TCustomsConv; const Examples, XmlFile: RawByteString);
var
  Errors: TStringList;
  Line: string;
  Checked: Boolean;
begin
  Errors := TStringList.Create;
  try
    Errors.Add('a line of the host');
    Checked := Converter.CheckXSD(Examples + 'program/', Examples + 'schemas/',
      Examples + XmlFile, Errors);
    for Line in Errors do
      WriteLn('  ', Utf8FromWin(Line));
    WriteLn('CheckXSD: ', Checked);
  finally
    Errors.Free;
  end;
end;

procedure Run(const LibraryFile: string; const Examples, Output: RawByteString);
var
  Converter: TCustomsConv;
begin
  Converter := TCustomsConv.Create(LibraryFile);
  try
    Convert(Converter, Examples, 'program/', Output);
    Check(Converter, Examples, 'xml-invalid/fail-two-of-four.xml');
    Convert(Converter, Examples, 'rules/program/', Output); { there is no kord.ini }
    Check(Converter, Examples, 'xml-invalid/pass-plain.xml');
  finally
    Converter.Free;
  end;
end;

begin
  if ParamCount <> 3 then
  begin
    WriteLn(StdErr, 'sample_host LIBRARY EXAMPLES OUTPUT');
    Halt(2);
  end;
  Run(ParamStr(1), WinFromUtf8(ParamStr(2)), WinFromUtf8(ParamStr(3)));
end.
