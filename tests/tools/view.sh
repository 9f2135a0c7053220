#!/bin/sh
# view.sh VIEWER TOOL: without a window, by scripted keys. What the viewer draws equals what the tool draws with
# the same settings, every key has its effect, streams and folders go on, and bad files give one clear line.
set -u
viewer=$1 tool=$2 failures=0
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 1

# Two frames of 64x48 with slopes in all components; a picture with alpha of the first.
frame() # BRIGHTNESS
{
    printf "$(awk -v base="$1" 'BEGIN {
        for (y = 0; y < 48; ++y) for (x = 0; x < 64; ++x)
            printf "\\%03o\\%03o", x % 2 ? 255 - 5 * y : 4 * x, base + (7 * x * y + x) % 120 }')"
}
{ frame 16 >one.yuv && frame 100 >two.yuv && cat one.yuv two.yuv >both.yuv; } || exit 1
raw='--format U8Y8V8Y8 --size 64x48'
# shellcheck disable=SC2086 # $raw is words
"$tool" blend one.yuv $raw --from B8G8R8A8 --alpha ramp:0:63 --canvas 64x48 --canvas-color 00000000 \
    --to B8G8R8A8 --dst-alpha replace -o in.png >/dev/null || exit 1

fail()
{
    echo "FAILED: $1"
    failures=$((failures + 1))
}
# The last two frames of a run after the given keys: checksums of targets and window.
run() # KEYS FILE...
{
    keys=$1
    shift
    # shellcheck disable=SC2086 # the keys are words
    frames=$(($(echo $keys | wc -w) + 1))
    "$viewer" --window 256x192 --headless $frames --keys "$keys" "$@" >run.out 2>&1 || fail "$keys: $(cat run.out)"
    sed -n 's/^frame [0-9]*, [^ ]*\( key\)*: \(target.*\) window \([0-9]*\); time.*/\2 \3/p' run.out | tail -n 2 >last
}
target() { tail -n 1 last | sed 's/target . \([0-9]*\),.*/\1/'; }

run ' ' in.png && cp last first && run ' ' in.png
{ [ -s last ] && cmp -s first last; } || fail 'two runs differ'

# Keys that leave the sprite off, and how the tool says the same.
while IFS='|' read -r keys file arguments; do
    # shellcheck disable=SC2086 # the arguments are words
    "$tool" scale $file $arguments -o out.raw >/dev/null || fail "$arguments"
    options=
    [ "$file" = in.png ] || options=$raw
    # shellcheck disable=SC2086
    run "a a $keys" "$file" $options
    [ "$(target)" = "$(cksum <out.raw | cut -d ' ' -f 1)" ] || fail "$keys $file is not $arguments"
done <<END
f f|in.png|--size 256x192 --filter none
f r a a|in.png|--size 256x192 --filter mean
f|in.png|--size 256x192 --filter catrom
+ +|in.png|--rect 24,18,16,12 --size 256x192 --filter mean
d d|in.png|--size 256x192 --filter mean --dst-alpha one
o|one.yuv|--raw-format U8Y8V8Y8 --raw-size 64x48 --to A8R8G8B8 --size 256x192 --filter mean
o s f|one.yuv|--raw-format U8Y8V8Y8 --raw-size 64x48 --to A8R8G8B8 --size 256x192 --filter catrom --simd all
END

# What the last key changes: the target, only the window, nothing.
while IFS='|' read -r effect before key; do
    run "$before $key" in.png
    targets=$(cut -d , -f 1 last | uniq | wc -l) all=$(uniq last | wc -l)
    case "$effect $targets $all" in
    'target 2 2' | 'window 1 2' | 'nothing 1 1') ;;
    *) fail "after '$before', the key $key should change: $effect; it gave $(cat last)" ;;
    esac
