# Sourced by the scripts that start an X server of their own with -displayfd 3 >FILE.
# await_display FILE: waits up to ten seconds for the server to write its display
# number to FILE and prints it as ":N"; prints nothing if it never does.
await_display() {
    i=0
    while [ $i -lt 200 ] && ! grep -q '[0-9]' "$1"; do
        sleep 0.05
        i=$((i + 1))
    done
    number=$(tr -dc '0-9' <"$1")
    if [ -n "$number" ]; then
        echo ":$number"
    fi
}
