#!/usr/bin/env bash
# Builds Qt for Windows into the cache, once for each version and recipe: some 25 minutes on two cores.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"

# The tools that run during the build (moc, rcc, uic) are the machine's own: the same version has to be built.
version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
sum=$(recipe_sum "$version" "$0")
if is_built qt "$sum"; then exit 0; fi

read -r source version < <("$WINDOWS/holen.sh" qt6-base "$version")
say "Qt $version wird für Windows gebaut; das dauert auf zwei Kernen etwa 25 Minuten und geschieht nur einmal."
rm -rf "$WORK/qt"
mkdir -p "$WORK/qt"
cd "$WORK/qt"
options=(
    -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$INST"
    -DCMAKE_C_FLAGS="$REPRODUCIBLE" -DCMAKE_CXX_FLAGS="$REPRODUCIBLE"
    -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$MULTIARCH/cmake"
    -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF
)
# What KOBEN does not use. Direct2D has to stay on (the print support's and the platform's font engine hang on it),
# tablets are off because Debian's source lacks wintab.
for feature in sql dbus xml concurrent windeployqt qmake tabletevent vulkan direct2d1_1 icu glib zstd pkg_config \
    brotli system_zlib system_pcre2 system_freetype system_harfbuzz system_png system_jpeg system_doubleconversion system_libb2; do
    options+=("-DFEATURE_$feature=OFF")
done
options+=(-DINPUT_opengl=no -DINPUT_openssl=no -DFEATURE_schannel=ON)
cmake -G Ninja -S "$source" -B . "${options[@]}" >configure.log 2>&1 || { tail -30 configure.log >&2; fail "Qt lässt sich nicht einrichten."; }
CCACHE_DISABLE=1 ninja -j"$JOBS" >build.log 2>&1 || { tail -40 build.log >&2; fail "Qt lässt sich nicht bauen."; }
cmake --install . >install.log
built qt "$sum"
rm -rf "$WORK/qt"