done <<END
nothing|i i|move:3,3
target|i|f
target|i|c
target|i|o
target|i|b
target|i|a
target|i|u
target|i b|m
target|i|d
target|i a|g
target|i a g|G
nothing|i|s
target|i c c c o|s
target|i f|tab
target|i f|r
target|i f tab 2|1
window|i f tab 3|2
window|i f tab 2|3
window|i f tab 2|v
window|i f 2|[
window|i f 2|]
window|i f 3|.
window|i f 3|,
target|i f e f|tab
nothing|i f e 3 i i|.
target|i|+
target|i + +|-
target|i + +|0
target|i + +|shift+left
target|i + +|shift+right
target|i + +|shift+up
target|i + +|shift+down
window||i
window||t
window||h
window|i h|escape
target|i move:128,96 press|move:140,100
nothing|i move:128,96 press release|move:140,100
window|i f 2 move:128,40 press|move:60,40
target|i + + move:10,10 press|move:60,60
target|i move:20,20|wheel:1
window|t + + +|move:50,50
END

run 'i i q i i i' in.png
[ "$(grep -c ^frame run.out)" = 4 ] || fail 'q does not quit'
run 'f f s a g d d ctrl+c' in.png
sed -n '/^vexlor/p' run.out >calls
cat >expected <<'END'
vexlor_context_create(&ctx);
vexlor_context_set_simd(ctx, true);
vexlor_surface_desc_init(&screen, 256, 192, 1024, screen_pixels, VEXLOR_FMT_B8G8R8A8);
vexlor_surface_desc_init(&source, 64, 48, 256, source_pixels, VEXLOR_FMT_B8G8R8A8);
vexlor_context_set_filter(ctx, VEXLOR_FILTER_NONE);
vexlor_context_set_alpha_dst_op(ctx, VEXLOR_ALPHA_DST_ONE);
vexlor_scale(ctx, &source, &screen, 0, 0, 64, 48, 0, 0, 256, 192);
vexlor_surface_desc_init(&sprite, 60, 60, 240, sprite_pixels, VEXLOR_FMT_B8G8R8A8);
vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_GLOBAL);
vexlor_context_set_alpha_mode(ctx, VEXLOR_ALPHA_STRAIGHT);
vexlor_context_set_alpha_value(ctx, 239);
vexlor_context_set_alpha_dst_op(ctx, VEXLOR_ALPHA_DST_ONE);
vexlor_copy(ctx, &sprite, &screen, 0, 0, 98, 66, 60, 60);
END
diff expected calls || fail 'other C calls than expected'

# A stream's frames, as digits in the order of their first appearance.
order() # KEYS FILE
{
    # shellcheck disable=SC2086
    "$viewer" --window 256x192 --headless 5 --keys "$1" "$2" $raw |
        sed -n 's/.*target A \([0-9]*\),.*/\1/p' | awk '!($1 in n) { n[$1] = ++k } { printf "%s", n[$1] }'
}
[ "$(order ' ' both.yuv)" = 12121 ] || fail 'a file of frames does not start anew'
[ "$(order 'move:1,1 space' both.yuv)" = 12222 ] || fail 'space does not stop a stream'
[ "$({ cat both.yuv && head -c 99 one.yuv; } | order ' ' -)" = 12222 ] ||
    fail 'the last frame of a pipe does not stay'
# shellcheck disable=SC2086
mkdir folder && cp in.png folder/a.png && "$tool" copy one.yuv $raw --to B8G8R8X8 -o folder/b.png >/dev/null
run 'i right' folder && [ "$(uniq last | wc -l)" = 2 ] || fail 'right does not show the next picture'
run 'i right left' folder && sed -n 2p last >back && run 'i' folder
[ "$(cat back)" = "$(sed -n 2p last)" ] || fail 'left does not go back'

# The tool starts a viewer and feeds it; the one that it finds here has no window, or another temper.
mkdir bin
played() # STATUS PATTERN SCRIPT FILE: `vexlor play FILE -o view` where vexlor-view is that script
{
    printf '#!/bin/sh\n%s\n' "$3" >bin/vexlor-view
    chmod +x bin/vexlor-view
    PATH=$dir/bin:$PATH "$tool" play "$4" --format U8Y8V8Y8 --frame-size 64x48 --rate 7 -o view >played 2>&1
    status=$?
    { [ $status = "$1" ] && grep -Eq "$2" played; } ||
        fail "play into '$3': status $status, expected $1 and $2; it said: $(cat played)"
}
headless='--headless 3 --window 256x192'
played 0 '^view: 2 frames, ' "exec '$viewer' \"\$@\" $headless" both.yuv
# shellcheck disable=SC2086 # $raw and $headless are words
"$tool" play both.yuv --format U8Y8V8Y8 --frame-size 64x48 -o - 2>/dev/null |
    "$viewer" --format B8G8R8X8 --size 64x48 - $headless >piped
