#!/bin/bash
# Builds and packs the release alone, without a look at what it needs: scripts/package does so a second time
# by it.
. "$(dirname "$0")/common.sh"

set_release_time
build_release
pack_release
