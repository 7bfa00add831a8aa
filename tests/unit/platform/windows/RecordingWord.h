// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>
#include <windows.h>

#include <oleauto.h>

#include "platform/windows/Com.h"

// A word processor that only writes down what it is asked. It hands itself out, and belongs to its
// test: nobody's last Release ends it.
class RecordingWord final : public IClassFactory, public IDispatch {
 public:
  std::vector<std::wstring> calls;  // methods, each with its text where it was given one
  std::wstring refuses;             // the method that fails
  std::wstring lacks;               // the method that it does not have
  long references = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    if (::IsEqualIID(wanted, IID_IUnknown) || ::IsEqualIID(wanted, IID_IClassFactory)) {
      *object = static_cast<IClassFactory*>(this);
    } else if (::IsEqualIID(wanted, IID_IDispatch)) {
      *object = static_cast<IDispatch*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID wanted,
                                           void** object) override {
    return QueryInterface(wanted, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/,
                                        ITypeInfo** /*info*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*unused*/, LPOLESTR* names, UINT count,
                                          LCID /*locale*/, DISPID* ids) override {
    const std::wstring name = count == 1 ? *names : L"";
    for (DISPID id = 0; id < 2; ++id) {
      if (name != methods_[id] || name == lacks) continue;
      *ids = id;
      return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*unused*/, LCID /*locale*/, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* /*result*/,
                                   EXCEPINFO* /*exception*/, UINT* /*argument*/) override {
    if (flags != DISPATCH_METHOD || parameters->cNamedArgs != 0) return DISP_E_MEMBERNOTFOUND;
    std::wstring call = methods_[id];
    for (UINT i = 0; i < parameters->cArgs; ++i) {
      const VARIANT& argument = parameters->rgvarg[i];
      if (argument.vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
      call += L" " + std::wstring(argument.bstrVal, ::SysStringLen(argument.bstrVal));
    }
    calls.push_back(call);
    return methods_[id] == refuses ? DISP_E_EXCEPTION : S_OK;
  }

 private:
  const std::wstring methods_[2] = {L"AppShow", L"FileOpen"};
};

// Lets `word` answer to "word.basic" in this thread until the scope ends.
class AnswersToWordBasic {
 public:
  explicit AnswersToWordBasic(RecordingWord& word) {
    // {6F2C5B0E-6D0B-4F0C-9B7B-1E5E0C6A7A41}
    constexpr CLSID kClass = {
        0x6F2C5B0E, 0x6D0B, 0x4F0C, {0x9B, 0x7B, 0x1E, 0x5E, 0x0C, 0x6A, 0x7A, 0x41}};
    constexpr wchar_t kClassText[] = L"{6F2C5B0E-6D0B-4F0C-9B7B-1E5E0C6A7A41}";
    named_ = ::RegSetKeyValueW(HKEY_CLASSES_ROOT, L"word.basic\\CLSID", nullptr, REG_SZ, kClassText,
                               sizeof kClassText) == ERROR_SUCCESS;
    offered_ =
        SUCCEEDED(::CoRegisterClassObject(kClass, static_cast<IClassFactory*>(&word),
                                          CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &offer_));
  }
  ~AnswersToWordBasic() {
    if (offered_) ::CoRevokeClassObject(offer_);
    if (named_) ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"word.basic");
  }
  AnswersToWordBasic(const AnswersToWordBasic&) = delete;
  AnswersToWordBasic& operator=(const AnswersToWordBasic&) = delete;

  bool named() const { return named_; }
  bool offered() const { return offered_; }

 private:
  const ComApartment apartment_;  // the one that the shell's own calls are then in, too
  DWORD offer_ = 0;
  bool named_ = false;
  bool offered_ = false;
};
