#!/usr/bin/env bash
# Takes the picture of the main window in docs/: the program runs under Xvfb in a fresh folder,
# a person's keys and clicks (xdotool) fill in the preferences and save three invoices, one of
# them paid, and the screen is saved as a PNG.
#   tests/desktop/screenshot.sh BUILD_DIR OUTPUT.png
set -euo pipefail
build=$(realpath "${1:-build}")
out=$(realpath -m "${2:-docs/main-window.png}")
for tool in xvfb-run xdotool import; do
  command -v "$tool" >/dev/null || { echo "needs $tool (apt-get install xvfb xdotool imagemagick)"; exit 1; }
done
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$build/ledgerly" "$folder/"

cat > "$folder/drive.sh" <<'DRIVE'
#!/usr/bin/env bash
set -u
cd "$(dirname "$0")"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
./ledgerly &
pid=$!
pause() { sleep "${1:-0.4}"; }
type_text() { xdotool type --delay 30 "$1"; pause 0.2; }
key() { xdotool key "$@"; pause 0.25; }
# A click at a place of a window, by its title, in the window's own coordinates.
click_in() {
  local title=$1 x=$2 y=$3 id
  id=$(xdotool search --name "^${title}\$" | tail -1)
  eval "$(xdotool getwindowgeometry --shell "$id")"
  xdotool mousemove $((X + x)) $((Y + y)) click 1
  pause 0.3
}
main="Ledgerly - by Tobin Arle"
menubar=${MENUBAR:-22}
form_click() { click_in "$main" "$1" $(($2 + menubar)); }

pause 2
key Return                       # "Please fill out the prefs."
type_text "Arle Joinery"
key Tab
type_text "12 Mill Lane"; key Return; type_text "Hebden Bridge"
key Escape                       # close: the preferences are saved
pause 0.8

invoice() {  # name, street, town, quantity, description, price
  key ctrl+n
  click_in "Untitled" 378 84     # "Do it"
  form_click 35 192              # number(0)
  key shift+Tab; key shift+Tab   # customername, selected whole
  type_text "$1"
  key Tab
  type_text "$2"; key Return; type_text "$3"
  key Tab
  type_text "$4"; key Tab; type_text "$5"; key Tab; type_text "$6"; key Tab
  key ctrl+s
  pause 0.6
}
invoice "Harper & Sons" "4 Cross Street" "Halifax" 2 "Oak shelf, fitted" 45.00
invoice "Mrs J. Patel" "9 Birch Grove" "Todmorden" 1 "Kitchen door rehung" 30.00
invoice "Calder Cafe" "1 Market Place" "Hebden Bridge" 4 "Bench seat" 120.00
# Mrs Patel pays: her row brings her invoice back, "paid" goes into the status field, and saving
# takes her marker away.
form_click 690 144               # the second row of the list
form_click 700 604               # statusfield
key End; for _ in 1 2 3 4 5 6; do key BackSpace; done
type_text "paid"
key ctrl+s
pause 1
import -window root "$OUT"
kill $pid
DRIVE
chmod +x "$folder/drive.sh"
OUT="$out" xvfb-run -a -s "-screen 0 1100x720x24" "$folder/drive.sh"
echo "saved $out; invoices: $(ls "$folder/customers" | wc -l), unpaid: $(ls "$folder/unpaid" | wc -l)"
