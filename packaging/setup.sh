#!/bin/sh
# Installs what packaging/debian-packages.txt lists and this machine lacks. Quiet and quick when nothing is missing.
set -eu
list=$(dirname "$0")/debian-packages.txt
missing=
for package in $(sed 's/#.*//' "$list"); do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing="$missing $package"
done
[ -n "$missing" ] || exit 0
echo "installing:$missing" >&2
sudo=
[ "$(id -u)" -eq 0 ] || sudo=sudo
$sudo apt-get update -qq
# shellcheck disable=SC2086  # the list is meant to be split
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing
