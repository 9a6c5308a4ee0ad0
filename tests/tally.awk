# awk -f tally.awk <build>/Testing/Temporary/LastTest.log: counts the cases that ctest's last run ran, names those that
# failed, and closes with one line. A test that is no program of cases counts as one.
/^[0-9]+\/[0-9]+ Testing: / { name = substr($0, index($0, ": ") + 2); inside = 0; open = ""; cases = failures = 0 }
/^Command: ""$/ { fail("not run") }
/^Output:$/ { inside = 1 }
inside && /^\[ RUN      \] / { open = $4; ++cases }
inside && /^\[       OK \] / && $4 == open { open = ""; ++passed }
inside && /^\[  SKIPPED \] / && $4 == open { fail(open " (skipped)") }
inside && /^\[  FAILED  \] / && open != "" && index($4, open) == 1 { fail(open) }
/^<end of output>$/ { inside = 0; if (open != "") fail(open " (did not end)") }
/^Test (Passed|Failed|Skipped)?\.$/ || /^Test (Timeout|Failed|timed out)/ { conclude($0 ~ /Passed/) }

function fail(what) { failed_names[++failed] = name ": " what; open = ""; ++failures }
function conclude(isGood) {
    if (isGood && cases == 0) ++passed
    if (!isGood && failures == 0) fail("as a whole")
}
END {
    for (i = 1; i <= failed; ++i) print "FAILED " failed_names[i]
    printf "%d passed, %d failed\n", passed, failed
    exit failed > 0
}
