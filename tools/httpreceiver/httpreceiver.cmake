# The loopback HTTP receiver that the upload tests and the upload bench post to.
# Included from both, so it is defined once whichever of them is built.
include_guard(GLOBAL)
add_executable(fb_httpreceiver ${CMAKE_CURRENT_LIST_DIR}/httpreceiver.cpp)
