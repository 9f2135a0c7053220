#!/bin/sh
# errors.sh TOOL: wrong usage and wrong files give one line on standard error that names the culprit, the
# right exit status, and no output file, not even a temporary one; what stood at the output's name stays.
set -u
tool=$1
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 1

# Good inputs to be spoiled: a picture, a raw frame, and a surface with alpha.
"$tool" scene day --size 64x32 -o good.png >/dev/null &&
    "$tool" copy good.png --to U8Y8V8Y8 -o good.yuv >/dev/null &&
    "$tool" copy good.png --from X8R8G8B8 --to X8R8G8B8 -o good.rgb >/dev/null || exit 1
: >empty.png
head -c 1000 good.png >cut.png
{ head -c 16 good.png; printf '\177\377\377\377\177\377\377\377'; tail -c +25 good.png; } >huge.png
{ head -c 16 good.png; printf '\0\0\0\0\0\0\0\0'; tail -c +25 good.png; } >zero.png
head -c 500 good.png >flipped.png && printf 'XXXXXXXX' >>flipped.png && tail -c +509 good.png >>flipped.png
printf '\377\330\377\340\0\020JFIF\0\001' >cut.jpg
printf 'GIF89a, say' >other.gif
head -c 4095 good.yuv >short.yuv
mkdir folder.png
echo kept >kept.png
mkdir frames
"$tool" sum >sums.txt
sed 's/^[0-9a-f]*\(.*fill 565, written\)$/0123456789abcdef\1/' sums.txt >other.txt
{ cat good.yuv good.yuv; printf abc; } >cut.yuv
inputs=$(ls -A)

failures=0
# expect STATUS PATTERN ARGUMENTS...
expect()
{
    status=$1 pattern=$2
    shift 2
    "$tool" "$@" >out 2>err </dev/null
    got=$?
    lines=$(wc -l <err)
    left=$(ls -A -I out -I err)
    if [ $got != "$status" ] || [ "$lines" != 1 ] || ! grep -Eq "^vexlor: .*$pattern" err ||
        [ "$left" != "$inputs" ] || [ "$(cat kept.png)" != kept ]; then
        echo "FAILED: vexlor $*: status $got, expected $status and $pattern; it said:"
        cat err
        failures=$((failures + 1))
    fi
}
raw='--format U8Y8V8Y8 --size 64x32' frames='--format U8Y8V8Y8 --frame-size 64x32'
while IFS='|' read -r status pattern arguments; do
    # shellcheck disable=SC2086 # the arguments are words
    expect "$status" "$pattern" $arguments
