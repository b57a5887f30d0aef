#!/bin/sh
# Starts the example host on a screen of its own and waits until its window
# shows the fill bars of an empty database file's overview, in their colour.
set -eu
if [ $# = 1 ]; then exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$1" shown; fi
folder=$(mktemp -d)
: >"$folder/empty.db"
"$1" "$folder/empty.db" &
host=$!
trap 'kill "$host"; rm -r "$folder"' EXIT
xdotool search --sync --onlyvisible --name '^A Host$' >/dev/null
until import -window root -depth 8 -format %c histogram:info:- | grep -q '#E3E8EE'; do
  kill -0 "$host"
done
