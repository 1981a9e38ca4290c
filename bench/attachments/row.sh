#!/bin/bash
# Adding a 50-megapixel JPEG as an attachment (the row and its 512-pixel preview) in the
# real MainWindow, against vipsthumbnail making a 512-pixel PNG of the same file in the
# same run; peak RSS of both. Then the same picture as a PNG, for which there is no
# decoding at a reduced size: every pixel is decoded, by us and by vips.
set -euo pipefail
build=$1
runs=${FB_BENCH_RUNS:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp QT_QPA_PLATFORM=offscreen
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$TMPDIR"
bench=$build/bench/attachments/bench_attachment_add

"$bench" make "$work/photo.jpg" 8660 5774 2>/dev/null
megapixels=$(awk 'BEGIN {printf "%.1f", 8660 * 5774 / 1e6}')
mib=$(du -m "$work/photo.jpg" | cut -f1)

median() { sort -n | awk '{a[NR]=$1} END {print (NR%2) ? a[(NR+1)/2] : (a[NR/2]+a[NR/2+1])/2}'; }
# vips_ms <picture>: the median wall time of vipsthumbnail making its 512-pixel PNG.
vips_ms() {
    for _ in $(seq "$runs"); do
        start=$(date +%s%N)
        vipsthumbnail "$1" -s 512 -o "$work/thumb.png"
        echo $(( ($(date +%s%N) - start) / 1000 ))
    done | awk '{printf "%.1f\n", $1 / 1000}' | median
}

# The window's system-information worker writes its section headers to standard
# output; the figure is the last line.
add_ms=$("$bench" add "$work/photo.jpg" "$runs" 2>/dev/null | tail -n 1)
full_ms=$("$bench" full "$work/photo.jpg" "$runs" 2>/dev/null | tail -n 1)

vips_ms=$(vips_ms "$work/photo.jpg")

agent_rss=$(/usr/bin/time -f %M "$bench" add "$work/photo.jpg" 1 2>&1 >/dev/null | tail -1)
full_rss=$(/usr/bin/time -f %M "$bench" full "$work/photo.jpg" 1 2>&1 >/dev/null | tail -1)
vips_rss=$(/usr/bin/time -f %M vipsthumbnail "$work/photo.jpg" -s 512 -o "$work/thumb.png" 2>&1 | tail -1)

ratio=$(awk -v a="$add_ms" -v v="$vips_ms" 'BEGIN {printf "%.2f", a / v}')

vips copy "$work/photo.jpg" "$work/photo.png"
png_mib=$(du -m "$work/photo.png" | cut -f1)
png_ms=$("$bench" add "$work/photo.png" "$runs" 2>/dev/null | tail -n 1)
vips_png_ms=$(vips_ms "$work/photo.png")
png_rss=$(/usr/bin/time -f %M "$bench" add "$work/photo.png" 1 2>&1 >/dev/null | tail -1)
vips_png_rss=$(/usr/bin/time -f %M vipsthumbnail "$work/photo.png" -s 512 -o "$work/thumb.png" 2>&1 | tail -1)
png_ratio=$(awk -v a="$png_ms" -v v="$vips_png_ms" 'BEGIN {printf "%.2f", a / v}')
how="${megapixels} MP JPEG (${mib} MiB, quality 90), offscreen"
echo "| add 50 MP JPEG attachment with preview | $add_ms | ms (median of $runs) | add_attachment_item, $how |"
echo "| same preview from a full decode | $full_ms | ms (median of $runs) | QImageReader::read + fast scale + PNG save |"
echo "| vipsthumbnail to 512 px | $vips_ms | ms (median of $runs) | vipsthumbnail -s 512 -o .png, same file, same run, wall time of the process (start-up included) |"
echo "| attachment add / vipsthumbnail | $ratio | x | |"
echo "| peak RSS, adding it (whole program) | $((agent_rss / 1024)) | MiB | /usr/bin/time %M, one add |"
echo "| peak RSS, preview from a full decode | $((full_rss / 1024)) | MiB | /usr/bin/time %M, one preview, no window |"
echo "| peak RSS, vipsthumbnail | $((vips_rss / 1024)) | MiB | /usr/bin/time %M |"
echo "| add 50 MP PNG attachment with preview | $png_ms | ms (median of $runs) | add_attachment_item, the same picture as PNG (${png_mib} MiB, vips copy) |"
echo "| vipsthumbnail of the PNG to 512 px | $vips_png_ms | ms (median of $runs) | same run |"
echo "| PNG attachment add / vipsthumbnail | $png_ratio | x | |"
echo "| peak RSS, adding the PNG (whole program) / vipsthumbnail | $((png_rss / 1024)) / $((vips_png_rss / 1024)) | MiB | /usr/bin/time %M |"
