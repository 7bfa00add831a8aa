// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WindowsShell.h"

#include <windows.h>

#include <shellapi.h>
#include <utility>

#include "platform/windows/Com.h"
#include "platform/windows/Process.h"
#include "platform/windows/SystemError.h"
#include "platform/windows/Wide.h"
#include "platform/windows/WordAutomation.h"

#undef ShellExecute  // a macro of the system's headers would give the interface's another name

namespace {

const wchar_t* orNull(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

// ERROR_SUCCESS or the system's error.
DWORD execute(const ShellRequest& request) {
  const ComApartment apartment;  // some documents are opened by components
  const std::wstring operation = wide(request.operation);
  const std::wstring file = wide(request.file);
  const std::wstring parameters = wide(request.parameters);
  const std::wstring directory = wide(request.directory);
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  info.lpVerb = orNull(operation);
  info.lpFile = file.c_str();
  info.lpParameters = orNull(parameters);
  info.lpDirectory = orNull(directory);
  info.nShow = request.show == ShowState::Maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  return ::ShellExecuteExW(&info) ? ERROR_SUCCESS : ::GetLastError();
}

// A program that asks for more rights can be started by the shell alone.
DWORD startThroughShell(const Text& commandLine) {
  const std::size_t blank = commandLine.find(u' ');
  ShellRequest request{.file = commandLine.substr(0, blank)};
  if (blank != Text::npos) request.parameters = commandLine.substr(blank + 1);
  return execute(request);
}

}  // namespace

WindowsShell::WindowsShell(Trace trace) : trace_(std::move(trace)) {}

Failure WindowsShell::ShellExecute(const ShellRequest& request) {
  const DWORD error = request.file.empty() ? ERROR_FILE_NOT_FOUND : execute(request);
  return traced(error == 0 ? Failure() : about(failureFromSystem(error), request.file));
}

Failure WindowsShell::startCommandLine(const Text& commandLine) {
  DWORD error = startCommand(wide(commandLine), {});
  if (error == kElevationRequired) error = startThroughShell(commandLine);
  return traced(error == 0 ? Failure() : about(failureFromSystem(error), commandLine));
}

Failure WindowsShell::openInWord(const Text& document) {
  return traced(openThroughWordBasic(document));
}

Failure WindowsShell::traced(const Failure& failure) {
  if (failure) trace_(failure.description);
  return failure;
}
