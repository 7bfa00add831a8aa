// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>

#include "platform/linux/LinuxShell.h"
#include "support/Processes.h"
#include "text/Utf.h"

namespace {

// The kinds of commands that a shell has by itself.
struct PlainShell : Shell {
  Failure ShellExecute(const ShellRequest&) override { return {}; }
  Failure startCommandLine(const Text&) override { return {}; }
  Failure openInWord(const Text&) override { return {}; }
};

// A desktop of our own: PATH begins with a folder of recording scripts.
class LinuxShellTest : public ::testing::Test {
 protected:
  LinuxShellTest() { fakeXdgOpen(0); }
  ~LinuxShellTest() override {
    EXPECT_TRUE(waitUntil([&] {
      shell.reap();
      return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
    })) << "a zombie stays";
  }

  void fakeXdgOpen(int status) { scratch.script("bin/xdg-open", recordArguments(opened, status)); }

  // xdg-mime that names `id`, and a launcher of that name.
  void fakeEditor(const std::string& id, const std::string& exec, const std::string& more = {}) {
    fakeHandler("text/plain", id, exec, more);
  }
  void fakeHandler(const std::string& mimeType, const std::string& id, const std::string& exec,
                   const std::string& more = {}) {
    scratch.script("bin/xdg-mime", "test \"$*\" = 'query default " + mimeType + "' && echo " + id);
    scratch.write("data/applications/" + id,
                  "[Desktop Entry]\nType=Application\nExec=" + exec + "\n" + more);
  }

  // A program that records its arguments in "started".
  std::string recorder(std::string_view name) {
    return scratch.script(name, recordArguments(started));
  }

  std::string openedArguments() {
    EXPECT_TRUE(waitForFile(opened));
    return scratch.read("opened");
  }
  std::string startedArguments() {
    EXPECT_TRUE(waitForFile(started));
    return scratch.read("started");
  }
  // False when nothing was opened: to be asked when all children have ended.
  bool didOpen() {
    EXPECT_TRUE(waitUntil([&] {
      shell.reap();
      return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
    }));
    return std::filesystem::exists(opened);
  }

  Failure execute(const Text& file, const Text& parameters = {}, const Text& directory = u"/") {
    return shell.ShellExecute({.operation = u"open",
                               .file = file,
                               .parameters = parameters,
                               .directory = directory,
                               .show = ShowState::Normal});
  }

  Scratch scratch;
  std::string opened = scratch.path("opened");
  std::string started = scratch.path("started");
  Variable path{"PATH", scratch.path("bin") + ":" + scratch.path("tools")};
  Variable dataHome{"XDG_DATA_HOME", scratch.path("data")};
  Variable dataDirs{"XDG_DATA_DIRS", scratch.path("none")};
  std::vector<Text> traces;
  LinuxShell shell{[this](const Text& text) { traces.push_back(text); }};

