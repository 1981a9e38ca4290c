# What screen readers see: Qt's accessibility interfaces in-process ...
fb_add_test(form accessibility WINDOW)
# ... and from outside, through AT-SPI as screen readers read it (tools/deps/accessibility.txt).
fb_add_test(form atspi PROGRAM XVFB LINUX SOURCES app/windowdriver.h app/windowdriver_x11.cpp)
