#!/usr/bin/awk -f
# Sums the second field of each group.
BEGIN { FS = ","; limit = 10 }

function show(name, value) {
    printf "%s: %d\n", name, value * 1.5
}

NR > 1 && $1 != "it's \"x\"" {
    if ($1 in sum) sum[$1] += $2 # goes on
    else sum[$1] = $2
    next
}

END { for (name in sum) show(name, sum[name]) }
@include "lib.awk"
BEGINFILE { if (ERRNO) nextfile; n = and($1, lshift(1, 2)); x = gensub(a, b, "g") } # gawk
END { n = asort(list); print PROCINFO["pid"], strtonum("0x1F"), typeof(n) }
