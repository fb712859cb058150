#!/usr/bin/env bash
# Installs what Tavolino is built of, on Debian 12. Does nothing where all of it is there already.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache lld pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-charts-dev libqt6opengl6-dev qt6-qpa-plugins qt6-translations-l10n
  libsqlitecpp-dev libsqlite3-dev libmariadb-dev libkainjow-mustache-dev libsofia-sip-ua-dev libcups2-dev libcapi20-3
  libxlsxwriter-dev libcurl4-openssl-dev libcpp-httplib-dev libssl-dev libsodium-dev qt6-multimedia-dev
  fonts-liberation
)
# Only for tests, benchmarks and the run without a display.
packages+=(libgtest-dev libbenchmark-dev cups cups-client cups-filters poppler-utils xvfb openbox sip-tester unzip
           python3-pyftpdlib python3-openssl openssl curl clang-format
           mariadb-server-core mariadb-client-core galera-4 rsync iproute2)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
log=$(mktemp)
if ! { "${as_root[@]}" apt-get update -qq &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
rm -f "$log"
