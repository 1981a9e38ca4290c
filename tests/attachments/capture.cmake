# Screen-shot flow and region capture overlay.
fb_add_test(attachments capturegeometry)
fb_add_test(attachments screenshot XVFB)
