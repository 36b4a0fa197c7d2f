#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Takes the pictures in docs/: the program runs under Xvfb in a fresh folder (no window manager,
# so no title bar), a
# person's keys and clicks (xdotool) fill in the preferences and save three invoices, one of them
# paid, and the screen is saved as a PNG (main-window.png), then again with the question of "New
# invoice" over the form (dialog-over-form.png). An invoice printed to PDF by the scenario runner
# (the same drawing as on paper) is rendered at 72 dpi (invoice-page.png) and its upper part at
# 150 dpi (invoice-rules-150dpi.png), where the rules can be seen.
#   tools/screenshot.sh BUILD_DIR DOCS_DIR
set -euo pipefail
build=$(realpath "${1:-build}")
docs=$(realpath -m "${2:-docs}")
out=$docs/main-window.png
for tool in xvfb-run xdotool import pdftoppm; do
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
key ctrl+n                       # "Clear all and create new invoice?" over the form
pause 0.5
import -window root "$DIALOG"
key Escape
kill $pid
DRIVE
chmod +x "$folder/drive.sh"
OUT="$out" DIALOG="$docs/dialog-over-form.png" xvfb-run -a -s "-screen 0 1100x720x24" "$folder/drive.sh"
echo "saved $out; invoices: $(ls "$folder/customers" | wc -l), unpaid: $(ls "$folder/unpaid" | wc -l)"

cat > "$folder/page.scn" <<'SCN'
scenario "the invoice of the README"
when modal prefswindow do focus prefswindow.mybusinessname ; type "Arle Joinery" ; focus prefswindow.myaddress ; type "12 Mill Lane\rHebden Bridge" ; focus prefswindow.myemail ; type "tobin@example.org" ; focus prefswindow.mywebb ; type "arle-joinery.example.org" ; click prefswindow.closebutt
start
expect msgbox "Please fill out the prefs."
when modal surewindow do click surewindow.acceptbutt
menu filenew
focus iwindow.customername
type "Harper & Sons"
focus iwindow.customeraddress
type "4 Cross Street\rHalifax"
focus iwindow.number(0)
type "2"
focus iwindow.description(0)
type "Oak shelf, fitted"
focus iwindow.price(0)
type "45"
tab
focus iwindow.number(1)
type "1"
focus iwindow.description(1)
type "Kitchen door rehung"
focus iwindow.price(1)
type "30"
tab
when print pdf "invoice.pdf"
menu fileprint
SCN
kept=$("$build/ledgerly-scenario" --keep "$folder/page.scn" | grep -o '/[^ ]*ledgerly[^ ]*' | head -1 || true)
pdf=$(find "${kept:-/nonexistent}" "$folder" -name invoice.pdf 2>/dev/null | head -1)
[ -n "$pdf" ] || { echo "the scenario printed no invoice"; exit 1; }
pdftoppm -png -r 72 -singlefile "$pdf" "${docs}/invoice-page"
pdftoppm -png -r 150 -singlefile -x 0 -y 0 -W 1240 -H 1060 "$pdf" "${docs}/invoice-rules-150dpi"
echo "saved $docs/dialog-over-form.png, $docs/invoice-page.png, $docs/invoice-rules-150dpi.png"
