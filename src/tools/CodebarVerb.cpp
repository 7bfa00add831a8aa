// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <charconv>
#include <csignal>
#include <iostream>
#include <optional>

#include "barcode/ModcodeBarre.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

constexpr int kNotEncodable = 1;

constexpr std::string_view kUsage =
    "Usage : tavrolloctl codebar TYPE SOURCE [--addon A] [--key]\n"
    "        tavrolloctl codebar --batch\n"
    "Affiche, en UTF-8, les caractères qui dessinent le code barre dans sa police :\n"
    "  1, Code39             polices Code 3 de 9 et Code 3 de 9 Lab\n"
    "  2, EAN13              police Code EAN13\n"
    "  3, EAN8               police Code EAN13\n"
    "  4, Interleaved2of5    police Code 2 of 5 interleaved\n"
    "  5, Code128            police Code 128\n"
    "Le TYPE est ce nombre ou ce nom, en majuscules ou minuscules, avec ou sans tirets et espaces.\n"
    "  --addon A   2 ou 5 chiffres supplémentaires (EAN13 et EAN8)\n"
    "  --key       ajoute une clé de contrôle (Interleaved2of5)\n"
    "  --          ce qui suit n'est plus une option : codebar Code39 -- -12\n"
    "  --batch     lit sur l'entrée standard des lignes de quatre champs séparés par des\n"
    "              tabulations, TYPE, SOURCE, A et 0 ou 1 pour la clé (ceux de la fin peuvent\n"
    "              manquer), et écrit une ligne pour chacune, vide si rien ne peut être codé\n"
    "Code de retour : 0 codé, ou toutes les lignes lues ; 1 ne peut pas être codé (la ligne est\n"
    "vide) ; 2 arguments non valables ou échec de l'écriture.\n";

struct TypeName {
  std::string_view name;  // in lower case, without blanks and hyphens
  std::uint8_t type;
};

constexpr TypeName kTypeNames[] = {{"code39", ModcodeBarre::kCode39},
                                   {"ean13", ModcodeBarre::kEan13},
                                   {"ean8", ModcodeBarre::kEan8},
                                   {"interleaved2of5", ModcodeBarre::kInterleaved2of5},
                                   {"code128", ModcodeBarre::kCode128}};

struct Request {
  std::uint8_t type = 0;
  std::string_view source;
  std::string_view addOn;
  bool withCheck = false;
};

std::string plainName(std::string_view text) {
  std::string name;
  for (const char c : text) {
    if (c == ' ' || c == '-') continue;
    name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return name;
}

// A type by its number, which need not be one that can be encoded, or by its name.
std::optional<std::uint8_t> parseType(std::string_view text) {
  std::uint8_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size()) return number;

  const std::string name = plainName(text);
  for (const TypeName& row : kTypeNames) {
    if (row.name == name) return row.type;
  }
  return std::nullopt;
}

std::optional<Request> parseRequest(const std::vector<std::string>& arguments) {
  Request request;
  std::vector<std::string_view> plain;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (optionsEnded || !argument.starts_with("--")) {
      plain.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (argument == "--addon" && i + 1 < arguments.size()) {
      request.addOn = arguments[++i];
    } else if (argument == "--key") {
      request.withCheck = true;
    } else {
      return std::nullopt;
    }
  }
  if (plain.size() != 2) return std::nullopt;
  const std::optional<std::uint8_t> type = parseType(plain[0]);
  if (!type) return std::nullopt;
  request.type = *type;
  request.source = plain[1];
  return request;
}

std::optional<Request> parseLine(std::string_view line) {
  std::array<std::string_view, 4> fields{"", "", "", "0"};
  std::size_t count = 0;
  for (std::size_t tab = 0; tab != std::string_view::npos; ++count) {
    if (count == fields.size()) return std::nullopt;
    tab = line.find('\t');
    fields[count] = line.substr(0, tab);
    if (tab != std::string_view::npos) line.remove_prefix(tab + 1);
  }
  const auto& [name, source, addOn, key] = fields;
  const std::optional<std::uint8_t> type = parseType(name);
  if (count < 2 || !type || (key != "0" && key != "1")) return std::nullopt;
  return Request{.type = *type, .source = source, .addOn = addOn, .withCheck = key == "1"};
}

// Encodes one request after the other; what they need is allocated once.
class Encoder {
 public:
  // The font's characters in UTF-8, until the next call.
  const std::string& encode(const Request& request) {
    fromUtf8Into(source_, request.source);
    fromUtf8Into(addOn_, request.addOn);
    ModcodeBarre::CodeBarInto(result_, request.type, source_, addOn_, request.withCheck);
    toUtf8Into(bytes_, result_);
    return bytes_;
  }

 private:
  Text source_;
  Text addOn_;
  Text result_;
  std::string bytes_;
};

// Whoever gives one line and waits for its answer gets it; who gives many is not slowed down.
int encodeLines(std::istream& in, std::ostream& out) {
  std::string line;
  Encoder encoder;
  while (out && std::getline(in, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (const std::optional<Request> request = parseLine(line)) out << encoder.encode(*request);
    out << '\n';
    if (in.rdbuf()->in_avail() <= 0) out.flush();
  }
  return kDone;
}

// As with any filter, a reader that has seen enough ends it without a word.
void endWithTheReader() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_DFL);
#endif
}

}  // namespace

int codebarVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << kUsage;
    return kDone;
  }
  if (arguments.size() == 1 && arguments[0] == "--batch") {
    endWithTheReader();
    std::cin.tie(nullptr);
    return encodeLines(std::cin, out);
  }
  const std::optional<Request> request = parseRequest(arguments);
  if (!request) {
    err << kUsage;
    return kFailed;
  }
  const std::string result = Encoder().encode(*request);
  out << result << '\n';
  return result.empty() ? kNotEncodable : kDone;
}
