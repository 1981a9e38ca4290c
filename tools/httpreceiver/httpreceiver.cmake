# The loopback HTTP receiver that the upload tests and the upload bench post to.
# Included from both, so it is defined once whichever of them is built.
include_guard(GLOBAL)
add_executable(fb_httpreceiver ${CMAKE_CURRENT_LIST_DIR}/httpreceiver.cpp ${CMAKE_CURRENT_LIST_DIR}/socketio.h
               ${CMAKE_CURRENT_LIST_DIR}/socketio.cpp)
if(WIN32)
  target_sources(fb_httpreceiver PRIVATE ${CMAKE_CURRENT_LIST_DIR}/socketio_win.cpp)
  # Self-contained, so it starts under Wine whatever WINEPATH the test was given.
  target_link_libraries(fb_httpreceiver PRIVATE ws2_32)
  target_link_options(fb_httpreceiver PRIVATE -static)
else()
  target_sources(fb_httpreceiver PRIVATE ${CMAKE_CURRENT_LIST_DIR}/socketio_posix.cpp)
endif()
