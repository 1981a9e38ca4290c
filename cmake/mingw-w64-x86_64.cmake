# Cross-building for 64-bit Windows on Debian: mingw-w64's posix-thread compilers,
# the Qt for Windows that tools/windows/build-qt.sh makes (FB_WIN_QT_PREFIX), and Wine
# to run what is built (CTest runs the tests through it).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(FB_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${FB_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${FB_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${FB_MINGW_TRIPLE}-windres)

if(NOT FB_WIN_QT_PREFIX AND DEFINED ENV{FB_WIN_QT_PREFIX})
  set(FB_WIN_QT_PREFIX $ENV{FB_WIN_QT_PREFIX})
endif()
if(NOT FB_WIN_QT_PREFIX)
  message(FATAL_ERROR "Set FB_WIN_QT_PREFIX to the Qt for Windows that tools/windows/build-qt.sh printed")
endif()
set(FB_WIN_QT_PREFIX ${FB_WIN_QT_PREFIX} CACHE PATH "Qt for Windows (tools/windows/build-qt.sh)")

# Libraries, headers and packages come from the Windows side only; programs run here.
set(CMAKE_FIND_ROOT_PATH /usr/${FB_MINGW_TRIPLE} ${FB_WIN_QT_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_PREFIX_PATH ${FB_WIN_QT_PREFIX})

# Translations are compiled by Debian's own lrelease: a .qm file is the same on both systems.
set(Qt5LinguistTools_DIR /usr/lib/x86_64-linux-gnu/cmake/Qt5LinguistTools CACHE PATH "lrelease of the build machine")

find_program(FB_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(FB_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${FB_WINE})
endif()