done <<END
2|usage: .*subcommand|
2|usage: .*output.* required|copy good.png
2|--rect: '1,2,3' is not X,Y,W,H|copy good.png --rect 1,2,3 -o x.png
2|--to: no format is called 'RGB'|copy good.png --to RGB -o x.png
2|--global: '256'|blend good.png --global 256 --onto good.png -o x.png
2|--alpha: 'ramp:1'|blend good.png --alpha ramp:1 --onto good.png -o x.png
2|--canvas: 40000x1 is too large|copy good.png --canvas 40000x1 -o x.png
2|--rect: reaches past the picture|fill good.png --rect 60,0,5,1 -o x.png
2|--color: .*grey|fill good.png --to U8Y8V8Y8 --color FF0000 -o x.png
2|absent.png: No such file|copy absent.png -o kept.png
2|folder.png: Is a directory|copy folder.png -o kept.png
2|empty.png: is empty|copy empty.png -o kept.png
2|cut.png: .*truncated|copy cut.png -o kept.png
2|flipped.png: .*damaged|copy flipped.png -o kept.png
2|huge.png: |copy huge.png -o kept.png
2|zero.png: |copy zero.png -o kept.png
2|cut.jpg: .*truncated|copy cut.jpg -o kept.png
2|other.gif: is neither PNG nor JPEG|copy other.gif -o kept.png
2|cut.png: .*truncated|blend good.png --alpha 9 --onto cut.png -o kept.png
2|short.yuv: has 4095 bytes.*4096|copy short.yuv $raw -o kept.png
2|good.rgb: has more than 4096 bytes|copy good.rgb $raw -o kept.png
2|good.yuv: the stride of 100 bytes|copy good.yuv $raw --stride 100 -o kept.png
2|standard input: has 0 bytes|copy - $raw -o kept.png
2|folder.png: is not a regular file|copy good.png -o folder.png
2|x.jpg: .*must end in|copy good.png -o x.jpg
2|usage: .*output.* required|scale good.png --size 2x2
2|scale: needs either --size or --to-rect|scale good.png -o kept.png
2|scale: needs either --size or --to-rect|scale good.png --size 2x2 --to-rect 0,0,2,2 -o kept.png
2|--size: 0x5 has no pixels|scale good.png --size 0x5 -o x.png
2|--filter: 'box' is none of|scale good.png --size 2x2 --filter box -o x.png
2|--premultiplied: .*--blend|scale good.png --size 2x2 --premultiplied -o kept.png
2|usage: .*--format|scale good.yuv --format U8Y8V8Y8 --size 2x2 -o x.png
2|good.rgb: has more than 4096 bytes|scale good.rgb --raw-format 565 --raw-size 64x32 --size 2x2 -o kept.png
2|--simd: 'mmx' is none of|fill good.png --simd mmx -o x.png
2|x.jpg: .*must end in|copy good.png --compare-simd -o x.jpg
2|usage: |info all
2|x.yuv: .*even width|copy good.png --canvas 3x3 --to U8Y8V8Y8 -o x.yuv
2|x.jpg: .*png:NAME|convert good.png -o x.jpg
2|--to: is needed|convert good.png -o kept.yuv
2|cut.png: .*truncated|convert cut.png -o kept.png
2|short.yuv: has 4095 bytes|convert short.yuv $raw -o kept.png
2|huge.png: |diff good.png huge.png --picture kept.png
2|--picture: .*png|diff good.png good.png --picture kept.raw
2|second: .*only once|diff - -
2|good.rgb: has more than 4096|diff good.yuv good.rgb $raw
2|absent.txt: No such file|sum --check absent.txt
2|good.yuv: holds no table|sum --check good.yuv
2|empty.png: holds no table|sum --check empty.png
2|--size: 0x5 has no pixels|bench --size 0x5
2|kept.png: |sheet -o kept.png
2|cut.png: .*truncated|sheet cut.png -o frames
2|usage: .*--frame-size|play good.yuv --format U8Y8V8Y8 -o kept.raw
2|kept.png: .*number in the name|play good.yuv $frames -o kept.png
2|%d%d.png: .*number in the name|play good.yuv $frames -o %d%d.png
2|cut.yuv: ends inside frame 2, behind 3 of 4096 bytes|play cut.yuv $frames -o kept.raw
2|empty.png: is empty|play empty.png $frames -o kept.raw
2|good.yuv: has only 1 frames|play good.yuv $frames --skip 2 -o kept.raw
2|usage: --rate goes with -o view|play good.yuv $frames --rate 5 -o kept.raw
2|absent/0.png: No such file|play good.yuv $frames -o absent/%d.png
2|--frame-size: 99999x99999 is too large|play good.yuv --format 565 --frame-size 99999x99999 -o kept.raw
2|/dev/full: No space|copy good.png -o raw:/dev/full
1|result 3, VEXLOR_NOT_CONVERTIBLE: .*The library converts|convert good.yuv $raw --to 565 -o kept.png
1|result 3, VEXLOR_NOT_CONVERTIBLE: |convert good.yuv $raw --to Y8V8Y8U8 -o kept.yuv
1|play U8Y8V8Y8 to 565: .*result 3, VEXLOR_NOT_CONVERTIBLE: |play good.yuv $frames --to 565 -o kept.raw
1|result 3, VEXLOR_NOT_CONVERTIBLE: |copy good.png --from 565 --to B8G8R8X8 -o kept.png
1|result 5, VEXLOR_NO_SOURCE_ALPHA: |blend good.png --from B8G8R8X8 --onto good.png -o kept.png
1|result 6, VEXLOR_BAD_RECTANGLE: |copy good.png --rect -1,0,2,2 -o kept.png
1|result 7, VEXLOR_OVERLAP: |blend good.png --alpha 9 --within --rect 0,0,9,9 --at 8,8 -o kept.png
1|result 3, VEXLOR_NOT_CONVERTIBLE: |scale good.png --from U8Y8V8Y8 --to 565 --size 2x2 -o kept.png
1|result 5, VEXLOR_NO_SOURCE_ALPHA: |scale good.png --from B8G8R8X8 --blend --size 2x2 --compare-simd
1|result 6, VEXLOR_BAD_RECTANGLE: |scale good.png --to-rect 60,0,5,1 --onto good.png -o kept.png
1|result 7, VEXLOR_OVERLAP: |scale good.png --within --rect 0,0,9,9 --to-rect 8,8,1,1 -o kept.png
END
# Interrupted while it writes, a stream leaves nothing behind either.
mkfifo pipe
# shellcheck disable=SC2086
"$tool" play pipe $frames --jobs 1 -o kept.png.raw >out 2>err &
player=$!
{ cat good.yuv good.yuv good.yuv good.yuv; exec sleep 5; } >pipe &
feeder=$!
for _ in 1 2 3 4 5 6 7 8 9; do
    ls kept.png.raw.* >before 2>/dev/null && break
    sleep 0.2
done
kill -TERM $player
wait $player 2>/dev/null
if ! [ -s before ] || ls kept.png.raw* 2>/dev/null; then
    echo 'FAILED: vexlor play, interrupted: no file beside the output, or one that stays'
    failures=$((failures + 1))
fi
kill $feeder
[ $failures = 0 ] && echo 'every error was reported as it should be'
