# What screen readers see: Qt's accessibility interfaces in-process.
fb_add_test(form accessibility WINDOW)
