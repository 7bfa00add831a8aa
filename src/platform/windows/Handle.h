// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>
#include <windows.h>

// Whoever else has a file open is neither kept out nor in the way.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A handle that closes itself.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE value) : value_(value == nullptr ? INVALID_HANDLE_VALUE : value) {}
  ~Handle() { close(); }
  Handle(Handle&& other) noexcept : value_(other.release()) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      close();
      value_ = other.release();
    }
    return *this;
  }

  HANDLE get() const { return value_; }
  bool isOpen() const { return value_ != INVALID_HANDLE_VALUE; }
  HANDLE release() { return std::exchange(value_, INVALID_HANDLE_VALUE); }

  // The handle is gone in any case, also when this says false (GetLastError tells why).
  bool close() { return !isOpen() || ::CloseHandle(release()) != 0; }

 private:
  HANDLE value_ = INVALID_HANDLE_VALUE;
};
