#!/bin/bash
# Makes the music and film files of the tests with ffmpeg: make_media.sh FOLDER. Several can run at once; the files are
# made only once, and again if this script has changed.
set -euo pipefail

folder=$1
mkdir -p "$folder"
exec 9>"$folder/.lock"
flock 9
stamp=$(cksum <"$0")
if [ -f "$folder/.stamp" ] && [ "$(cat "$folder/.stamp")" = "$stamp" ]; then
    exit 0
fi
rm -f "$folder/.stamp"
cd "$folder"

make() {
    ffmpeg -nostdin -v error -y "$@"
}

# Twenty seconds: a sweep, whose frequency indicates the time, with noise in every second four-second section, so that
# encoders with a variable bit rate vary it.
make -f lavfi -i "aevalsrc='0.4*sin(2*PI*(300*t+20*t*t))+0.2*(random(0)-0.5)*lt(mod(t,8),4)|0.4*sin(2*PI*(300*t+20*t*t))':s=44100:d=20" song.wav
make -i song.wav -b:a 128k cbr.mp3
make -i song.wav -b:a 128k -write_xing 0 cbr_noheader.mp3
make -i song.wav -q:a 4 vbr.mp3
make -i song.wav -q:a 4 -write_xing 0 -id3v2_version 0 vbr_noheader.mp3
make -i song.wav song.flac
make -i song.wav song.wma
make -i song.wav -c:a libvorbis song.ogg
make -i song.wav song.m4a
make -i song.wav -ar 48000 -ac 1 -c:a pcm_s24le mono48k.wav
make -i song.wav -ar 8000 -ac 1 -c:a pcm_u8 mono8k.wav

# Files whose stated length is wrong.
head -c $(($(stat -c %s cbr.mp3) / 5)) cbr.mp3 >truncated.mp3
head -c $(($(stat -c %s song.flac) / 5)) song.flac >truncated.flac
head -c $(($(stat -c %s song.wav) / 5)) song.wav >truncated.wav
head -c $(($(stat -c %s song.m4a) / 5)) song.m4a >truncated.m4a

# More than four hours without a stated length, at two bit rates: frames of such files can simply be concatenated.
for rate in 8k 16k; do
    make -i song.wav -ar 8000 -ac 1 -b:a $rate -write_xing 0 -id3v2_version 0 slow.mp3
    for _ in $(seq 400); do
        cat slow.mp3
    done
done >long_noheader.mp3

make -f lavfi -i testsrc=size=160x120:rate=10:d=2 -c:v mpeg4 pictures_only.mp4
make -f lavfi -i testsrc=size=160x120:rate=10:d=2 -f lavfi -i sine=frequency=440:sample_rate=44100:d=2 -c:v mpeg4 -c:a aac film.mp4
make -f lavfi -i testsrc=size=160x120:d=0.1 -frames:v 1 cover.png
make -i cbr.mp3 -i cover.png -map 0:a -map 1:v -c copy -disposition:v attached_pic with_cover.mp3

# Films of two seconds. The left third is white for a tenth of a second at each full second, when there is a click.
film() {
    local rate=$1
    shift
    make -f lavfi -i "testsrc2=size=320x240:rate=$rate:d=2" -f lavfi -i \
        "aevalsrc='0.7*sin(2*PI*1000*t)*lt(mod(t,1),0.05)':s=44100:d=2" -vf \
        "drawbox=w=iw/3:h=ih:color=black:t=fill,drawbox=w=iw/3:h=ih:color=white:t=fill:enable='lt(mod(t,1),0.1)'" "$@"
}
film 25 -c:v mpeg4 -q:v 3 -c:a libmp3lame film25.avi
film 30000/1001 -c:v mpeg2video -q:v 3 -c:a mp2 -f vob film2997.mpg
film 50 -c:v mjpeg -q:v 3 -c:a pcm_s16le film50.avi
film 25 -c:v mpeg1video -q:v 3 -c:a mp2 -f mpeg film_mpeg1.mpg
film 25 -c:v mpeg2video -q:v 3 -af "pan=5.1|FL=c0|FR=c0|FC=c0|LFE=c0|BL=c0|BR=c0" -c:a ac3 -f vob film_surround.mpg
film 25 -c:v libx264 -preset ultrafast -c:a aac -ac 1 film_mono.mp4
film 25 -c:v mpeg2video -q:v 3 -aspect 16:9 -c:a mp2 -f vob film_wide_pixels.mpg
film 25 -c:v mpeg4 -q:v 3 -an film_silent.avi
film 25 -vn -c:a libmp3lame film_black.avi
film 25 -c:v mpeg2video -q:v 3 -flags +ildct+ilme -top 1 -c:a mp2 -f vob film_interlaced.mpg
make -f lavfi -i testsrc2=size=16x16:rate=25:d=1 -vf format=rgb24,crop=1:1 -c:v rawvideo -pix_fmt bgr24 film_1x1.avi
make -f lavfi -i color=size=8192x8192:rate=2:d=1 -pix_fmt yuvj420p -c:v mjpeg -q:v 31 film_8192.avi
# The second half of the pictures is a day later.
make -i film_mono.mp4 -vf "setpts='PTS+if(gte(N,25),86400/TB,0)'" -fps_mode vfr -c:v libx264 -preset ultrafast -c:a copy film_jumping.mp4
# The picture's size changes in the middle.
film 25 -c:v mpeg2video -q:v 3 -c:a mp2 -f vob part1.mpg
make -f lavfi -i testsrc2=size=160x320:rate=25:d=2 -f lavfi -i sine=d=2 -c:v mpeg2video -q:v 3 -c:a mp2 -f vob part2.mpg
cat part1.mpg part2.mpg >film_changing.mpg
head -c $(($(stat -c %s film25.avi) / 2)) film25.avi >film_truncated.avi
cp cbr.mp3 film_is_music.avi

echo "$stamp" >.stamp
