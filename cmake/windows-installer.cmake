# The per-user Windows installer, FeedbackAgent-<version>-win64.exe, made by CPack's
# NSIS generator with Debian's makensis from what windows-deploy.cmake installs:
#   cmake --build --preset win64 --target package
# The installer script is this project's own (cmake/installer/NSIS.template.in):
# 64-bit stubs, since the program is 64-bit and Wine here has no 32-bit side, and
# everything under the user's profile and HKCU.
set(CPACK_GENERATOR NSIS)
set(CPACK_PACKAGE_NAME FeedbackAgent)
set(CPACK_PACKAGE_VENDOR Korvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME FeedbackAgent-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_INSTALL_DIRECTORY "Feedback Agent")
set(CPACK_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake/installer)
set(CPACK_FB_ICON ${PROJECT_SOURCE_DIR}/resources/images/FB_logo.ico)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
include(CPack)
