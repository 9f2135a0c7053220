# Sourced by the scripts in the root: installs Debian packages that are missing.

# need_packages package...
# Returns 0 when all are there. As root, or by sudo, it says which are missing and installs them; otherwise it
# prints the line to run and returns 2. Where packages are not Debian's it leaves them to you.
need_packages()
(
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This is no Debian system, so please see to it yourself that these are here: $*" >&2
        return 0
    fi
    missing=
    for package; do
        case $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) in
        'install ok installed') ;;
        *) missing="$missing $package" ;;
        esac
    done
    if [ -z "$missing" ]; then
        return 0
    fi
    install="apt-get install -y --no-install-recommends$missing"
    if [ "$(id -u)" = 0 ]; then
        echo "Installing$missing"
        as_root=
    elif command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; then
        echo "Installing$missing by sudo, which may ask for your password"
        as_root=sudo
    else
        echo "Please run this as root and start again: apt-get update && $install" >&2
        return 2
    fi

    log=$(mktemp)
    trap 'rm -f "$log"' EXIT
    root() { $as_root env DEBIAN_FRONTEND=noninteractive "$@" -o Acquire::http::Timeout=20 >"$log" 2>&1; }
    # The lists of packages are fetched only when those at hand do not do.
    if root $install || { root apt-get update && root $install; }; then
        return 0
    fi
    cat "$log" >&2
    echo "That did not work. Please run this as root and start again: apt-get update && $install" >&2
    return 2
)