[ "$(sed -n 's/; time.*//p' piped)" = "$(sed -n 's/; time.*//p' played | grep ^frame)" ] ||
    fail 'played into the viewer, frames are others'
played 0 '^--format B8G8R8X8 --size 64x48 --rate 7 -$' 'echo "$*"; cat >/dev/null' both.yuv
mkfifo endless
while cat both.yuv; do :; done >endless 2>/dev/null &
played 0 '^view: [0-9]+ frames' 'head -c 9 >/dev/null' endless
played 3 '^no display$' 'echo no display; exit 3' both.yuv
played 2 'vexlor-view: was ended: Terminated' 'kill -TERM $$' both.yuv
head -c 7000 both.yuv >cut.yuv
played 2 '^vexlor: cut.yuv: ends inside frame 1' 'cat >/dev/null' cut.yuv
PATH=/nowhere "$tool" play both.yuv --format U8Y8V8Y8 --frame-size 64x48 -o view 2>err
{ [ $? = 2 ] && [ "$(wc -l <err)" = 1 ] && grep -q '^vexlor: vexlor-view: is not installed' err; } ||
    fail "play without a viewer: $(cat err)"

# The manual page names every option of the help text, and what keys do; bash completes formats.
"$viewer" --manual | sed 's/\\-/-/g' >manual
for option in $("$viewer" --help | grep -oE -- '^ +--[a-z-]+' | grep -vE -- '--(help|version)'); do
    grep -q -- "^.fB$option" manual || fail "the manual does not name $option"
done
grep -A 1 '^.B + - 0$' manual | grep -q '^zoom' || fail 'the manual does not name the keys'
"$viewer" --completion bash >completion
got=$(bash -c '. ./completion; COMP_WORDS=(vexlor-view --format U) COMP_CWORD=2; _vexlor_view; echo ${COMPREPLY[*]}')
[ "$got" = U8Y8V8Y8 ] || fail "completion of a format gave $got"

: >empty.png
head -c 500 in.png >cut.png
mkdir none
while IFS='|' read -r pattern arguments; do
    # shellcheck disable=SC2086 # the arguments are words
    "$viewer" $arguments >out 2>err </dev/null
    status=$?
    if [ $status != 2 ] || [ "$(wc -l <err)" != 1 ] || ! grep -Eq "^vexlor-view: $pattern" err; then
        fail "vexlor-view $arguments: status $status, expected 2 and '$pattern'; it said: $(cat err)"
    fi
done <<END
usage: .*required|--headless 1
absent.png: No such file|absent.png --headless 1
empty.png: is empty|empty.png --headless 1
cut.png: .*truncated|cut.png --headless 1
none: .*holds no|none --headless 1
absent.yuv: No such file|absent.yuv $raw --headless 1
one.yuv: is neither PNG nor JPEG|one.yuv --headless 1
one.yuv: has 6144 bytes.*multiple.*6272|one.yuv --format 565 --size 64x49 --headless 1
standard input: ends after 0 bytes.* 6144|- $raw --headless 1
--size: .*even width|one.yuv --format U8Y8V8Y8 --size 63x48 --headless 1
usage: .*--size|one.yuv --format U8Y8V8Y8 --headless 1
--keys: 'F13' is neither|in.png --headless 2 --keys F13
--keys: 1 keys need|in.png --headless 1 --keys f
--completion: 'fish' is none|--completion fish
--window: is at least|in.png --window 10x10 --headless 1
cut.png: .*truncated|in.png --sprite cut.png --headless 1
END
[ $failures = 0 ] && echo 'the viewer draws and answers as it should'
