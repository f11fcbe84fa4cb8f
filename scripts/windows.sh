#!/usr/bin/env bash
# Builds the Excel add-in for Windows, 32-bit and 64-bit, and its set-up program, and runs the Windows tests:
#
#   scripts/windows.sh           all of it
#   scripts/windows.sh build     the DLLs and the set-up program only
#   scripts/windows.sh pictures  the tests, and pictures of every dialog into docs/images
#   scripts/windows.sh pictures 144  the same at another resolution than 96 dpi, pictures into build/windows
#
# The DLLs come to build/windows-x86/bin and build/windows-x64/bin, the set-up program to build/windows. The tests run under
# wine64 with a display and a Windows of their own below build/, against the sandbox gateway outside. What is not installed is
# skipped, saying so. QUORVEL_SANDBOX names another sandbox program than that of build/release.
set -euo pipefail
trap 'echo "windows: line $LINENO failed: $BASH_COMMAND" >&2' ERR
cd "$(dirname "$0")/.."
what=${1:-all}
dpi=${2:-96}
case $what in
  all | build | pictures) ;;
  *)
    echo "windows: no such task: $what" >&2
    exit 2
    ;;
esac

if ! command -v x86_64-w64-mingw32-g++-posix >/dev/null || ! command -v i686-w64-mingw32-g++-posix >/dev/null; then
  echo "windows: SKIPPED, the mingw-w64 cross compilers are not installed" >&2
  exit 0
fi

# build ARCHITECTURE TARGET...
build() {
  local folder=build/windows-$1 launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  # GCC 12 sees overlapping copies in text concatenations where there are none: a warning, but no error.
  cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_WERROR=ON "${launcher[@]}" \
    -DCMAKE_CXX_FLAGS=-Wno-error=restrict "-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/mingw-$1.cmake" >/dev/null
  cmake --build "$folder" --parallel 2 --target "${@:2}"
}

# Only the four entry points go out, and nothing but what every Windows has comes in.
check_dll() {
  local dll=build/windows-$1/bin/Quorvel.dll exports imports
  exports=$("$2-objdump" -p "$dll" | sed -n 's/^\t\[ *[0-9]*\] \(.*\)/\1/p' | grep '^[A-Za-z]' | sort | tr '\n' ' ')
  imports=$("$2-objdump" -p "$dll" | sed -n 's/^\tDLL Name: //p' | tr '[:upper:]' '[:lower:]' | sort -u)
  if [ "$exports" != "DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer " ]; then
    echo "windows: $dll exports $exports" >&2
    return 1
  fi
  if grep -vxE '(advapi32|comctl32|gdi32|kernel32|msvcrt|ole32|oleaut32|shell32|user32|wininet)\.dll' <<<"$imports"; then
    echo "windows: $dll needs the DLLs above, which are no part of Windows" >&2
    return 1
  fi
  echo "$dll: $(stat -c %s "$dll") bytes, $(wc -l <<<"$imports") system DLLs"
}

