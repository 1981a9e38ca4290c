# The e-mail tests resolve names from their own hosts file or DNS server in a private
# mount namespace (tests/support/privateresolver.h).
fb_add_test(form email_check WINDOW LINUX SOURCES support/privateresolver.cpp)
fb_add_test(form email_check_dns WINDOW LINUX SOURCES support/privateresolver.cpp support/dnsresponder.cpp)
