# The attachment list and the clipboard paste.
fb_add_test(attachments attachments_window WINDOW
            SOURCES attachments/attachmentswindowtests.h attachments/attachmentlist.cpp
                    attachments/attachmentsources.cpp)
fb_add_test(attachments clipboarddib)
fb_add_test(attachments clipboardxclip XVFB LINUX)
if(WIN32)
  fb_add_test(attachments clipboardpaste WINDOW XVFB SOURCES attachments/winclipboard_win.cpp attachments/winclipboard.h)
else()
  fb_add_test(attachments clipboardpaste WINDOW XVFB)
endif()
