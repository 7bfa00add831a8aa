// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Failure.h"
#include "text/Text.h"

// Opens documents and starts programs on the user's desktop.

enum class ShowState { Normal, Maximised };

// A request to the desktop, as its pages and menus make it.
struct ShellRequest {
  Text operation = {};   // "open", or "" for the document's default operation
  Text file = {};        // a document, a program or an address
  Text parameters = {};  // for a program: one command-line tail, quoted as a shell would
  Text directory = {};   // where a program starts, and what a relative file is relative to
  ShowState show = ShowState::Normal;
};

// What the command is that a command line begins with.
enum class CommandKind {
  Words,    // a program, and words that it is given
  OnePath,  // a program, and one path with blanks and all: "notepad " + path
  Box,  // nothing that could be started: the caller tells in a box what it would show ("winver")
};

// `word` as one word of ShellRequest::parameters: bare when nothing in it needs quoting.
Text parameterWord(const Text& word);

// The same for a word that names a file: no program takes it for an option.
Text fileWord(const Text& fileName);

class Shell {
 public:
  virtual ~Shell() = default;

  // Opens a document with its program, or starts a program. Never waits for it. A failure is also
  // traced; one that shows only later (no program for the document) is traced alone.
  virtual Failure ShellExecute(const ShellRequest& request) = 0;

  // `command` is the first word of a command line. These are the kinds on Windows.
  virtual CommandKind commandKind(TextView command) const {
    const bool path = command == u"notepad" || command == u"write" || command == u"explorer";
    return path ? CommandKind::OnePath : CommandKind::Words;
  }

  // Starts a command line in a normal window with the focus, without waiting: a program's name and
  // what it is to be given, such as "notepad " + path (nothing in it is quoted).
  virtual Failure startCommandLine(const Text& commandLine) = 0;

  // Opens a document in the word processor that answers to "word.basic", and shows that. The
  // failure says what is missing.
  virtual Failure openInWord(const Text& document) = 0;

  // Readable when a started program has ended and reap() is to be called; -1 where a system needs
  // no such care.
  virtual int eventsFd() const { return -1; }

  // Collects the programs that have ended and traces what they could not open.
  virtual void reap() {}
};
