// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/AllowedHosts.h"

#include <gtest/gtest.h>

#include "unit/bridge/StoreFolder.h"

TEST(AllowedHosts, PagesFromTheDiskAndOfThisMachineAreAlwaysAllowed) {
  const AllowedHosts none;
  const AllowedHosts some("example.org\n");
  for (const std::string_view host : {"", "localhost", "127.0.0.1", "[::1]", "LocalHost"}) {
    EXPECT_TRUE(none.allows(host)) << host;
    EXPECT_TRUE(some.allows(host)) << host;
  }
}

TEST(AllowedHosts, EveryOtherHostIsRefused) {
  const AllowedHosts none;
  for (const std::string_view host :
       {"example.org", ".localhost", "localhost.example.org", "xlocalhost", "127.0.0.1.example.org",
        "127.0.0.2", "::1", " ", "localhost ", "."}) {
    EXPECT_FALSE(none.allows(host)) << host;
  }
  EXPECT_FALSE(none.allows(std::string_view("\0", 1)));
  EXPECT_FALSE(none.allows(std::string_view("localhost\0x", 11)));
}

TEST(AllowedHosts, ListedHostsAreAllowedExactlyAndWithoutRegardToCase) {
  const AllowedHosts hosts("\xEF\xBB\xBFintranet.example\r\n"
                           "\r\n"
                           "# other.example\n"
                           "  Nav.Example\t\n"
                           "last.example");
  for (const std::string_view host :
       {"intranet.example", "INTRANET.example", "nav.example", "last.example"}) {
    EXPECT_TRUE(hosts.allows(host)) << host;
  }
  for (const std::string_view host : {"other.example", "# other.example", "www.nav.example",
                                      ".nav.example", "example", "nav.example.org"}) {
    EXPECT_FALSE(hosts.allows(host)) << host;
  }
}

TEST(AllowedHosts, TheListIsAFileInTheProgramFolder) {
  const StoreFolder folder;
  const Text path = allowedHostsPath(folder.text());
  EXPECT_EQ(path, folder / u"hotes_autorises.txt");
  EXPECT_FALSE(readAllowedHosts(path).allows("nav.example"));
  folder.write(u"hotes_autorises.txt", "nav.example\n");
  EXPECT_TRUE(readAllowedHosts(path).allows("nav.example"));
  EXPECT_FALSE(readAllowedHosts(folder.text()).allows("nav.example"));
}
