################################################################################
#
# netxml
#
################################################################################

NETXML_VERSION = 1.0.0
# A tree beside this external tree; a published release would be a site with a hash.
NETXML_SITE = $(BR2_EXTERNAL_NETXML_PATH)/../..
NETXML_SITE_METHOD = local
NETXML_LICENSE = MIT
NETXML_LICENSE_FILES = LICENSE
NETXML_INSTALL_STAGING = YES
NETXML_CONF_OPTS = \
	-DCMAKE_BUILD_TYPE=MinSizeRel \
	-DNETXML_SECTIONS=ON \
	-DNETXML_BUILD_TOOLS=OFF \
	-DNETXML_BUILD_TESTS=OFF \
	-DNETXML_BUILD_EXAMPLES=OFF \
	-DNETXML_WITH_SCHEMA=$(if $(BR2_PACKAGE_NETXML_SCHEMA),ON,OFF) \
	-DNETXML_WITH_FILES=$(if $(BR2_PACKAGE_NETXML_FILES),ON,OFF)

ifeq ($(BR2_PACKAGE_LIBICONV),y)
NETXML_DEPENDENCIES += libiconv
NETXML_CONF_OPTS += -DNETXML_ICONV=libiconv
endif

$(eval $(cmake-package))
