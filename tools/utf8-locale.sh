# Sourced by the scripts that build and test: one locale for every run, whatever the
# caller's shell says. Wine maps file names through the Unix locale's character set,
# so without UTF-8 a name outside ASCII cannot exist in a Windows test; and tests that
# check English texts must not meet the caller's language. C.UTF-8 is built into
# Debian's C library, so every Debian 12 machine has it. Tests that need another
# language set it for themselves.
for variable in LC_ALL LANGUAGE LC_CTYPE LC_NUMERIC LC_TIME LC_COLLATE LC_MONETARY LC_MESSAGES \
    LC_PAPER LC_NAME LC_ADDRESS LC_TELEPHONE LC_MEASUREMENT LC_IDENTIFICATION; do
    unset "$variable"
done
unset variable
export LANG=C.UTF-8
