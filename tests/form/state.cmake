# The e-mail tests resolve names from their own hosts file and DNS server in a private
# mount namespace (tests/support/privateresolver.h).
fb_add_test(form email_check WINDOW LINUX
            SOURCES form/emailchecktests.h form/emailcheck_hosts.cpp form/emailcheck_dns.cpp
                    support/privateresolver.cpp support/dnsresponder.cpp)
