package demo;

import java.util.List;

/** Counts the
    words of a line. */
public final class Words implements Counter {
    private static final int LIMIT = 0xFF;

    @Override
    public int count(String line) {
        if (line == null) return -1; // nothing to count
        char quote = '\'';
        for (var word : line.split("\\s+")) {
            if (word.length() > 10L) throw new IllegalStateException("too \"long\"");
        }
        return LIMIT;
    }
}
open module demo.words {
    exports demo to demo.test;
    provides Counter with demo.Words;
}
