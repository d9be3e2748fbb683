#!/usr/bin/env bash
# package_test.sh ZIP WINDOW_CHECK: takes the package as its user does. It is unpacked far from the sources, its own copy
# of the smallest example is built against it, and the program is run. Reports in the manner of the test programs.
set -uo pipefail

zip=$1 window_check=$2
dev=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/dev
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
package=$folder/$(basename "$zip" .zip)
example=$folder/my-chart

complete() {
    cd "$folder" && cmake -E tar xf "$zip" || return
    local name missing=0
    for name in README.md CHANGELOG.md LICENSE docs/architecture.md \
        bin/{vorn,vornafx,libstdc++-6,libgcc_s_seh-1,libwinpthread-1}.dll bin/{explorer,minimal,overlays}.exe \
        lib/lib{vorn,vornafx}.dll.a lib/libvornafx_module.a lib/cmake/vorn/{vorn-config,mingw-w64}.cmake \
        include/{afxwin,vorn/vorn,vorn/view/view_window}.h examples/minimal/minimal.cpp examples/data/cumberland.csv; do
        [ -s "$package/$name" ] || { echo "missing: $name"; missing=1; }
    done
    [ "$(find "$package/include" -path '*/detail/*')" = "" ] || { echo "private headers are in it"; missing=1; }
    return $missing
}

builds_minimal() {
    cp -r "$package/examples/minimal" "$example" &&
        cmake -S "$example" -B "$example/build" -DCMAKE_PREFIX_PATH="$package" \
            -DCMAKE_TOOLCHAIN_FILE="$package/lib/cmake/vorn/mingw-w64.cmake" &&
        cmake --build "$example/build"
}

minimal_draws() { "$dev" run "$window_check" "Z:${example//\//\\}\\build\\minimal.exe" Minimal; }

tests=(complete builds_minimal minimal_draws) failed=0
echo "[==========] Running ${#tests[@]} tests from 1 test suite."
for name in "${tests[@]}"; do
    echo "[ RUN      ] package.$name"
    if output=$("$name" 2>&1); then
        echo "[       OK ] package.$name"
    else
        printf '%s\n[  FAILED  ] package.%s\n' "$output" "$name"
        failed=1
    fi
done
exit $failed
