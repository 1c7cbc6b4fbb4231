SUMMARY = "XML for the management plane"
DESCRIPTION = "Reads namespace-aware XML 1.0 into events or a tree; walks, edits, copies, validates and \
writes trees, in thirteen encodings. Needs the C library and nothing else."
SECTION = "libs"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=c73c305c0913feae6a3d1dcadb9a6346"

# An archive of this tree beside the recipe: git archive --prefix=netxml-1.0.0/ -o netxml-1.0.0.tar.gz HEAD
SRC_URI = "file://netxml-${PV}.tar.gz"

inherit cmake pkgconfig

EXTRA_OECMAKE = "-DNETXML_BUILD_TESTS=OFF -DNETXML_BUILD_EXAMPLES=OFF"
PACKAGECONFIG ??= "schema files"
PACKAGECONFIG[schema] = "-DNETXML_WITH_SCHEMA=ON,-DNETXML_WITH_SCHEMA=OFF"
PACKAGECONFIG[files] = "-DNETXML_WITH_FILES=ON,-DNETXML_WITH_FILES=OFF"
# Needs cli11 of meta-oe. A build of the native tool for netxml_add_schema() has it:
PACKAGECONFIG[tools] = "-DNETXML_BUILD_TOOLS=ON,-DNETXML_BUILD_TOOLS=OFF,cli11"
PACKAGECONFIG:class-native = "schema files tools"

# iconv loads a module for each encoding but UTF-8. musl's iconv writes no GB18030, in which trees are held.
RRECOMMENDS:${PN}:append:libc-glibc = " glibc-gconv-gb18030 glibc-gconv-gbk glibc-gconv-euc-cn \
    glibc-gconv-utf-16 glibc-gconv-utf-32"
COMPATIBLE_HOST:libc-musl:class-target = "null"

PACKAGES =+ "${PN}-tools"
FILES:${PN}-tools = "${bindir}/netxml ${datadir}/bash-completion"
FILES:${PN}-dev += "${libdir}/cmake"

BBCLASSEXTEND = "native nativesdk"
