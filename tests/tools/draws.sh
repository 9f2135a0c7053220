#!/bin/sh
# draws.sh TOOL: each drawing command turns a frame of a few bytes into the bytes that its formula gives, so
# every option has reached the library; --simd and --compare-simd choose what they say.
set -u
tool=$1 failures=0
golden=$(cd "$(dirname "$0")/.." && pwd)/golden.txt
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 1

bytes() { for byte; do printf "\\$(printf %03o "0x$byte")"; done; }
fail()
{
    echo "FAILED: vexlor $1: $2"
    failures=$((failures + 1))
}
# expect SOURCE BACKGROUND EXPECTED ARGUMENTS: bytes in hex; the files are in.raw, onto.raw and out.raw.
expect()
{
    # shellcheck disable=SC2086 # bytes and arguments are words
    { bytes $1 >in.raw && bytes $2 >onto.raw && "$tool" $4 -o out.raw >/dev/null; } || fail "$4" 'did not draw'
    got=$(od -An -v -tx1 out.raw | tr '\n' ' ' | tr -s ' ')
    [ "$got" = " $3 " ] || fail "$4" "drew$got, expected $3"
}
argb='--format A8R8G8B8 --onto onto.raw --onto-format A8R8G8B8'
bgra='--format B8G8R8A8 --size 2x1 --onto onto.raw --onto-format B8G8R8A8 --onto-size 2x1'
yuv6='in.raw --format U8Y8V8Y8 --size 6x1 --to X8R8G8B8'
while IFS='|' read -r source background expected arguments; do
    expect "$source" "$background" "$expected" "$arguments"
done <<END
00 00 00 00 ff ff ff ff||22 19 11 08 a0 98 8f 87|fill in.raw --format B8G8R8X8 --size 2x1 --pixel 0x11223344 --global 128
80 eb 80 10||ff ff ff ff ff 00 00 00|copy in.raw --format U8Y8V8Y8 --size 2x1 --to X8R8G8B8
aa aa bb bb|11 11 22 22 33 33|11 11 22 22 bb bb|copy in.raw --format 565 --size 2x1 --rect 1,0,1,1 --onto onto.raw --onto-format 565 --onto-size 3x1 --at 2,0
80 ff 00 40|00 00 ff 80|40 80 7e 5f|blend in.raw $argb --size 1x1 --onto-size 1x1
80 ff 00 40|00 00 ff 80|ff 80 7e 5f|blend in.raw $argb --size 1x1 --onto-size 1x1 --dst-alpha one
80 40 20 10|80 80 80 80|c0 80 5f 4f|blend in.raw $argb --size 1x1 --onto-size 1x1 --premultiplied
01 02 03 7f 04 05 06 80|99 99 99 99 99 99 99 99|99 99 99 99 04 05 06 80|test in.raw $bgra --test greater --ref 127
80 ff 00 40|01 02 03 04 00 00 ff 80 00 00 ff 80|01 02 03 04 40 80 7e 5f 40 80 7e 5f|scale in.raw --raw-format A8R8G8B8 --raw-size 1x1 --blend --onto onto.raw --onto-format A8R8G8B8 --onto-size 3x1 --to-rect 1,0,2,1
cd ab|11 11 22 22 33 33 44 44 55 55 66 66 77 77 88 88|cd ab 22 22 33 33 44 44 cd ab 22 22 77 77 88 88|scale in.raw --raw-format 565 --raw-size 1x1 --onto onto.raw --onto-format 565 --onto-size 4x2 --to-rect 0,0,1,2
00 00 00 00 ff ff ff ff 09 09 09 09||00 00 00 00 7f 7f 7f 7f fd fd fd fd fd fd fd fd|scale in.raw --raw-format X8R8G8B8 --raw-size 3x1 --rect 0,0,2,1 --size 4x1 --filter mean
00 00 00 00 80 80 80 80 ff ff ff ff 40 40 40 40||80 80 80 80 d3 d3 d3 d3 80 80 80 80 d3 d3 d3 d3 ff ff ff ff a7 a7 a7 a7 40 40 40 40 34 34 34 34|scale in.raw --raw-format X8R8G8B8 --raw-size 1x4 --size 1x8 --filter catrom
80 10 80 10 80 24 80 24 80 38 80 38 80 4c 80 4c 80 60 80 60 80 74 80 74 80 88 80 88 80 9c 80 9c||fb 15 15 15 fb 15 15 15 fb 44 44 44 fb 44 44 44 fb 72 72 72 fb 72 72 72 fb 9f 9f 9f fb 9f 9f 9f|scale in.raw --raw-format U8Y8V8Y8 --raw-size 2x8 --to X8R8G8B8 --size 2x4 --filter mean --repeat 2
80 eb 80 10||ff ff ff ff ff 00 00 00|convert in.raw --format U8Y8V8Y8 --size 2x1 --to X8R8G8B8
00 ff ff ff 00 00 00 00||80 eb 80 10|convert in.raw --format X8R8G8B8 --size 2x1 --to U8Y8V8Y8
12 01 02 03||ff 01 02 03|convert in.raw --format X8R8G8B8 --size 1x1 --to A8R8G8B8
01 00 02 00 03 00 04 00||01 00 01 00 02 00 02 00 03 00 03 00 04 00 04 00|play in.raw --format 565 --frame-size 2x1 --size 4x1 --filter none
80 10 80 eb 80 eb 80 10||ff ff ff ff ff 00 00 00|play in.raw --format U8Y8V8Y8 --frame-size 2x1 --to X8R8G8B8 --skip 1 --frames 1
80 10 80 10 80 10 80 10 80 10 80 10||ff 00 00 00 ff 00 00 00 ff 00 00 00 ff 00 00 00 ff 00 00 00 ff 00 00 00|copy $yuv6 --simd sse
80 10 80 10 80 10 80 10 80 10 80 10||00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 ff 00 00 00 ff 00 00 00|copy $yuv6 --simd sse2
END

