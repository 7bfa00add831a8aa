// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/Shell.h"

// A shell that starts nothing and writes down what it was asked for.
class RecordingShell : public Shell {
 public:
  explicit RecordingShell(std::vector<Text>& done) : done_(done) {}

  Failure ShellExecute(const ShellRequest& request) override {
    done_.push_back(request.operation + u" file=" + request.file + u" parameters=" +
                    request.parameters + u" directory=" + request.directory +
                    (request.show == ShowState::Maximised ? u" maximised" : u" normal"));
    return failure;
  }

  Failure startCommandLine(const Text& commandLine) override {
    done_.push_back(u"run " + commandLine);
    return failure;
  }

  Failure openInWord(const Text& document) override {
    done_.push_back(u"word " + document);
    return failure;
  }

  Failure failure;

 private:
  std::vector<Text>& done_;
};
