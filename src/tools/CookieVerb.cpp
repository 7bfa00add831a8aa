// SPDX-License-Identifier: GPL-3.0-or-later
#include <charconv>
#include <cstdint>
#include <optional>

#include "bridge/CookieStoreReader.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

constexpr int kNothingFound = 1;

constexpr std::string_view kUsage =
    "Usage : tavrolloctl cookie BASE [--offset N] [--hosts FICHIER]\n"
    "Cherche la commande dans une base de cookies (cookies.sqlite, Cookies) : affiche sa position,\n"
    "l'hôte de la page (- si la base n'est pas SQLite) et sa valeur, en octets.\n"
    "  --offset N        la position connue, à partir de 1, où commence la recherche\n"
    "  --hosts FICHIER   des hôtes autorisés en plus de cette machine, un par ligne\n"
    "Code de retour : 0 trouvée, 1 aucune commande acceptée, 2 base illisible.\n";

struct Request {
  std::string store;
  std::int32_t offset = 0;
  std::optional<std::string> hostsFile;
};

std::optional<std::int32_t> parseOffset(std::string_view text) {
  std::int32_t offset = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), offset);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return offset;
}

std::optional<Request> parseRequest(const std::vector<std::string>& arguments) {
  Request request;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool hasNext = i + 1 < arguments.size();
    if (argument == "--offset" && hasNext) {
      const std::optional<std::int32_t> offset = parseOffset(arguments[++i]);
      if (!offset) return std::nullopt;
      request.offset = *offset;
    } else if (argument == "--hosts" && hasNext) {
      request.hostsFile = arguments[++i];
    } else if (request.store.empty() && !argument.empty() && !argument.starts_with("--")) {
      request.store = argument;
    } else {
      return std::nullopt;
    }
  }
  return request.store.empty() ? std::nullopt : std::optional(request);
}

void writeFound(const ScanResult& scan, std::ostream& out) {
  out << "position\t" << scan.position << '\n';
  out << "host\t" << (scan.hasHost ? scan.host : "-") << '\n';
  out << "value\t" << scan.value << '\n';
}

}  // namespace

int cookieVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << kUsage;
    return kDone;
  }
  const std::optional<Request> request = parseRequest(arguments);
  if (!request) {
    err << kUsage;
    return kFailed;
  }
  AllowedHosts hosts;
  if (request->hostsFile) {
    std::string list;
    int status = kDone;
    if (!readArgumentFile({*request->hostsFile}, kUsage, out, err, list, status)) return status;
    hosts = AllowedHosts(list);
  }

  const std::optional<StoreReading> reading =
      readStore(fromUtf8Lossless(request->store), request->offset, hosts, std::nullopt, {});
  if (!reading) {
    err << "La base " << request->store << " change pendant la lecture.\n";
    return kFailed;
  }
  const ScanResult& scan = reading->scan;
  for (const std::string& host : scan.refusedHosts) err << toUtf8(refusedHostLine(host)) << '\n';
  switch (scan.outcome) {
    case ScanResult::Outcome::Found: writeFound(scan, out); return kDone;
    case ScanResult::Outcome::NotFound: return kNothingFound;
    case ScanResult::Outcome::Failed: break;
  }
  err << toUtf8(scanErrorLine(scan.failure, scan.position)) << '\n';
  return kFailed;
}
