# Screen-shot flow and region capture overlay.
find_package(X11 REQUIRED)

# Paints a pattern on the X root window in which every pixel tells its position, so
# that grabbed pictures can be compared pixel by pixel.
add_executable(capture_root_pattern attachments/root_pattern.c)
target_link_libraries(capture_root_pattern PRIVATE X11::X11)

set(FB_CAPTURE_X_DEFS FB_ROOT_PATTERN_EXE="$<TARGET_FILE:capture_root_pattern>")

fb_add_test(attachments capturegeometry)
fb_add_test(attachments screenshot XVFB)
fb_add_test(attachments screenshotflow WINDOW XVFB TIMEOUT 300)
foreach(target tst_screenshot tst_screenshotflow)
  target_compile_definitions(${target} PRIVATE ${FB_CAPTURE_X_DEFS})
  add_dependencies(${target} capture_root_pattern)
endforeach()
