# Makes the directory in which qemu-user finds the files of another machine. To be sourced:
#     machine_root TRIPLE ARCHITECTURE DIRECTORY
# Debian's cross compilers come with the C library, but without the modules that iconv loads for all
# but UTF-8 and ASCII, and without the locale C.UTF-8; those come out of that machine's own packages.
# Debian 12 carries none for powerpc: the locale is that of s390x, which has the same byte order, and
# the modules are built from the C library's source.
machine_root() {
    local triple=$1 architecture=$2 root=$3 work modules
    [ -f "$root/complete" ] && return 0
    rm -rf "$root"
    modules=$root/usr/lib/$triple/gconv
    mkdir -p "$(dirname "$modules")" "$root/usr/lib/locale"
    ln -s "/usr/$triple/lib" "$root/lib"
    if [ "$architecture" = powerpc ]; then
        work=$(fetch_packages s390x "$root-packages" libc-bin)
        build_gconv "$triple" "$root-packages" "$modules"
    else
        work=$(fetch_packages "$architecture" "$root-packages" libc-bin libc6)
        cp -r "$work/usr/lib/$triple/gconv" "$modules"
    fi
    cp -r "$work/usr/lib/locale/C.utf8" "$root/usr/lib/locale/"
    touch "$root/complete"
}

# Unpacks packages of another architecture, and prints where. Lists and packages lie in a directory of
# their own, so the system stays one of a single architecture.
fetch_packages() {
    local architecture=$1 work=$2
    shift 2
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/unpacked"
    touch "$work/status"
    local options=(-qq -o APT::Sandbox::User=root -o "APT::Architecture=$architecture"
        -o "APT::Architectures::=$architecture" -o "Dir::State::Lists=$work/lists"
        -o "Dir::State::status=$work/status" -o "Dir::Cache=$work/cache" -o Acquire::Languages=none)
    apt-get "${options[@]}" update >&2 || true  # one list may be late; the download tells
    rm -f "$work"/*.deb
    (cd "$work" && apt-get "${options[@]}" download "$@" >&2)
    local package
    for package in "$work"/*.deb; do dpkg-deb -x "$package" "$work/unpacked"; done
    echo "$work/unpacked"
}

# Builds the modules that the thirteen encodings need from Debian's source package of the C library,
# against the cross compiler's C library. They are ordinary C but for a few internal headers, whose
# parts they use are written here. The C library keeps pointers to functions of modules xored with a
# number that lies in front of the thread's data.
build_gconv() {
    local triple=$1 work=$2 to=$3 name
    need_packages xz-utils
    (cd "$work" && apt-get -qq -o APT::Sandbox::User=root download glibc-source >&2)
    dpkg-deb -x "$work"/glibc-source_*.deb "$work/source"
    tar -xJf "$work"/source/usr/src/glibc/glibc-*.tar.xz -C "$work/source" --strip-components=1 \
        --wildcards '*/iconv/*.[ch]' '*/iconvdata/*.[ch]' '*/include/libc-diag.h'
    local headers=$work/headers
    mkdir -p "$headers/iconv" "$work/objects" "$to"
    cp "$work/source/include/libc-diag.h" "$headers/"
    cat >"$headers/iconv/gconv_int.h" <<'END'
#include <gconv.h>
#include <stdlib.h>
#define GCONV_NCHAR_GOAL 8160
#define DL_CALL_FCT(function, arguments) function arguments
extern int __gconv_transliterate(struct __gconv_step*, struct __gconv_step_data*, const unsigned char*,
                                 const unsigned char**, const unsigned char*, unsigned char**, size_t*);
END
    cat >"$headers/sysdep.h" <<'END'
#include <stdint.h>
static inline uintptr_t pointerGuard(void)  /* as 32-bit PowerPC has it */
{
    uintptr_t guard;
    __asm__ volatile("lwz %0, -0x700C(2)" : "=r"(guard));
    return guard;
}
#define PTR_DEMANGLE(pointer) \
    ((pointer) = (__typeof(pointer))((uintptr_t)(pointer) ^ pointerGuard()))
END
    for name in gb18030 gbk gb2312 euc-cn utf-16 utf-32; do
        "$triple-gcc" -std=gnu11 -O1 -fPIC -w -D_GNU_SOURCE -Dattribute_hidden= \
            -include "$headers/iconv/gconv_int.h" -I"$headers" -I"$work/source" \
            -I"$work/source/iconvdata" -c "$work/source/iconvdata/$name.c" -o "$work/objects/$name.o"
    done
    for name in gb18030 gbk utf-16 utf-32; do
        "$triple-gcc" -shared "$work/objects/$name.o" -o "$to/${name^^}.so"
    done
    "$triple-gcc" -shared "$work/objects/euc-cn.o" "$work/objects/gb2312.o" -o "$to/EUC-CN.so"
    {
        echo "alias GB2312// EUC-CN//"
        for name in GB18030 GBK EUC-CN UTF-16{,LE,BE} UTF-32{,LE,BE}; do
            local module=${name%[LB]E}  # one for all byte orders
            echo "module $name// INTERNAL $module 1"
            echo "module INTERNAL $name// $module 1"
        done
    } >"$to/gconv-modules"
}
