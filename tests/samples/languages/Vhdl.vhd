-- A counter of four bits.
library ieee;
use ieee.std_logic_1164.all;

/* Counts up
   with every edge. */
entity counter is
    port (clk, reset : in std_logic; q : out std_logic_vector(3 downto 0));
end entity;

ARCHITECTURE rtl OF counter IS
    signal n : integer range 0 to 15 := 0;
begin
    process (clk)
    begin
        if rising_edge(clk) then
            if reset = '1' then n <= 16#0#; else n <= n + 1; end if; -- wraps
        end if;
    end process;
    q <= x"F" when n = 15 else "0000";
end architecture;
