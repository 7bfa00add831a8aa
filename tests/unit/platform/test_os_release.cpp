// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/OsRelease.h"

#include <gtest/gtest.h>
#include <sys/utsname.h>

#include "text/Utf.h"

namespace {

struct Row {
  const char* file;
  Text name;
  Text version;
};

}  // namespace

TEST(OsRelease, NameAndVersionAreReadAsAShellWould) {
  const Row rows[] = {
      {"PRETTY_NAME=\"x\"\nNAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\nVERSION=\"12 (bookworm)\"\n",
       u"Debian GNU/Linux", u"12 (bookworm)"},
      {"NAME=Fedora\r\n# VERSION=1\r\nVERSION_ID=41\r\n", u"Fedora", u"41"},
      {"NAME='Arch Linux'\nBUILD_ID=rolling\n", u"Arch Linux", u"rolling"},
      {"NAME=\nVERSION\n", u"", u""},
      {"", u"", u""},
  };
  for (const Row& row : rows) {
    const SystemDescription description = descriptionOfRelease(row.file);
    EXPECT_EQ(description.name, row.name) << row.file;
    EXPECT_EQ(description.version, row.version) << row.file;
    EXPECT_EQ(description.kernel, u"");
  }
}

TEST(OsRelease, TheSystemIsDescribedWithItsRunningKernel) {
  utsname names{};
  ASSERT_EQ(::uname(&names), 0);
  const std::optional<SystemDescription> description = describeSystem();
  ASSERT_TRUE(description);
  EXPECT_FALSE(description->name.empty());
  EXPECT_EQ(toUtf8(description->kernel), std::string(names.sysname) + " " + names.release);
}
