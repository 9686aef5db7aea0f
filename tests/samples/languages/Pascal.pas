program Demo;
{ Prints the first
  squares. }
uses SysUtils;

type
  TSquares = array of Integer;

var
  i: Integer;
  list: TSquares;

begin
  SetLength(list, $10);  // from 0
  for i := 0 to 15 do
    list[i] := i * i;
  if (list[3] <> 9) and not False then
    raise Exception.Create('it''s "wrong"');
  WRITELN(list[2]:5, 1.5e3);
end.
package Tools;
requires rtl;
contains Lists in 'lists.pas';
type
  TNames = class helper for TObject
    function Sum(constref a: nativeint; const b: ansistring): uint64; winapi; unsafe;
  end;
  TList = generic TBase<currency, unicodestring>;
end.
