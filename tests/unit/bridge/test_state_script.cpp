// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StateScript.h"

#include <gtest/gtest.h>

#include "unit/bridge/StoreFolder.h"

namespace {

BridgeState stateWith(std::int64_t counter, const Text& lastField) {
  BridgeState state;
  state.counter = counter;
  state.lastField = lastField;
  return state;
}

}  // namespace

TEST(StateScript, IsOneLineOfJavaScript) {
  EXPECT_EQ(stateScript({.counter = 12,
                         .lastField = u"k7",
                         .interval = 1000,
                         .version = u"1.0.0",
                         .time = u"21/11/2026 10:15:00"}),
            "var tavrolloEtat={\"compteur\":12,\"dernier\":\"k7\",\"intervalle\":1000,"
            "\"version\":\"1.0.0\",\"heure\":\"21/11/2026 10:15:00\"};\r\n");
}

TEST(StateScript, NoFieldCanEndItsLiteralOrTheScript) {
  const struct {
    Text field;
    std::string literal;
  } rows[] = {
      {u"", ""},
      {u"\"};alert(1)//", "\\u0022};alert(1)//"},
      {u"a\\", "a\\u005c"},
      {u"</script>", "\\u003c/script>"},
      {u"\r\n\t", "\\u000d\\u000a\\u0009"},
      {u"é€\u2028", "\\u00e9\\u20ac\\u2028"},
      {u"\U0001F600", "\\ud83d\\ude00"},
      {Text(u"\0\x7F", 2), "\\u0000\\u007f"},
      {Text(1, u'\xD800'), "\\ud800"},
  };
  for (const auto& row : rows) {
    const std::string script = stateScript(stateWith(0, row.field));
    EXPECT_NE(script.find(",\"dernier\":\"" + row.literal + "\",\"intervalle\":"),
              std::string::npos)
        << script;
  }
}

TEST(StateScript, IsWrittenBelowTheWebApplicationsRoot) {
  const StoreFolder folder;
  const Text root = folder / u"";
  const BridgeState state = stateWith(1, u"k1");
  const int number = writeStateScript(root, state).number;
  EXPECT_TRUE(number == 53 || number == 76) << number;  // a system may tell a missing folder
  std::filesystem::create_directories(toPath(folder / u"res_css/js"));
  EXPECT_FALSE(writeStateScript(root, state));
  EXPECT_EQ(bytesIn(folder / u"res_css/js/etat.js"), stateScript(state));
  const BridgeState next = stateWith(2, u"k2");
  EXPECT_FALSE(writeStateScript(root, next));
  EXPECT_EQ(bytesIn(folder / u"res_css/js/etat.js"), stateScript(next));
}
