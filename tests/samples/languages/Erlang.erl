% A counter in a process.
-module(counter).
-export([start/0, loop/1]).

start() -> spawn(fun() -> loop(0) end).

loop(N) when N < 16#FF ->
    receive
        {add, Step} -> loop(N + Step);   % goes on
        {get, From} ->
            From ! {value, N, "it's \"x\""},
            loop(N);
        'stop now' -> ok
    after 1000 -> timeout
    end.
