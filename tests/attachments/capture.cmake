# Screen-shot flow and region capture overlay.
fb_add_test(attachments capturegeometry)

# The window tests that need a real window system: the screen-shot flow on X, the shot
# on the Windows clipboard on Windows, and the clipboard paste on both.
set(FB_ATTACHMENTS_X11_SOURCES
    attachments/attachmentswindowx11tests.h attachments/clipboardpaste.cpp
    attachments/capturetesting.h attachments/overlaywatcher.h)

# The grabs are checked against a picture painted on the X root window, and driven with
# xdotool and Xephyr: Linux only.
if(WIN32)
  foreach(name screenshot capture_hidpi capture_hidpi_1.5 capture_dualscreen)
    fb_add_test(attachments ${name} LINUX)
  endforeach()
  # The shot on the Windows clipboard, read back by another program; the paste from
  # the clipboard put there through the Win32 calls.
  add_executable(fb_clipboardbmpreader ${CMAKE_CURRENT_LIST_DIR}/clipboardbmpreader_win.cpp)
  target_link_options(fb_clipboardbmpreader PRIVATE -static)
  fb_add_test(attachments attachments_window_x11 WINDOW XVFB TIMEOUT 300
              SOURCES ${FB_ATTACHMENTS_X11_SOURCES} attachments/screenshotclipboard_win.cpp
                      attachments/winclipboard_win.cpp attachments/winclipboard.h)
  target_compile_definitions(tst_attachments_window_x11 PRIVATE
      FB_CLIPBOARD_BMP_READER="$<TARGET_FILE:fb_clipboardbmpreader>")
  add_dependencies(tst_attachments_window_x11 fb_clipboardbmpreader)
  return()
endif()
find_package(X11 REQUIRED)

# Paints a pattern on the X root window in which every pixel tells its position, so
# that grabbed pictures can be compared pixel by pixel.
add_executable(capture_root_pattern attachments/root_pattern.c)
target_link_libraries(capture_root_pattern PRIVATE X11::X11)

set(FB_CAPTURE_X_DEFS FB_ROOT_PATTERN_EXE="$<TARGET_FILE:capture_root_pattern>")

fb_add_test(attachments screenshot XVFB)
fb_add_test(attachments attachments_window_x11 WINDOW XVFB TIMEOUT 300
            SOURCES ${FB_ATTACHMENTS_X11_SOURCES} attachments/screenshotflow_x11.cpp)
# Scaled displays: the same test at two scale factors.
fb_add_test(attachments capture_hidpi XVFB ENV QT_SCALE_FACTOR=2)
fb_add_test(attachments capture_hidpi_1.5 XVFB EXECUTABLE tst_capture_hidpi ENV QT_SCALE_FACTOR=1.5)

# Two monitors: a nested Xephyr server with two Xinerama screens inside the Xvfb.
fb_add_test(attachments capture_dualscreen WINDOW XVFB
            WRAPPER ${CMAKE_CURRENT_SOURCE_DIR}/attachments/run-under-xephyr.sh)

foreach(target tst_screenshot tst_attachments_window_x11 tst_capture_hidpi tst_capture_dualscreen)
  target_compile_definitions(${target} PRIVATE ${FB_CAPTURE_X_DEFS})
  add_dependencies(${target} capture_root_pattern)
endforeach()
