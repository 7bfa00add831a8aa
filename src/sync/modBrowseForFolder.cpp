// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/modBrowseForFolder.h"

#include "sync/SyncPaths.h"

Text ChoisirDossier(const Text& title, const Text& defaultPath, Questions& questions) {
  const std::optional<Text> chosen =
      questions.chooseFolder({.title = title, .startFolder = defaultPath});
  return chosen ? AjouterAntislash(*chosen) : defaultPath;
}
