#!/bin/sh
# Rewrites the expected outputs (*.expected) of the golden inputs in this folder from the checker as it
# is now. Review the differences before committing them.
# usage: tests/syntax/golden/regenerate.sh BUILD_DIR
set -e
build=${1:?usage: $0 BUILD_DIR}
TAVREL_REGENERATE_GOLDEN=1 QT_QPA_PLATFORM=offscreen "$build/tests/bin/tst_MugenSyntax" golden
git -C "$(dirname "$0")" diff --stat -- .
