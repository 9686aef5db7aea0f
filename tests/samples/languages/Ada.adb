-- A bounded counter.
with Ada.Text_IO; use Ada.Text_IO;

procedure Count is
   type Small is range 0 .. 16#FF#;
   Total : Small := 0;
   Quote : constant Character := 'x';
begin
   for I in 1 .. 10 loop
      Total := Total + 1;  -- one each
      exit when Total >= 1_000 or else not True;
   end loop;
   Put_Line ("total" & Quote);
exception
   when others => NULL;
end Count;
-- An attribute begins a string.
for I in List'Range loop
