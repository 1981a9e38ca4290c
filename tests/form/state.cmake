# Form state, navigation and the e-mail check.
fb_add_test(form form_state WINDOW)
fb_add_test(form form_state_navigation WINDOW)
fb_add_test(form form_state_focus WINDOW XVFB)
