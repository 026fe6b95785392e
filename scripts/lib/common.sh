# What the scripts share: steps that are quiet when they go well, packages, and the build.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
logs=out/logs
mkdir -p "$logs"

# step NAME COMMAND...: says what is done; shows the command's output only when it fails.
step() {
    local name=$1 log
    shift
    log="$logs/${name//[^A-Za-z0-9]/-}.log"
    printf '%s ... ' "$name"
    local start=$SECONDS
    if "$@" >"$log" 2>&1 </dev/null; then
        printf 'done (%d s)\n' $((SECONDS - start))
    else
        local status=$?
        printf 'FAILED\n\n'
        tail -n 60 "$log"
        printf '\nThe whole output is in %s\n' "$log" >&2
        return "$status"
    fi
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs what is missing; with everything there it asks nobody.
install_packages() {
    local wanted missing=()
    mapfile -t wanted < <(grep -v '^#' scripts/lib/packages.txt)
    local package
    for package in "${wanted[@]}"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# The modules of the tests that run in a browser, as their lock file has them.
install_node_modules() {
    command -v npm >/dev/null || {
        as_root apt-get update -qq
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends nodejs npm
    }
    [ tests/webhelp/node_modules/.package-lock.json -nt tests/webhelp/package-lock.json ] ||
        npm ci --prefix tests/webhelp --no-audit --no-fund --silent
}

# build PRESET [CMAKE OPTION...]
build() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}
