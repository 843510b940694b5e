# Writes the AppStream metainfo from its template. Software centres take screenshots only from web
# addresses, so they are kept when SCREENSHOT_BASE_URL says where the pictures in docs/ are
# published, and left out otherwise rather than pointing somewhere made up.
#
#   cmake -DINPUT=nl.orvent.zelvaine.metainfo.xml.in -DOUTPUT=FILE [-DSCREENSHOT_BASE_URL=URL] \
#         -P cmake/ConfigureMetainfo.cmake
# or include()d with the same variables set.
foreach(variable INPUT OUTPUT)
  if(NOT ${variable})
    message(FATAL_ERROR "ConfigureMetainfo: ${variable} is not set")
  endif()
endforeach()

file(READ "${INPUT}" metainfo)
if(SCREENSHOT_BASE_URL)
  string(REGEX REPLACE "/+$" "" ZELVAINE_SCREENSHOT_BASE_URL "${SCREENSHOT_BASE_URL}")
else()
  string(REGEX REPLACE "\n *<screenshots>.*</screenshots>\n" "" metainfo "${metainfo}")
endif()
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "${metainfo}" @ONLY)
