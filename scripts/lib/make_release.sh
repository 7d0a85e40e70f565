#!/bin/bash
# Builds and packs the release, and installs nothing: scripts/package runs it in the unpacked archive of the
# sources, for the second build that it compares.
. "$(dirname "$0")/common.sh"

set_release_time
build_release
pack_release
