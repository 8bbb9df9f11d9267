# Prints the rows of bounds.txt that belong to the parts that were measured, each with its verdict.
# Fails when a bound is missed, when a row has no figures, and where bounds.txt says nothing sensible:
# a typing error must not switch a bound off.
#
# awk -v parts="PART PART..." -f report.awk FIGURES.csv bounds.txt
#
# FIGURES.csv is what the benchmarks print: "NAME_median",iterations,real time,CPU time,unit. A name
# that says /real_time stands for its real time, any other for its CPU time.

BEGIN {
    FS = ","
    count = split(parts, listed, " ")
    for (i = 1; i <= count; ++i)
        chosen[listed[i]] = 1
}

FILENAME == ARGV[1] {
    if ($1 !~ /_median"?$/)
        next
    name = $1
    gsub(/^"|_median"?$/, "", name)
    sub(/\/(real_time|iterations:1)$/, "", name)
    figure[name] = $1 ~ /\/real_time/ ? $3 : $4
    unit[name] = $5
    next
}

FNR == 1 { FS = "[ ]*[|][ ]*"; $0 = $0 }

/^#/ || /^$/ { next }

/^\[/ {
    split(substr($0, 2, length($0) - 2), section, ": ")
    has_rows[section[1]] = 1
    next
}

section[1] in chosen { row($1, $2, $3, $4) }

END {
    for (part in chosen) {
        if (!(part in has_rows))
            complain("no rows of " part)
    }
    exit failed
}

function complain(text) {
    print text
    failed = 1
}

# A number, a name, or a number of times a name; empty without figures.
function value(expression,   factors, product, i, count) {
    product = 1
    count = split(expression, factors, / \* /)
    for (i = 1; i <= count; ++i) {
        if (factors[i] ~ /^[0-9.]+$/)
            product *= factors[i]
        else if (factors[i] in figure)
            product *= figure[factors[i]]
        else
            return ""
    }
    return product
}

function holds(ratio, relation, bound) {
    return relation == "<=" ? ratio <= bound : relation == "<" ? ratio < bound : ratio >= bound
}

function heading(column) {
    if (column == printed)
        return
    printf "%-44s %10s %10s %-3s %6s\n", "", "KelStd", column, "", "ratio"
    printed = column
}

function row(what, measured, beside, condition,   ours, theirs, ratio, bound, verdict) {
    heading(section[2])
    ours = value(measured)
    theirs = value(beside)
    if (ours == "" || theirs == "" || ours <= 0 || theirs <= 0) {
        complain(sprintf("%-44s NOT MEASURED", what))
        return
    }
    if (condition !~ /^(-|(<|<=|>=) [0-9]+[.][0-9]+)$/) {
        complain(sprintf("%-44s has no bound: %s", what, condition))
        return
    }
    split(condition, bound, " ")
    # A speed is the other way round: how many times as fast as what stands beside it.
    ratio = bound[1] == ">=" ? theirs / ours : ours / theirs
    printf "%-44s %10.3f %10.3f %-3s %6.3f", what, ours, theirs, unit[measured], ratio
    if (condition == "-") {
        printf "\n"
        return
    }
    verdict = "ok"
    if (!holds(ratio, bound[1], bound[2])) {
        verdict = unit[measured] == "MiB" ? "TOO MUCH" : "TOO SLOW"
        failed = 1
    }
    printf "  %-2s %.2f  %s\n", bound[1], bound[2], verdict
}
