// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Options.h"

#include "platform/Version.h"
#include "text/Utf.h"

std::optional<Options> parseOptions(const std::vector<std::string>& arguments) {
  constexpr std::string_view kFolder = "--program-folder";
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    std::string folder;
    if (argument == "--trace") {
      options.trace = true;
    } else if (argument == "--test-window") {
      options.testWindow = true;
    } else if (argument == kFolder && i + 1 < arguments.size()) {
      folder = arguments[++i];
      if (folder.empty()) return std::nullopt;
    } else if (argument.starts_with(std::string(kFolder) + "=")) {
      folder = argument.substr(kFolder.size() + 1);
      if (folder.empty()) return std::nullopt;
    } else {
      return std::nullopt;
    }
    if (!folder.empty()) options.programFolder = fromUtf8Lossless(folder);
  }
  return options;
}

std::string usageText() {
  return "Usage : tavrollo [--program-folder DOSSIER] [--trace]\n"
         "        tavrollo [--program-folder DOSSIER] --test-window\n"
         "        tavrollo --version | --help\n"
         "\n"
         "Lance Tavrollo dans la zone de notification : les pages de l'application web ouvrent\n"
         "des documents et lancent des programmes.\n"
         "\n"
         "  --program-folder DOSSIER  le dossier des réglages et de l'application web\n"
         "                            (par défaut, celui du programme s'il en contient une, sinon\n"
         "                            ~/Tavrollo) ; rempli au premier lancement\n"
         "  --trace                   écrit aussi la trace sur la sortie d'erreur\n"
         "  --test-window             ouvre seulement la fenêtre de test : les conversions UTF-8 et\n"
         "                            la relecture de shortQrCode.js\n";
}

std::optional<std::string> textAskedFor(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    if (argument == "--help") return usageText();
    if (argument == "--version") return std::string("tavrollo ") + kVersionText + '\n';
  }
  return std::nullopt;
}
