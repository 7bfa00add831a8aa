// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsSupport.h"
#include "platform/Installed.h"

namespace {

TEST(Installed, AProgramOfTheSystemIsFoundByItsCommand) {
  const std::optional<FoundProgram> editor = programFor(u"notepad");
  ASSERT_TRUE(editor);
  EXPECT_TRUE(editor->program.ends_with(u"\\notepad.exe")) << toUtf8(editor->program);
  EXPECT_TRUE(FileExists(editor->program));
}

TEST(Installed, AProgramThatIsNotThereIsNamed) {
  const std::optional<FoundProgram> none = programFor(u"tavrollo-nulle-part");
  ASSERT_TRUE(none);
  EXPECT_EQ(none->program, u"");
  EXPECT_EQ(none->missing, u"tavrollo-nulle-part.exe");
}

TEST(Installed, TheWordProcessorIsWhateverAnswersToItsName) {
  constexpr wchar_t kClass[] = L"{000209FE-0000-0000-C000-000000000046}";
  ASSERT_TRUE(programFor(u"word.basic"));
  if (!programFor(u"word.basic")->program.empty()) GTEST_SKIP() << "a word processor is installed";
  EXPECT_EQ(programFor(u"word.basic")->missing, u"Microsoft Word");

  if (::RegSetKeyValueW(HKEY_CLASSES_ROOT, L"word.basic\\CLSID", nullptr, REG_SZ, kClass,
                        sizeof kClass) != ERROR_SUCCESS) {
    GTEST_SKIP() << "only an administrator may register one";
  }
  const std::optional<FoundProgram> found = programFor(u"word.basic");
  ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"word.basic");
  EXPECT_EQ(found->program, u"word.basic");
}

int CALLBACK keepFamily(const LOGFONTW* font, const TEXTMETRICW* /*metric*/, DWORD /*kind*/,
                        LPARAM family) {
  *reinterpret_cast<Text*>(family) = fromWide(font->lfFaceName);
  return 0;
}

// Some family that is installed; "" when there is none.
Text someFamily() {
  Text family;
  LOGFONTW any{};
  any.lfCharSet = DEFAULT_CHARSET;
  const HDC screen = ::GetDC(nullptr);
  ::EnumFontFamiliesExW(screen, &any, keepFamily, reinterpret_cast<LPARAM>(&family), 0);
  ::ReleaseDC(nullptr, screen);
  return family;
}

TEST(Installed, FontsAreToldByTheirFamilies) {
  const std::vector<Text> absent = {u"Aucune Police De Ce Nom",
                                    u"Un nom de police bien trop long pour une fiche"};
  std::vector<Text> families = absent;
  if (const Text family = someFamily(); !family.empty()) families.push_back(family);
  EXPECT_EQ(missingFonts(families), absent);
}

}  // namespace
