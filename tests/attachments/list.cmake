# The attachment list and the clipboard paste.
fb_add_test(attachments attachmentlist WINDOW)
fb_add_test(attachments attachmentsources WINDOW)
fb_add_test(attachments clipboarddib)
fb_add_test(attachments clipboardxclip XVFB)
fb_add_test(attachments clipboardpaste WINDOW XVFB)