# make_setup OUTPUT [MAKENSIS-OPTION...]
make_setup() {
  local version
  version=$(sed -n 's/^project(quorvel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  makensis -V2 "${@:2}" "-DVERSION=$version" "-DX86_DLL=$PWD/build/windows-x86/bin/Quorvel.dll" \
    "-DX64_DLL=$PWD/build/windows-x64/bin/Quorvel.dll" "-DLICENSE=$PWD/LICENSE" "-DOUTPUT=$PWD/$1" hosts/excel/installer.nsi
}

wine=$(command -v wine64 || command -v wine64-stable || ls /usr/lib/wine/wine64 2>/dev/null || true)
targets=(quorvel_dll)
[ "$what" = build ] || [ -z "$wine" ] || targets+=(excel_tests excel_addin_tests dll_holder)
build x64 "${targets[@]}"
build x86 quorvel_dll
check_dll x64 x86_64-w64-mingw32
check_dll x86 i686-w64-mingw32

mkdir -p build/windows
if command -v makensis >/dev/null; then
  make_setup build/windows/Quorvel-setup.exe
  make_setup build/windows/Quorvel-setup-x64.exe -DTARGET_X64
else
  echo "windows: the set-up program is SKIPPED, makensis is not installed" >&2
fi
[ "$what" != build ] || exit 0

sandbox=${QUORVEL_SANDBOX:-build/release/bin/quorvel-sandbox}
needed=("${wine:-wine64}" Xvfb "$sandbox")
[ "$what" != pictures ] || needed+=(convert)
for program in "${needed[@]}"; do
  if ! command -v "$program" >/dev/null; then
    echo "windows: the tests are SKIPPED, there is no $program" >&2
    exit 0
  fi
done

# One at a time: they share a registry.
exec 9>build/windows/lock
flock 9

work=$(mktemp -d)
# Without its debugger a crash ends the program at once.
export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEARCH=win64 WINEDLLOVERRIDES='mscoree=;mshtml=;winedbg.exe='
[ "$dpi" = 96 ] || WINEPREFIX+=-$dpi
wineserver=$(dirname "$(readlink -f "$wine")")/wineserver
pids=()
finish() {
  "$wineserver" -k 2>/dev/null || true
  for pid in "${pids[@]}"; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap finish EXIT

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
pids+=($!)
read -r display <"$work/display" || { echo "windows: Xvfb does not start" >&2; exit 1; }
export DISPLAY=:$display

"$sandbox" --port 0 >"$work/sandbox.log" 2>&1 &
pids+=($!)
until grep -qs 'listening on' "$work/sandbox.log"; do
  kill -0 "${pids[1]}" || { cat "$work/sandbox.log" >&2; exit 1; }
  sleep 0.05
done
QUORVEL_SANDBOX_PORT=$(sed -n 's/^listening on .*://p' "$work/sandbox.log")
export QUORVEL_SANDBOX_PORT

# Nothing that runs in there takes this long, whatever else the machine is busy with.
in_wine() {
  timeout -k 10 600 "$wine" "$@"
}

if [ ! -f "$WINEPREFIX/is-complete" ]; then
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  in_wine wineboot -i >/dev/null 2>&1
  # The signs on the frames' buttons.
  [ ! -f /usr/share/wine/fonts/marlett.ttf ] || cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  # No window manager: the dialogs have the frames of the Windows that they run in.
  in_wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
  in_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
  "$wineserver" -k
  "$wineserver" -w
  touch "$WINEPREFIX/is-complete"
fi
[ "$what" != pictures ] || export QUORVEL_PICTURES="Z:${work//\//\\}"

in_wine build/windows-x64/bin/excel_tests.exe --gtest_brief=1
in_wine build/windows-x64/bin/excel_addin_tests.exe --gtest_brief=1

# refuses PROGRAM [ARGUMENT...]
refuses() {
  local status=0
  in_wine "$@" || status=$?
  [ $status -eq 2 ] || { echo "windows: $1 ended with $status while the DLL was in use" >&2; return 1; }
}

# The set-up program: what is there after installing, and that nothing is after uninstalling.
if [ -f build/windows/Quorvel-setup-x64.exe ]; then
  key='HKCU\Software\Microsoft\Office\Excel\Addins\Quorvel.Connect'
  target="C:\\users\\$(id -un)\\AppData\\Local\\Programs\\Quorvel"
  programs="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Local/Programs/Quorvel"
  in_wine build/windows/Quorvel-setup-x64.exe /S
  in_wine reg query "$key" >/dev/null
  cmp build/windows-x64/bin/Quorvel.dll "$programs/x64/Quorvel.dll"
  cmp build/windows-x86/bin/Quorvel.dll "$programs/x86/Quorvel.dll"
  # "_?=" keeps the uninstaller from going on in a copy of itself that nobody waits for.
  uninstall=("$programs/Uninstall.exe" /S "_?=$target")
  # While a program has the DLL loaded, as Excel does, neither can be done; the exit status says so.
  coproc holder { in_wine build/windows-x64/bin/dll_holder.exe "$target\\x64\\Quorvel.dll"; }
  read -r _ <&"${holder[0]}"
  refuses build/windows/Quorvel-setup-x64.exe /S
  refuses "${uninstall[@]}"
  holder_process=$holder_PID
  exec {holder[1]}>&-
  wait "$holder_process"
  in_wine "${uninstall[@]}"
  for gone in "$key" 'HKCU\Software\Classes\Quorvel.Connect' \
    'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel' 'HKCU\Software\VB and VBA Program Settings\Tessaly'; do
    if in_wine reg query "$gone" >/dev/null 2>&1; then
      echo "windows: $gone is left after uninstalling" >&2
      exit 1
    fi
  done
  if [ -e "$programs/x64" ] || [ -e "$programs/x86" ]; then
    echo "windows: files are left after uninstalling" >&2
    exit 1
  fi
  echo "windows: the set-up program installs and uninstalls"
fi

if [ "$what" = pictures ]; then
  folder=docs/images
  [ "$dpi" = 96 ] || folder=build/windows/pictures-$dpi
  mkdir -p "$folder"
  for picture in "$work"/*.bmp; do
    convert "$picture" -define png:exclude-chunks=date,time "$folder/excel-$(basename "${picture%.bmp}").png"
  done
fi
