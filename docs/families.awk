# Doxygen's filter for a convention of the headers: a comment describes all the declarations right below it, up to an
# empty line, another comment or the end of the block. Every line stays where it is.
function depth(text) {
    sub(/\/\/.*/, "", text)
    return gsub(/[{(]/, "", text) - gsub(/[})]/, "", text)
}
function finish(   i) {
    if (count == 0) return
    printf "%s", closing (declarations > 1 ? "/**@{*/" : "")
    for (i = 1; i <= count; i++) print line[i]
    closing = declarations > 1 ? "/**@}*/" : ""
    count = declarations = inside = 0
}
{
    text = $0
    sub(/^[ \t]+/, "", text)
    comment = text ~ /^\/\/\/([^<]|$)/
    if (inside == 0 && (text == "" || text ~ /^(};?|public:|protected:|private:)/ || text ~ /^\/\// && declarations > 0))
        finish()
    if (count == 0 && !comment) {
        print closing $0
        closing = ""
        next
    }
    line[++count] = $0
    if (comment) next
    if (inside == 0 && text ~ /^(class|struct|enum|namespace) .*{$/) { finish(); next }
    inside += depth(text)
    if (inside == 0 && text ~ /[;}]( *\/\/.*)?$/) declarations++
}
END { finish() }
