; Keys of my own.
#Requires AutoHotkey v2
#SingleInstance

/* Types the
   date. */
^d:: {
    text := A_Now
    if (StrLen(text) > 10 and not WinActive("it's x")) {
        Send text ; as typed
        Sleep 0x64
    } else
        return false
}
Loop 3
    MsgBox 'round ' A_Index
