// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WordAutomation.h"

#include <windows.h>

#include <oleauto.h>

#include "platform/windows/Com.h"
#include "platform/windows/Wide.h"

namespace {

Failure noServer() { return {429, u"Un composant ActiveX ne peut pas créer d'objet : word.basic"}; }

Failure refused() { return {440, u"Erreur Automation"}; }

// Calls a method with no argument or with one text.
bool call(IDispatch& object, const wchar_t* method, const std::wstring* argument) {
  std::wstring name = method;
  LPOLESTR names = name.data();
  DISPID id = 0;
  if (FAILED(object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) return false;
  VARIANT value;
  ::VariantInit(&value);
  if (argument) {
    value.vt = VT_BSTR;
    value.bstrVal = ::SysAllocString(argument->c_str());
  }
  DISPPARAMS parameters{};
  parameters.rgvarg = &value;
  parameters.cArgs = argument ? 1 : 0;
  const HRESULT result = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                       &parameters, nullptr, nullptr, nullptr);
  ::VariantClear(&value);
  return SUCCEEDED(result);
}

}  // namespace

Failure openThroughWordBasic(const Text& document) {
  const ComApartment apartment;
  CLSID server{};
  ComPointer<IDispatch> word;
  if (FAILED(::CLSIDFromProgID(L"word.basic", &server)) ||
      FAILED(::CoCreateInstance(server, nullptr, CLSCTX_SERVER, IID_IDispatch, word.out()))) {
    return noServer();
  }
  const std::wstring path = wide(document);
  const bool done = call(*word.get(), L"AppShow", nullptr) && call(*word.get(), L"FileOpen", &path);
  return done ? Failure() : refused();
}
