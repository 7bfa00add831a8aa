// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <objbase.h>

// The system's components, ready to be used in this thread as long as this stands.
class ComApartment {
 public:
  ComApartment()
      : ready_(SUCCEEDED(
            ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
  ~ComApartment() {
    if (ready_) ::CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool ready_;  // false also where the thread is ready in another way
};

// A component's interface that is given back.
template <class Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ~ComPointer() {
    if (pointer_) pointer_->Release();
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  Interface* get() const { return pointer_; }
  void** out() { return reinterpret_cast<void**>(&pointer_); }

 private:
  Interface* pointer_ = nullptr;
};
