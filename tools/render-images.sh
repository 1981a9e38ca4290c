#!/usr/bin/env bash
# Renders the SVG sources in resources/images-src/ to the bitmaps in resources/images/.
# Needs rsvg-convert (librsvg2-bin) and ImageMagick (for the JPEG thumbnail).
# Safe to re-run: every output is overwritten.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
src="$root/resources/images-src"
out="$root/resources/images"
# ImageMagick's real convert; override with MAGICK_CONVERT=/path/to/convert if needed.
convert_bin="${MAGICK_CONVERT:-/usr/bin/convert}"

command -v rsvg-convert >/dev/null || { echo "render-images: rsvg-convert not found (install librsvg2-bin)" >&2; exit 1; }
[ -x "$convert_bin" ] || { echo "render-images: ImageMagick convert not found at $convert_bin" >&2; exit 1; }

mkdir -p "$out"

# name  width  height  (output is <name>.png)
png_images=(
    "FB_logo        256 256"
    "Banner         680  72"
    "Banner-Bug     680  72"
    "Banner-Feature 680  72"
    "Flagged         32  32"
    "File            32  32"
    "Image           32  32"
    "Mail            32  32"
    "Trash           32  32"
    "User            32  32"
    "Description     32  32"
    "Exit            32  32"
    "Cancel          32  32"
    "Remove          32  32"
    "Send            32  32"
    "StartOver       32  32"
)

for entry in "${png_images[@]}"; do
    read -r name w h <<<"$entry"
    rsvg-convert -f png -w "$w" -h "$h" -o "$out/$name.png" "$src/$name.svg"
    echo "rendered $name.png (${w}x${h})"
done

# Video thumbnail: render to a temporary PNG, then flatten onto black and encode as JPEG.
tmp="$(mktemp --suffix=.png)"
trap 'rm -f "$tmp"' EXIT
rsvg-convert -f png -w 200 -h 113 -o "$tmp" "$src/FB_video_logo.svg"
"$convert_bin" "$tmp" -background black -alpha remove -alpha off -strip \
    -sampling-factor 4:4:4 -quality 90 "$out/FB_video_logo.jpg"
echo "rendered FB_video_logo.jpg (200x113)"

# The Windows program icon (the executable's resources): the logo at the sizes the
# shell asks for, in one .ico file.
ico_sizes=(16 24 32 48 64 256)
ico_parts=()
for size in "${ico_sizes[@]}"; do
    part="$(mktemp --suffix=.png)"
    rsvg-convert -f png -w "$size" -h "$size" -o "$part" "$src/FB_logo.svg"
    ico_parts+=("$part")
done
"$convert_bin" "${ico_parts[@]}" "$out/FB_logo.ico"
rm -f "${ico_parts[@]}"
echo "rendered FB_logo.ico (${ico_sizes[*]})"

# The Linux desktop icons (installed into the hicolor theme by the package): the logo
# at the theme's fixed sizes, and the source itself as the scalable one.
app_id=com.korvane3d.feedbackagent
icons="$root/resources/linux/icons"
for size in 16 32 48 64 128 256; do
    mkdir -p "$icons/${size}x${size}"
    rsvg-convert -f png -w "$size" -h "$size" -o "$icons/${size}x${size}/$app_id.png" "$src/FB_logo.svg"
done
mkdir -p "$icons/scalable"
cp "$src/FB_logo.svg" "$icons/scalable/$app_id.svg"
echo "rendered the desktop icons of $app_id"
