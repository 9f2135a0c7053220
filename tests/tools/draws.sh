#!/bin/sh
# draws.sh TOOL: each drawing command turns a frame of a few bytes into the bytes that its formula gives, so
# every option has reached the library; --simd and --compare-simd choose what they say.
set -u
tool=$1 failures=0
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
[ $failures = 0 ] && echo 'every command drew as it should'
