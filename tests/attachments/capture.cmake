# Screen-shot flow and region capture overlay.
fb_add_test(attachments capturegeometry)
