module demo;

import std.stdio;

/* A stack of
   numbers. */
struct Stack(T)
{
    private T[] items;

    @safe void push(T item) pure nothrow
    {
        items ~= item; // grows
    }
}

void main()
{
    auto stack = Stack!int();
    foreach (i; 0 .. 0x10) stack.push(i);
    assert(stack.items !is null, "no \"items\"");
    writeln('\'', 1.5e3, true);
}
