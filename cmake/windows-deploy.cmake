# What `cmake --install` puts beside feedbackagent.exe so that it runs on a Windows
# machine with nothing else installed: the Qt libraries and the plugins the program
# loads, the compiler's runtime, qt.conf and the translations. An explicit list:
# Debian's windeployqt cannot read Windows binaries.
get_target_property(FB_QT_CORE_DLL Qt5::Core IMPORTED_LOCATION_RELEASE)
get_filename_component(FB_QT_BIN_DIR ${FB_QT_CORE_DLL} DIRECTORY)
get_filename_component(FB_QT_PLUGIN_DIR ${FB_QT_BIN_DIR}/../plugins ABSOLUTE)

install(TARGETS feedbackagent RUNTIME DESTINATION .)
foreach(module Core Gui Widgets Network)
  install(FILES ${FB_QT_BIN_DIR}/Qt5${module}.dll DESTINATION .)
endforeach()
install(FILES ${FB_QT_PLUGIN_DIR}/platforms/qwindows.dll DESTINATION platforms)
install(FILES ${FB_QT_PLUGIN_DIR}/styles/qwindowsvistastyle.dll DESTINATION styles)
# The attachment previews read JPEG, GIF and icons besides the PNG that Qt reads itself.
foreach(format qjpeg qgif qico)
  install(FILES ${FB_QT_PLUGIN_DIR}/imageformats/${format}.dll DESTINATION imageformats)
endforeach()
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                  OUTPUT_VARIABLE dll_path OUTPUT_STRIP_TRAILING_WHITESPACE)
  install(FILES ${dll_path} DESTINATION .)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/resources/qt.conf DESTINATION .)
