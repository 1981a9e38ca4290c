# Settings store and launch options.

# Test-only generic plugin that reports the widgets of the real executable's window.
set(FB_WIDGET_STATE_PLUGIN_PATH ${CMAKE_CURRENT_BINARY_DIR}/widgetstate-plugins)
add_library(fbwidgetstate MODULE ${CMAKE_CURRENT_LIST_DIR}/widgetstate/widgetstateplugin.cpp)
target_link_libraries(fbwidgetstate PRIVATE Qt5::Widgets)
set_target_properties(fbwidgetstate PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${FB_WIDGET_STATE_PLUGIN_PATH}/generic)

fb_add_test(app launchparser)
fb_add_test(app launchoptions PROGRAM TIMEOUT 600)
target_compile_definitions(tst_launchoptions PRIVATE FB_WIDGET_STATE_PLUGIN_PATH="${FB_WIDGET_STATE_PLUGIN_PATH}")
add_dependencies(tst_launchoptions fbwidgetstate)

# The window's loading and saving of the settings file are checked in app/window (CMakeLists.txt).
