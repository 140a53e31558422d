# Sourced by the other scripts: where things are, how they talk, how the tree is built.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=default
build="$root/build/$preset"

# use_preset NAME: configure and compile work on that one.
use_preset()
{
    preset=$1
    build="$root/build/$preset"
}

# say TEXT: one line about what happens now. Standard output belongs to the program that is run, so this goes
# to standard error.
say() { printf '==> %s\n' "$*" >&2; }

# die TEXT: the last line of a script that failed.
die()
{
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# quietly LOG COMMAND...: runs a command with its output in LOG, which is shown only when the command fails.
quietly()
{
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        die "'$*' failed; its output is above and in $log"
    fi
}

# installed_for GROUP: true when the packages of that group are there ("build", "test" or "check").
installed_for() { "$root/script/bootstrap" "--$1" --dry-run >/dev/null 2>&1; }

# configure [DEFINITION...]: the preset, with the reason for each step in the log only.
configure() { quietly "$root/build/configure.log" cmake -S "$root" --preset "$preset" "$@"; }

# compile [TARGET...]: builds the given targets, or what the preset is for.
compile()
{
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    quietly "$root/build/build.log" env -C "$root" cmake --build --preset "$preset" "${targets[@]}"
}

# one_at_a_time: waits until no other of these scripts builds the tree. Released when the script ends.
one_at_a_time()
{
    mkdir -p "$root/build"
    exec 9>"$root/build/.lock"
    flock 9
}
