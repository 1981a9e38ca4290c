# Form state and navigation are checks of form/form_window; focus, of form/form_window_x11.
fb_add_test(form form_state_focus WINDOW XVFB)
# The e-mail tests resolve names from their own hosts file or DNS server in a private
# mount namespace (tests/support/privateresolver.h).
fb_add_test(form email_check WINDOW LINUX SOURCES support/privateresolver.cpp)
fb_add_test(form email_check_dns WINDOW LINUX SOURCES support/privateresolver.cpp support/dnsresponder.cpp)
