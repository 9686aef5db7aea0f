# Words and their length.
#[ Nothing here
   is compiled. ]#
import std/strutils

type Entry = object
  name: string
  size: int

proc longest(text: string, limit = 0x10): Entry =
  for word in text.split(' '):
    if word.len > result.size and not (word == "it's \"x\""):
      result = Entry(name: word, size: word.len) # so far
    elif limit == 1_000: discard

when isMainModule:
  echo longest("a bcd"), true, nil
##[ Its first line alone
is a comment. ]##
