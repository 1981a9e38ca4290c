# What screen readers see from outside, through AT-SPI as screen readers read it
# (tools/deps/accessibility.txt); Qt's accessibility interfaces in-process are checked
# by form/form_window.
fb_add_test(form atspi PROGRAM XVFB LINUX SOURCES app/windowdriver.h app/windowdriver_x11.cpp)
