# Form state, navigation and the e-mail check.
fb_add_test(form form_state WINDOW)
