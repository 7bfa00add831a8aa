// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/RegistryDefaultBrowser.h"

#include <optional>
#include <windows.h>

#include "platform/windows/Wide.h"

namespace {

struct RootRow {
  TextView name;
  HKEY key;
};

// A value's place: its root, the path of its key, its name ("" the default value).
struct Place {
  HKEY root = nullptr;
  std::wstring key;
  std::wstring value;
};

std::optional<HKEY> rootOf(TextView name) {
  const RootRow rows[] = {
      {u"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},   {u"HKCR", HKEY_CLASSES_ROOT},
      {u"HKEY_CURRENT_USER", HKEY_CURRENT_USER},   {u"HKCU", HKEY_CURRENT_USER},
      {u"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE}, {u"HKLM", HKEY_LOCAL_MACHINE}};
  for (const RootRow& row : rows) {
    if (row.name == name) return row.key;
  }
  return std::nullopt;
}

std::optional<Place> placeOf(TextView path) {
  const std::size_t root = path.find(u'\\');
  if (root == TextView::npos) return std::nullopt;
  const std::optional<HKEY> rootKey = rootOf(path.substr(0, root));
  if (!rootKey) return std::nullopt;

  TextView rest = path.substr(root + 1);
  Place place{.root = *rootKey, .key = {}, .value = {}};
  if (!rest.ends_with(u'\\')) {
    const std::size_t cut = rest.rfind(u'\\');
    place.value = wide(cut == TextView::npos ? rest : rest.substr(cut + 1));
    rest = cut == TextView::npos ? TextView() : rest.substr(0, cut);
  }
  while (rest.ends_with(u'\\')) rest.remove_suffix(1);
  place.key = wide(rest);
  return place;
}

// A text value, its variables replaced. The system's error, or 0.
LSTATUS readText(const Place& place, std::wstring& text) {
  constexpr DWORD kTexts = RRF_RT_REG_SZ;  // also those with variables, which are then replaced
  DWORD bytes = 0;
  LSTATUS error = ERROR_MORE_DATA;
  while (error == ERROR_MORE_DATA) {
    text.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    error = ::RegGetValueW(place.root, place.key.c_str(), place.value.c_str(), kTexts, nullptr,
                           text.data(), &bytes);
  }
  if (error != ERROR_SUCCESS) return error;
  text.resize(text.find(L'\0'));
  return ERROR_SUCCESS;
}

}  // namespace

std::uint32_t RegistryDefaultBrowser::RegRead(TextView key, Text& value) {
  const std::optional<Place> place = placeOf(key);
  if (!place) return kRegistryPathNotFound;
  std::wstring text;
  const LSTATUS error = readText(*place, text);
  if (error != ERROR_SUCCESS) return static_cast<std::uint32_t>(HRESULT_FROM_WIN32(error));
  value = fromWide(text);
  return 0;
}

void RegistryDefaultBrowser::RegWrite(TextView key, TextView value) {
  const std::optional<Place> place = placeOf(key);
  if (!place) return;
  const std::wstring text = wide(value);
  HKEY opened = nullptr;
  if (::RegCreateKeyExW(place->root, place->key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        &opened, nullptr) != ERROR_SUCCESS) {
    return;
  }
  ::RegSetValueExW(opened, place->value.c_str(), 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  ::RegCloseKey(opened);
}
