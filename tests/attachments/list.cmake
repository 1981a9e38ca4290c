# The attachment list and the clipboard. The paste from another program is in capture.cmake,
# with the other window tests that need a real window system.
fb_add_test(attachments attachments_window WINDOW
            SOURCES attachments/attachmentswindowtests.h attachments/attachmentlist.cpp
                    attachments/attachmentsources.cpp)
fb_add_test(attachments clipboarddib)
fb_add_test(attachments clipboardxclip XVFB LINUX)
