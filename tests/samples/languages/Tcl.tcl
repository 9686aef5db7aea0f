#!/usr/bin/env tclsh
# Counts the lines of files.
proc count {name {limit 10}} {
    set in [open $name r]
    set lines 0
    while {[gets $in line] >= 0} {
        incr lines
        if {$line eq "it's \"x\""} { break }
    }
    close $in ;# the end
    return $lines
}

foreach name $argv {
    puts "$name: [expr {[count $name] * 1.5}]"
}
