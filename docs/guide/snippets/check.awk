# Compares the guide's pages with its sources: each ```cpp block stands below a comment <!-- FILE: REGION -->, and equals
# what lies between the two lines "//! [REGION]" of that source. Call it with the sources first, then the pages.
function fault(text) { print FILENAME ":" FNR ": " text; faults++ }
function dedented(text,    lines, n, i, least, out) {
    n = split(text, lines, "\n"); least = 999
    for (i = 1; i < n; i++) { match(lines[i], /^ */); if (length(lines[i]) > 0 && RLENGTH < least) least = RLENGTH }
    for (i = 1; i < n; i++) out = out substr(lines[i], least + 1) "\n"
    return out
}
FILENAME ~ /\.cpp$/ {
    file = FILENAME; sub(/.*\//, "", file)
    if (match($0, /\/\/! \[.*\]$/)) { name = file ": " substr($0, RSTART + 5, RLENGTH - 6); open[name] = !open[name]; next }
    for (name in open) if (open[name] && index(name, file ": ") == 1) regions[name] = regions[name] $0 "\n"
    next
}
/^<!-- .*\.cpp: .* -->$/ { wanted = $0; sub(/^<!-- /, "", wanted); sub(/ -->$/, "", wanted); next }
/^```cpp$/ { inside = 1; block = ""; if (wanted == "") fault("a block without its region"); next }
inside && /^```$/ {
    if (!(wanted in regions)) fault("there is no region " wanted)
    else if (dedented(regions[wanted]) != block) fault("differs from " wanted)
    inside = 0; wanted = ""; blocks++; next
}
inside { block = block $0 "\n" }
END { if (blocks == 0) { print "no blocks found"; faults++ } exit faults > 0 }