# 65 pixels of 565: the portable copy carries one more along, that of SSE does not.
{ head -c 130 /dev/zero; bytes ff 0f; } >in.raw
head -c 132 /dev/zero >onto.raw
says() # PATTERN ARGUMENTS
{
    # shellcheck disable=SC2086 # the arguments are words
    "$tool" $2 | grep -Eq "$1" || fail "$2" "did not say $1"
}
wide='copy in.raw --format 565 --size 66x1 --rect 0,0,65,1 --onto onto.raw --onto-format 565 --onto-size 66x1'
says ' 2 pixel bytes differ by at most 255$' "$wide --compare-simd --simd sse"
says ' equal bytes$' "$wide --compare-simd --simd sse2"
says '^memset +vexlor_memset +vexlor_memset_stream_sse$' info
says '^copy_test_8888 +vexlor_1d_copy_test_8888 +the same$' info
says '^conversions.9. +vexlor_1d_U8Y8V8Y8_2_X8R8G8B8 +vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2$' info

# answers STATUS PATTERN ARGUMENTS: the exit status, and what some line of the output looks like.
answers()
{
    # shellcheck disable=SC2086
    "$tool" $3 >said
    got=$?
    { [ $got = "$1" ] && grep -Eq "$2" said; } || fail "$3" "exit status $got, without a line $2"
}
bytes 01 02 03 40 05 06 07 08 >a.raw
bytes 01 02 03 00 09 06 01 08 >b.raw
pixels='--format X8R8G8B8 --size 2x1'
answers 0 '^equal: 2 pixels$' "diff a.raw a.raw $pixels"
answers 1 '^first at 0,0: 01 02 03 40 and 01 02 03 00$' "diff a.raw b.raw $pixels"
answers 1 '^largest difference 64 .R 0, G 6, B 64.$' "diff a.raw b.raw $pixels --picture d.png"
answers 1 '^PSNR 20.98 dB$' "diff a.raw b.raw --format A8R8G8B8 --size 2x1"
"$tool" copy d.png --to X8R8G8B8 -o d.rgb >/dev/null
answers 0 equal "diff d.rgb d.png $pixels"
[ "$(od -An -v -tx1 d.rgb)" = ' ff 00 00 c0 ff 00 12 00' ] || fail diff 'drew another picture of the differences'
"$tool" fill --canvas 1x2 -o e.png >/dev/null
answers 1 '^the sizes differ: 2x1 and 1x2$' 'diff d.png e.png'

# Streams: bytes do not depend on the number of threads; pictures are numbered.
"$tool" scene day --size 64x240 -o day.png >/dev/null
"$tool" convert day.png --to U8Y8V8Y8 -o day.yuv >/dev/null
stream='day.yuv --format U8Y8V8Y8 --frame-size 64x20'
for jobs in 1 2 3 7; do
    "$tool" play $stream --size 40x30 --filter catrom --jobs $jobs -o - >"$jobs.raw" 2>report
    cmp 1.raw "$jobs.raw" || fail "play --jobs $jobs" 'drew other bytes than one thread'
done
grep -q ': 12 frames, ' report || fail play "said $(cat report)"
"$tool" play $stream -o frame-%02d.png >/dev/null
"$tool" copy day.yuv --format U8Y8V8Y8 --size 64x240 --rect 0,220,64,20 --to B8G8R8X8 -o last.png >/dev/null
answers 0 '^equal' 'diff frame-11.png last.png'

# Checksums, and a table in which one differs.
answers 0 '^all [0-9]* checksums are as expected$' "sum --check $golden"
sed 's/^.\(.*fill 565, written\)$/x\1/' "$golden" >other.txt
answers 1 '^fill 565, written is .* expected x' 'sum --check other.txt'
answers 0 '^checksums .* 0 differ$' report
answers 0 '^scale B8G8R8X8 up 2x, linear .*[0-9]' 'bench --size 33x21 --repeat 1 --time 1'
answers 0 '^scale U8Y8V8Y8 to B8G8R8X8 down 2x, mean( +[0-9]+){3} +[0-9]+[.][0-9]+$' \
    'bench --size 640x480 --repeat 1 --time 1 --threads 3'
"$tool" sheet -o gallery >said
[ "$(ls gallery | wc -l)" = "$(wc -l <said)" ] || fail sheet 'drew other pictures than it said'

# The manual names all that the help texts do, and bash completes it.
"$tool" manual | sed 's/\\-/-/g' >manual
for command in $(sed -n "s/^    \([a-z]*\))$/\1/p" <<END
$("$tool" completion bash)
END
); do
    for option in $("$tool" "$command" --help | grep -oE -- '^ +(-[a-z],)?--[a-z-]+' | grep -v -- --help); do
        grep -q -- "^.fB$option" manual || fail manual "does not name $option of $command"
    done
    "$tool" --help | grep -q "^  $command " || fail completion "names $command, which is not there"
done
completed() # EXPECTED WORDS: what bash makes of the last word
{
    got=$(bash -c '. /dev/stdin; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); _vexlor; echo ${COMPREPLY[*]}' \
        $2 <<END
$("$tool" completion bash)
END
    )
    [ "$got" = "$1" ] || fail "completion of $2" "gave $got"
}
completed 'scale scene' 'bash vexlor sc'
completed '--filter' 'bash vexlor scale --fil'
completed 'catrom' 'bash vexlor scale --filter ca'
[ $failures = 0 ] && echo 'every command drew as it should'
