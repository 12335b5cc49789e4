# SPDX-License-Identifier: MIT

# What the packaging scripts share; to be sourced by bash.
set -euo pipefail
source_folder=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

fail() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# from_cmake PATTERN: out of the one place where version, day and address stand.
from_cmake() { sed -n "s/$1/\\1/p" "$source_folder/CMakeLists.txt"; }
version=$(from_cmake '^project(Ninarix VERSION \([0-9.]*\) .*')
day=$(from_cmake '^set(NINARIX_DATE \([0-9-]*\))')
maintainer="the Ninarix authors <authors@$(from_cmake '^set(NINARIX_SITE \(.*\))')>"
revision=1
SOURCE_DATE_EPOCH=$(date -u -d "$day 12:00" +%s)
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8
