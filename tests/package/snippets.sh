#!/bin/sh
# Compiles the code in the documents, and runs its programs: snippets.sh <source folder> <libvexlor.a> <cc> <c++> [flag...]
# A fenced block of C or C++ that includes something is a file of its own; any other stands in a function that has a
# context and some surfaces. The next block of text under a program's heading is what the program prints.
set -eu
root=$1 library=$2 cc=$3 cxx=$4
shift 4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cd "$root"
for document in *.md docs/*.md; do
    awk -v document="$document" -v work="$work" '
        /^ *```/ && !inside {
            inside = 1
            language = $0
            sub(/^ *```/, "", language)
            name = document
            gsub(/[\/.]/, "_", name)
            name = work "/" name "_" NR
            if (language == "text" && program != "")
                file = program ".expected"
            else
                file = language == "c" || language == "cpp" ? name "." language : ""
            program = ""
            line = NR + 1
            text = ""
            whole = 0
            next
        }
        /^ *```/ {
            inside = 0
            if (file == "")
                next
            if (language != "text") {
                text = "#line " line " \"" document "\"\n" text
                if (!whole)
                    text = "#include \"snippets.h\"\nFRAGMENT\n{{\n" text "}}\n"
            }
            printf "%s", text >file
            close(file)
            if (language != "text" && text ~ /int main\(/)
                program = file
            next
        }
        inside { text = text $0 "\n"; whole = whole || /^#include/; next }
        /^#/ { program = "" }' "$document"
done

cat >"$work/snippets.h" <<'END'
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <vexlor.h>
#define FRAGMENT                                                                                                       \
    void snippet(vexlor_context *ctx, vexlor_surface_desc screen, vexlor_surface_desc camera, vexlor_surface_desc frame, \
                 vexlor_surface_desc photo, vexlor_surface_desc sprite, uint64_t size);                                \
    void snippet(vexlor_context *ctx, vexlor_surface_desc screen, vexlor_surface_desc camera, vexlor_surface_desc frame, \
                 vexlor_surface_desc photo, vexlor_surface_desc sprite, uint64_t size)
END

warnings='-Wall -Wextra -Wpedantic -Werror -Wno-unused -Wno-unused-parameter'
failed=0 blocks=0 programs=0
for file in "$work"/*.c "$work"/*.cpp; do
    [ -f "$file" ] || continue
    blocks=$((blocks + 1))
    case $file in
    *.c) compile="$cc -std=c99 -D_POSIX_C_SOURCE=200809L" ;;
    *) compile="$cxx -std=c++20" ;;
    esac
    if ! $compile "$@" $warnings -I include -I "$work" -c "$file" -o "$work/object.o"; then
        failed=1
        continue
    fi
    if [ -f "$file.expected" ]; then
        programs=$((programs + 1))
        if ! $cxx "$@" "$work/object.o" "$library" -pthread -o "$work/program" || ! "$work/program" >"$work/printed" ||
            ! diff "$file.expected" "$work/printed"; then
            echo "$file prints something else than its document says"
            failed=1
        fi
    fi
done
echo "$blocks blocks compiled, $programs programs run"
[ $blocks -ge 15 ] && [ $programs -ge 3 ] && exit $failed
echo 'These are fewer than the documents have'
exit 1
