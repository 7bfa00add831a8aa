// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/PageKey.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"
#include "support/Processes.h"
#include "unit/bridge/StoreFolder.h"

namespace {

// A web application's root with its page script.
class Root {
 public:
  Root() { std::filesystem::create_directories(toPath(folder_ / u"res_css/js")); }
  explicit Root(std::string_view script) : Root() {
    folder_.write(u"res_css/js/rwCookies.js", script);
  }

  Text text() const { return folder_ / u""; }
  Text scriptPath() const { return folder_ / u"res_css/js/rwCookies.js"; }
  std::size_t files() const {
    const std::filesystem::directory_iterator entries(toPath(folder_ / u"res_css/js"));
    return static_cast<std::size_t>(std::distance(entries, std::filesystem::directory_iterator()));
  }

 private:
  StoreFolder folder_;
};

Box warning(TextView description) {
  return {.title = u"Tavrollo : pw",
          .text = Text(description).append(u"\r\nImpossible d'ouvrir le fichier rwCookies.js"),
          .icon = BoxIcon::Exclamation,
          .buttons = BoxButtons::Ok};
}

}  // namespace

TEST(PageKey, ReplacesTheFirstLineAndKeepsTheOthers) {
  const struct {
    std::string before;
    std::string after;
  } rows[] = {
      {"var ps=\"old\";", "var ps=\"key\";\r\n"},
      {"var ps=\"old\";\r\n", "var ps=\"key\";\r\n"},
      {"\n", "var ps=\"key\";\r\n"},
      {"anything\r\na\nb", "var ps=\"key\";\r\na\r\nb\r\n"},
      {"x\r\n\r\n  a\t\r\n\xE9\xC3\xA9\x81\n",
       "var ps=\"key\";\r\n\r\n  a\t\r\n\xE9\xC3\xA9\x81\r\n"},
      {std::string("x\na\0b\n", 6), std::string("var ps=\"key\";\r\na\0b\r\n", 20)},
  };
  for (const auto& row : rows) {
    const Root root(row.before);
    EXPECT_EQ(writePageKey(root.text(), u"key"), std::nullopt);
    EXPECT_EQ(bytesIn(root.scriptPath()), row.after);
    EXPECT_EQ(root.files(), 1u);
  }
}

TEST(PageKey, WritesTheValueUnescapedInTheAnsiCodePage) {
  const struct {
    Text value;
    std::string line;
  } rows[] = {
      {u"", "var ps=\"\";\r\n"},
      {u"a\"b\\c", "var ps=\"a\"b\\c\";\r\n"},
      {u"clé €", "var ps=\"cl\xE9 \x80\";\r\n"},
      {u"Ł", "var ps=\"?\";\r\n"},
  };
  for (const auto& row : rows) {
    const Root root("x\r\n");
    EXPECT_EQ(writePageKey(root.text(), row.value), std::nullopt);
    EXPECT_EQ(bytesIn(root.scriptPath()), row.line);
  }
}

#ifndef TAVROLLO_WITHOUT_POSIX  // no user without rights
TEST(PageKey, AScriptThatCannotBeReplacedStaysAndSaysWhy) {
  const Root root("var ps=\"old\";\r\n");
  using std::filesystem::perms;
  const std::filesystem::path folder = toPath(root.scriptPath()).parent_path();
  constexpr perms kForAll = perms::owner_exec | perms::group_exec | perms::others_exec;
  std::filesystem::permissions(toPath(root.text()), perms::owner_all | kForAll);
  std::filesystem::permissions(folder, perms::owner_read | kForAll);
  EXPECT_EQ(inChildWithoutRights([&] {
              const std::optional<Box> box = writePageKey(root.text(), u"key");
              return box == warning(failureFromErrno(EACCES).description) ? 0 : 1;
            }),
            0);
  EXPECT_EQ(bytesIn(root.scriptPath()), "var ps=\"old\";\r\n");
  std::filesystem::permissions(folder, perms::owner_all);
}
#endif

TEST(PageKey, AMissingScriptIsAWarning) {
  const Root root;
  EXPECT_EQ(writePageKey(root.text(), u"key"), warning(u""));
  EXPECT_EQ(root.files(), 0u);
}

TEST(PageKey, AnEmptyScriptStaysEmptyAndIsAWarning) {
  const Root root("");
  EXPECT_EQ(writePageKey(root.text(), u"key"), warning(u"L'entrée dépasse la fin du fichier"));
  EXPECT_EQ(bytesIn(root.scriptPath()), "");
  EXPECT_EQ(root.files(), 1u);
}

TEST(PageKey, AScriptThatIsAFolderIsMissing) {
  const Root root;
  std::filesystem::create_directories(toPath(root.scriptPath()));
  EXPECT_EQ(writePageKey(root.text(), u"key"), warning(u""));
}