  // What the scripts themselves need.
  void SetUp() override {
    std::filesystem::create_directory(scratch.path("tools"));
    for (const char* tool : {"mv", "sleep", "sh"}) {
      std::filesystem::create_symlink("/bin/" + std::string(tool), scratch.path("tools/") + tool);
    }
  }
};

TEST_F(LinuxShellTest, ADocumentIsOpenedByTheDesktop) {
  const std::string file = scratch.write("é a 'b'.txt", "text");
  EXPECT_FALSE(execute(fromPath(file)));
  EXPECT_EQ(openedArguments(), file + "\n");
  EXPECT_TRUE(traces.empty());
}

TEST_F(LinuxShellTest, TheDefaultOperationOpensToo) {
  const std::string file = scratch.write("a.txt", "text");
  EXPECT_FALSE(shell.ShellExecute({.operation = {},
                                   .file = fromPath(file),
                                   .parameters = {},
                                   .directory = {},
                                   .show = ShowState::Maximised}));
  EXPECT_EQ(openedArguments(), file + "\n");
}

TEST_F(LinuxShellTest, FoldersAndAddressesAreOpenedByTheDesktop) {
  for (const std::string& file : {scratch.path(), std::string("http://localhost/a?b=c d"),
                                  std::string("file:///a/b.html"), std::string("mailto:a@b.c")}) {
    std::filesystem::remove(opened);
    EXPECT_FALSE(execute(fromPath(file)));
    EXPECT_EQ(openedArguments(), file + "\n");
  }
}

TEST_F(LinuxShellTest, WhatIsNotThereFailsAtOnceWithItsReason) {
  scratch.write("a.txt", "text");
  std::filesystem::create_symlink("gone", scratch.path("link"));
  struct Row {
    Text file;
    Text reason;
    Text named;
  };
  const Row rows[] = {
      {scratch.text("é.pdf"), u"Fichier introuvable", scratch.text("é.pdf")},
      {u"é.pdf", u"Fichier introuvable", scratch.text("é.pdf")},
      {scratch.text("gone/é.pdf"), u"Fichier introuvable", scratch.text("gone/é.pdf")},
      {scratch.text("link"), u"Fichier introuvable", scratch.text("link")},
      {scratch.text("a.txt/é"), u"Chemin d'accès introuvable", scratch.text("a.txt/é")},
      {u"--version", u"Fichier introuvable", scratch.text("--version")},
      {u"C:\\a.pdf", u"Fichier introuvable", scratch.text() + u"/C:\\a.pdf"},
  };
  for (const Row& row : rows) {
    traces.clear();
    const Failure failure = execute(row.file, {}, scratch.text());
    EXPECT_TRUE(failure) << toUtf8(row.file);
    EXPECT_EQ(failure.description, row.reason + u" : " + row.named);
    EXPECT_EQ(traces, std::vector<Text>{failure.description});
  }
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, AFolderThatMayNotBeEnteredIsTheReason) {
  std::filesystem::permissions(scratch.path(), std::filesystem::perms::none);
  const int outcome = inChildWithoutRights([this] {
    const Failure denied{70, u"Permission refusée : " + scratch.text("a.txt")};
    return execute(scratch.text("a.txt")) == denied ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(LinuxShellTest, ARelativeFileIsRelativeToTheDirectory) {
  scratch.write("res_css/htm/start.html", "page");
  EXPECT_FALSE(execute(u"res_css/htm/start.html", {}, scratch.text()));
  EXPECT_EQ(openedArguments(), scratch.path("res_css/htm/start.html") + "\n");
}

TEST_F(LinuxShellTest, ANameWithAColonIsAFileWhereOneStands) {
  scratch.write("note:a.txt", "text");
  EXPECT_FALSE(execute(u"note:a.txt", {}, scratch.text()));
  EXPECT_EQ(openedArguments(), scratch.path("note:a.txt") + "\n");
}

TEST_F(LinuxShellTest, ANameThatLooksLikeAnOptionIsAFile) {
  scratch.write("--version", "text");
  EXPECT_FALSE(execute(u"--version", {}, scratch.text()));
  EXPECT_EQ(openedArguments(), scratch.path("--version") + "\n");
}

TEST_F(LinuxShellTest, AProgramGetsItsParameters) {
  const std::string program = recorder("é my program");
  EXPECT_FALSE(execute(fromPath(program), u"a 'b c' \"\" é --x=\"d e\" $HOME"));
  EXPECT_EQ(startedArguments(), "a\nb c\n\né\n--x=d e\n$HOME\n");
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, ValuesSeparatedByTabsArriveEachByItself) {
  const std::string program = recorder("updater");
  EXPECT_FALSE(execute(fromPath(program), u"setup_Tavrollo\t67\tTavrollo\t'mon tavrollo'"));
  EXPECT_EQ(startedArguments(), "setup_Tavrollo\n67\nTavrollo\nmon tavrollo\n");
}

TEST_F(LinuxShellTest, AProgramWithoutParametersIsStartedToo) {
  EXPECT_FALSE(execute(fromPath(recorder("run"))));
  EXPECT_EQ(startedArguments(), "");
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, AProgramStartsInTheDirectory) {
  scratch.script("run",
                 "pwd -P > '" + started + ".part'\nmv '" + started + ".part' '" + started + "'");
  std::filesystem::create_directory(scratch.path("é"));
  EXPECT_FALSE(execute(scratch.text("run"), {}, scratch.text("é")));
  EXPECT_EQ(startedArguments(), std::filesystem::canonical(scratch.path("é")).native() + "\n");
}

TEST_F(LinuxShellTest, ARelativeProgramIsRelativeToTheDirectory) {
  recorder("sub/run");
  EXPECT_FALSE(execute(u"sub/run", u"x", scratch.text()));
  EXPECT_EQ(startedArguments(), "x\n");
}

TEST_F(LinuxShellTest, ANameAloneIsAProgramOfPath) {
  recorder("bin/calculator");
  scratch.write("calculator", "a document of that name");
  EXPECT_FALSE(execute(u"calculator", u"1 2", scratch.text()));
  EXPECT_EQ(startedArguments(), "1\n2\n");
}

TEST_F(LinuxShellTest, ANameAloneThatIsNoProgramIsADocument) {
  scratch.write("letter.doc", "text");
  EXPECT_FALSE(execute(u"letter.doc", {}, scratch.text()));
  EXPECT_EQ(openedArguments(), scratch.path("letter.doc") + "\n");
}

TEST_F(LinuxShellTest, AnExecutableDocumentIsNotExecuted) {
  const std::string file = scratch.write("stick.pdf", "%PDF-1.4", 0755);
  EXPECT_FALSE(execute(fromPath(file), u"ignored"));
  EXPECT_EQ(openedArguments(), file + "\n");
}

TEST_F(LinuxShellTest, AScriptThatMayNotBeExecutedIsADocument) {
  const std::string file = scratch.write("script", "#!/bin/sh\n", 0644);
  EXPECT_FALSE(execute(fromPath(file)));
  EXPECT_EQ(openedArguments(), file + "\n");
}

TEST_F(LinuxShellTest, WhatCannotBeOpenedIsTracedWhenItShows) {
  struct Row {
    int status;
    const char16_t* trace;
  };
  const Row rows[] = {
      {1, u"xdg-open : code 1 (commande mal formée) - "},
      {2, u"xdg-open : code 2 (fichier introuvable) - "},
      {3, u"xdg-open : code 3 (un outil nécessaire est introuvable) - "},
      {4, u"xdg-open : code 4 (l'action a échoué) - "},
      {9, u"xdg-open : code 9 - "},
  };
  const Text file = fromPath(scratch.write("é", "text"));
  for (const Row& row : rows) {
    fakeXdgOpen(row.status);
    traces.clear();
    EXPECT_FALSE(execute(file));
    pollfd wait{.fd = shell.eventsFd(), .events = POLLIN, .revents = 0};
    ASSERT_EQ(::poll(&wait, 1, 10000), 1);
    shell.reap();
    EXPECT_EQ(traces, std::vector<Text>{row.trace + file});
  }
}

TEST_F(LinuxShellTest, HowAProgramEndsIsItsOwnAffair) {
  scratch.script("run", "exit 3");
  EXPECT_FALSE(execute(scratch.text("run")));
  EXPECT_FALSE(didOpen());
  EXPECT_TRUE(traces.empty());
}

TEST_F(LinuxShellTest, AMissingXdgOpenIsAFailureThatIsTraced) {
  std::filesystem::remove(scratch.path("bin/xdg-open"));
  EXPECT_EQ(execute(fromPath(scratch.write("a.txt", "text"))),
            (Failure{53, u"Fichier introuvable : xdg-open (paquet xdg-utils)"}));
  EXPECT_EQ(traces, std::vector<Text>{u"Fichier introuvable : xdg-open (paquet xdg-utils)"});
}

TEST_F(LinuxShellTest, AFailedStartIsAFailureThatIsTraced) {
  scratch.write("orphan", "#!/no/such/interpreter\n", 0755);
  EXPECT_EQ(execute(scratch.text("orphan")).number, 53);
  EXPECT_EQ(traces, std::vector<Text>{u"Fichier introuvable : " + scratch.text("orphan")});
}

TEST_F(LinuxShellTest, AMissingDirectoryAndAnEmptyNameAreFailures) {
  scratch.write("a", "text");
  EXPECT_EQ(execute(scratch.text("a"), {}, scratch.text("missing")).number, 76);
  EXPECT_EQ(execute(u"").number, 53);
  EXPECT_EQ(traces.size(), 2u);
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, WhatACommandTakesIsAsOnWindowsExceptForWhatABoxShows) {
  const PlainShell windows;
  for (const EquivalentRow& row : equivalentRows()) {
    EXPECT_EQ(shell.commandKind(row.command), row.kind);
    if (row.kind == CommandKind::Box || row.command == kWordBasic) continue;
    EXPECT_EQ(windows.commandKind(row.command), row.kind) << toUtf8(row.command);
  }
  EXPECT_EQ(shell.commandKind(u"winver"), CommandKind::Box);
  EXPECT_EQ(windows.commandKind(u"winver"), CommandKind::Words);
  EXPECT_EQ(shell.commandKind(u"gedit"), CommandKind::Words);
}

TEST_F(LinuxShellTest, NotepadTakesTheRestOfTheLineAsOnePath) {
  recorder("bin/editor");
  fakeEditor("my.editor.desktop", "editor --wait %U");
  EXPECT_FALSE(shell.startCommandLine(u"notepad /dir/a  'b\" é.txt "));
  EXPECT_EQ(startedArguments(), "--wait\n/dir/a  'b\" é.txt \n");
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, NotepadGuardsANameThatLooksLikeAnOption) {
  recorder("bin/editor");
  fakeEditor("e.desktop", "editor %f");
  EXPECT_FALSE(shell.startCommandLine(u"notepad -x"));
  EXPECT_EQ(startedArguments(), "./-x\n");
}

TEST_F(LinuxShellTest, NotepadAloneStartsTheEditorWithoutAFile) {
  recorder("bin/editor");
  fakeEditor("e.desktop", "editor --new %f");
  for (const char16_t* line : {u"notepad", u"notepad "}) {
    std::filesystem::remove(started);
    EXPECT_FALSE(shell.startCommandLine(line));
    EXPECT_EQ(startedArguments(), "--new\n");
  }
}

TEST_F(LinuxShellTest, AnEditorOfTheTerminalGetsATerminal) {
  recorder("bin/xterm");
  recorder("bin/ed");
  fakeEditor("e.desktop", "ed %f", "Terminal=true\n");
  EXPECT_FALSE(shell.startCommandLine(u"notepad /a b"));
  EXPECT_EQ(startedArguments(), "-e\ned\n/a b\n");
}

TEST_F(LinuxShellTest, WithoutATerminalTheDesktopOpensTheFile) {
  recorder("bin/ed");
  fakeEditor("e.desktop", "ed %f", "Terminal=true\n");
  const std::string file = scratch.write("a b", "text");
  EXPECT_FALSE(shell.startCommandLine(u"notepad " + fromPath(file)));
  EXPECT_EQ(openedArguments(), file + "\n");
}

TEST_F(LinuxShellTest, WithoutAnEditorTheDesktopOpensTheFile) {
  const std::vector<std::function<void()>> desktops = {
      [] {},                                                                    // no xdg-mime
      [this] { scratch.script("bin/xdg-mime", "exit 4"); },                     // it fails
      [this] { scratch.script("bin/xdg-mime", "echo"); },                       // it knows none
      [this] { scratch.script("bin/xdg-mime", "echo missing.desktop"); },       // not installed
      [this] { fakeEditor("e.desktop", "editor %z"); },                         // ill-formed
      [this] { fakeEditor("e.desktop", "editor %f", "Hidden=true\n"); },        // deleted
      [this] { fakeEditor("e.desktop", "editor %f", "TryExec=not-there\n"); },  // program gone
  };
  const std::string file = scratch.write("a b.txt", "text");
  for (const auto& prepare : desktops) {
    std::filesystem::remove(opened);
    prepare();
    EXPECT_FALSE(shell.startCommandLine(u"notepad " + fromPath(file)));
    EXPECT_EQ(openedArguments(), file + "\n");
  }
  std::filesystem::remove(opened);
  EXPECT_EQ(shell.startCommandLine(u"notepad /é"), (Failure{53, u"Fichier introuvable : /é"}));
  EXPECT_FALSE(didOpen());
  EXPECT_EQ(shell.startCommandLine(u"notepad").description,
            u"Fichier introuvable : " + missingText(equivalentRow(u"notepad")->programs));
}

TEST_F(LinuxShellTest, AnXdgMimeThatHangsIsNotWaitedFor) {
  scratch.script("bin/xdg-mime", "sleep 60");
  const auto before = std::chrono::steady_clock::now();
  const std::string file = scratch.write("a", "text");
  EXPECT_FALSE(shell.startCommandLine(u"notepad " + fromPath(file)));
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(20));
  EXPECT_EQ(openedArguments(), file + "\n");
}

TEST_F(LinuxShellTest, ALauncherWhoseEditorIsMissingHidesNoOther) {
  for (const char* more : {"", "Terminal=true\n"}) {
    recorder("bin/xterm");
    fakeEditor("e.desktop", "no-such-editor %f", more);
    EXPECT_EQ(shell.startCommandLine(u"notepad"),
              (Failure{53, u"Fichier introuvable : " +
                               missingText(equivalentRow(u"notepad")->programs)}));

    const std::string file = scratch.write("a b", "text");
    EXPECT_FALSE(shell.startCommandLine(u"notepad " + fromPath(file)));
    EXPECT_EQ(openedArguments(), file + "\n");
    std::filesystem::remove(opened);

    recorder("bin/mousepad");
    EXPECT_FALSE(shell.startCommandLine(u"notepad /a b"));
    EXPECT_EQ(startedArguments(), "/a b\n");
    EXPECT_FALSE(didOpen());
    std::filesystem::remove(started);
    std::filesystem::remove(scratch.path("bin/mousepad"));
  }
}

TEST_F(LinuxShellTest, AHandlerThatIsMissingHidesNotThePackageOfTheWordProcessor) {
  fakeHandler("application/msword", "words.desktop", "no-such-writer %U");
  EXPECT_EQ(shell.openInWord(u"/modele.doc"),
            (Failure{53, u"Fichier introuvable : lowriter (paquet libreoffice-writer)"}));
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, ExplorerOpensTheRestOfTheLineAsOneFolder) {
  scratch.makeFolders("a 'b/é");
  EXPECT_FALSE(shell.startCommandLine(u"explorer " + scratch.text("a 'b/é")));
  EXPECT_EQ(openedArguments(), scratch.path("a 'b/é") + "\n");
}

TEST_F(LinuxShellTest, ExplorerAloneOpensTheHomeFolder) {
  const Variable home("HOME", scratch.path("data"));
  scratch.makeFolders("data");
  for (const char16_t* line : {u"explorer", u"explorer "}) {
    std::filesystem::remove(opened);
    EXPECT_FALSE(shell.startCommandLine(line));
    EXPECT_EQ(openedArguments(), scratch.path("data") + "\n");
  }
}

TEST_F(LinuxShellTest, AFolderThatIsMissingOrCannotBeOpenedIsToldByExplorer) {
  EXPECT_EQ(shell.startCommandLine(u"explorer /é"), (Failure{53, u"Fichier introuvable : /é"}));
  EXPECT_FALSE(didOpen());

  fakeXdgOpen(4);
  EXPECT_FALSE(shell.startCommandLine(u"explorer " + scratch.text()));
  EXPECT_TRUE(didOpen());
  EXPECT_EQ(traces.back(), u"xdg-open : code 4 (l'action a échoué) - " + scratch.text());

  std::filesystem::remove(scratch.path("bin/xdg-open"));
  EXPECT_EQ(shell.startCommandLine(u"explorer " + scratch.text()),
            (Failure{53, u"Fichier introuvable : xdg-open (paquet xdg-utils)"}));
}

TEST_F(LinuxShellTest, AnInstalledEditorServesADesktopThatNamesNone) {
  recorder("bin/mousepad");
  EXPECT_FALSE(shell.startCommandLine(u"notepad /a b.txt"));
  EXPECT_EQ(startedArguments(), "/a b.txt\n");
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, TheToolsOfWindowsAreWhatIsInstalledInTheirPlace) {
  for (const char16_t* command : {u"write", u"charmap", u"control", u"cmd.exe", u"regedit"}) {
    const EquivalentRow& row = *equivalentRow(command);
    EXPECT_EQ(shell.startCommandLine(command),
              (Failure{53, u"Fichier introuvable : " + missingText(row.programs)}));
    EXPECT_EQ(traces.back(), u"Fichier introuvable : " + missingText(row.programs));

    recorder("bin/" + std::string(row.programs.back().program));
    EXPECT_FALSE(shell.startCommandLine(command));
    EXPECT_EQ(startedArguments(), "");
    std::filesystem::remove(started);
    std::filesystem::remove(scratch.path("bin/" + std::string(row.programs.back().program)));
  }
}

TEST_F(LinuxShellTest, AToolWithoutAKindOfDocumentHasNoHandler) {
  fakeEditor("e.desktop", "editor");
  recorder("bin/editor");
  scratch.script("bin/xdg-mime", "echo e.desktop");  // whatever it is asked for
  for (const char16_t* command : {u"charmap", u"control", u"regedit"}) {
    EXPECT_EQ(shell.startCommandLine(command).number, 53);
  }
  EXPECT_FALSE(didOpen());
  EXPECT_FALSE(std::filesystem::exists(started));
}

TEST_F(LinuxShellTest, AToolThatTakesNoPathGetsItsWordsAsAnyProgram) {
  recorder("bin/xterm");
  EXPECT_EQ(shell.startCommandLine(u"cmd.exe /k dir"),
            (Failure{53, u"Fichier introuvable : cmd.exe"}));
}

TEST_F(LinuxShellTest, WriteIsTheHandlerOfItsDocumentsWithoutAWriter) {
  recorder("bin/abiword");
  fakeHandler("application/rtf", "abiword.desktop", "abiword %U");
  EXPECT_FALSE(shell.startCommandLine(u"write"));
  EXPECT_EQ(startedArguments(), "");

  std::filesystem::remove(started);
  scratch.script("bin/abiword", "exit 1");
  recorder("bin/lowriter");
  EXPECT_FALSE(shell.startCommandLine(u"write /a b"));
  EXPECT_EQ(startedArguments(), "/a b\n");
}

TEST_F(LinuxShellTest, WithoutAWriterItsDocumentIsNotOpenedElsewhere) {
  const Text document = fromPath(scratch.write("temp.rtf", "{\\rtf1}"));
  EXPECT_EQ(shell.startCommandLine(u"write " + document),
            (Failure{53, u"Fichier introuvable : lowriter (paquet libreoffice-writer)"}));
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, WordOpensADocumentInTheWriterOrItsHandler) {
  fakeHandler("application/msword", "words.desktop", "words %U");
  recorder("bin/words");
  const std::string letter = scratch.write("é a/modele.doc", "{\\rtf1}");
  EXPECT_FALSE(shell.openInWord(fromPath(letter)));
  EXPECT_EQ(startedArguments(), letter + "\n");

  std::filesystem::remove(started);
  scratch.script("bin/words", "exit 1");
  recorder("bin/lowriter");
  EXPECT_FALSE(shell.openInWord(fromPath(letter)));
  EXPECT_EQ(startedArguments(), letter + "\n");
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, ALetterThatIsMissingStartsNoWordProcessor) {
  recorder("bin/lowriter");
  const Failure missing{53, u"Fichier introuvable : " + scratch.text("modele.doc")};
  EXPECT_EQ(shell.openInWord(scratch.text("modele.doc")), missing);
  EXPECT_EQ(traces, std::vector<Text>{missing.description});
  EXPECT_FALSE(didOpen());
  EXPECT_FALSE(std::filesystem::exists(started));
}

TEST_F(LinuxShellTest, WithoutAWordProcessorNothingIsOpenedAndThePackageIsNamed) {
  EXPECT_EQ(shell.openInWord(u"/modele.doc"),
            (Failure{53, u"Fichier introuvable : lowriter (paquet libreoffice-writer)"}));
  EXPECT_FALSE(didOpen());
}

TEST_F(LinuxShellTest, AnyOtherCommandLineIsSplit) {
  recorder("bin/calculator");
  EXPECT_FALSE(shell.startCommandLine(u"calculator 'a b' c\\ d"));
  EXPECT_EQ(startedArguments(), "a b\nc d\n");
}

TEST_F(LinuxShellTest, ACommandLineMayNameAProgramByItsPath) {
  const std::string program = recorder("my programs/run");
  EXPECT_FALSE(shell.startCommandLine(u"'" + fromPath(program) + u"' x"));
  EXPECT_EQ(startedArguments(), "x\n");
}

TEST_F(LinuxShellTest, ACommandLineThatCannotBeStartedIsAFailureThatNamesIt) {
  EXPECT_EQ(shell.startCommandLine(u"winver"), (Failure{53, u"Fichier introuvable : winver"}));
  EXPECT_EQ(shell.startCommandLine(u"").number, 53);
  EXPECT_EQ(traces.size(), 2u);
}

TEST_F(LinuxShellTest, TheBrowserVariableStaysForWhatIsOpened) {
  const Variable browser("BROWSER", "my-browser");
  scratch.script("bin/xdg-open", "echo \"$BROWSER\" > '" + opened + ".part'\nmv '" + opened +
                                     ".part' '" + opened + "'");
  EXPECT_FALSE(execute(u"http://localhost/"));
  EXPECT_EQ(openedArguments(), "my-browser\n");
}

}  // namespace
