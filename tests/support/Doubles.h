// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Autostart.h"
#include "platform/DefaultBrowser.h"
#include "platform/Questions.h"
#include "platform/Shell.h"
#include "text/Utf.h"

// Stand-ins for what acts on the user's world. Each writes what it was asked into one list, so that
// a test can look at the order of everything.

using Journal = std::vector<std::string>;

class RecordingShell : public Shell {
 public:
  explicit RecordingShell(Journal& journal) : journal_(journal) {}

  Failure ShellExecute(const ShellRequest& request) override {
    requests.push_back(request);
    journal_.push_back("execute " + toUtf8(request.file));
    if (!throws.empty()) throw std::runtime_error(throws);
    return failure;
  }
  CommandKind commandKind(TextView command) const override {
    const auto found = kinds.find(Text(command));
    return found == kinds.end() ? Shell::commandKind(command) : found->second;
  }
  Failure startCommandLine(const Text& commandLine) override {
    journal_.push_back("start " + toUtf8(commandLine));
    return failure;
  }
  Failure openInWord(const Text& document) override {
    journal_.push_back("word " + toUtf8(document));
    return failure;
  }

  std::vector<ShellRequest> requests;
  std::map<Text, CommandKind> kinds;  // where they are others than on Windows
  Failure failure;
  std::string throws;  // what ShellExecute throws, when anything

 private:
  Journal& journal_;
};

// The switch of a session's start.
class RecordingAutostart : public Autostart {
 public:
  explicit RecordingAutostart(Journal& journal) : journal_(journal) {}

  bool isOn() override { return on; }
  Failure set(bool wanted) override {
    journal_.push_back(wanted ? "autostart on" : "autostart off");
    if (!failure) on = wanted;
    return failure;
  }

  bool on = false;
  Failure failure;

 private:
  Journal& journal_;
};

// Gives the answers it was loaded with, in order; a question too many is an error of the test.
class ScriptedQuestions : public Questions {
 public:
  explicit ScriptedQuestions(Journal& journal) : journal_(journal) {}

  Answer ask(const Box& box) override {
    boxes.push_back(box);
    journal_.push_back("ask " + toUtf8(box.title));
    if (answers.empty()) throw std::logic_error("unexpected box: " + toUtf8(box.text));
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  std::optional<Text> chooseFile(const FileRequest& request) override {
    fileRequests.push_back(request);
    journal_.push_back("choose " + toUtf8(request.title));
    if (files.empty()) throw std::logic_error("unexpected file dialog: " + toUtf8(request.title));
    std::optional<Text> file = files.front();
    files.pop_front();
    return file;
  }
  std::optional<Text> chooseFolder(const FolderRequest& request) override {
    folderRequests.push_back(request);
    journal_.push_back("choose " + toUtf8(request.title));
    if (folders.empty()) throw std::logic_error("unexpected dialog: " + toUtf8(request.title));
    std::optional<Text> folder = folders.front();
    folders.pop_front();
    return folder;
  }
  std::optional<Text> chooseNewFile(const SaveRequest& request) override {
    saveRequests.push_back(request);
    journal_.push_back("save " + toUtf8(request.title));
    if (newFiles.empty()) throw std::logic_error("unexpected dialog: " + toUtf8(request.title));
    std::optional<Text> file = newFiles.front();
    newFiles.pop_front();
    return file;
  }

  std::vector<Box> boxes;
  std::deque<Answer> answers;
  std::vector<FileRequest> fileRequests;
  std::deque<std::optional<Text>> files;  // nothing: the dialog is cancelled
  std::vector<FolderRequest> folderRequests;
  std::deque<std::optional<Text>> folders;  // as files
  std::vector<SaveRequest> saveRequests;
  std::deque<std::optional<Text>> newFiles;  // as files

 private:
  Journal& journal_;
};

// A registry of the keys it was given; everything else is not found.
class FakeBrowser : public DefaultBrowser {
 public:
  explicit FakeBrowser(Journal& journal) : journal_(journal) {}

  std::uint32_t RegRead(TextView key, Text& value) override {
    journal_.push_back("read " + toUtf8(key));
    if (error != 0) return error;
    const auto found = values.find(Text(key));
    if (found == values.end()) return kRegistryFileNotFound;
    value = found->second;
    return 0;
  }
  void RegWrite(TextView key, TextView value) override {
    journal_.push_back("write " + toUtf8(key) + " = " + toUtf8(value));
  }

  std::map<Text, Text> values;
  std::uint32_t error = 0;

 private:
  Journal& journal_;
};
