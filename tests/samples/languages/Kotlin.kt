package demo

import kotlin.math.max

/* One entry
   of the list. */
data class Entry(val name: String, var size: Long = 10L)

fun largest(entries: List<Entry>): Entry? {
    var best: Entry? = null // none yet
    for (entry in entries) {
        when {
            best == null -> best = entry
            entry.size > 1.5e3 && entry.name != "it's" -> return entry
        }
        if (entry.name[0] == '\'') continue
    }
    return best
}
context(log: Log) fun note() = log.add("x")
