// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Failure.h"

#include <cerrno>

namespace {

struct ErrnoRow {
  int error;
  int number;
  TextView description;
};

constexpr ErrnoRow kErrnoRows[] = {
    {ENOENT, 53, u"Fichier introuvable"},    {EIO, 57, u"Erreur d'E/S de périphérique"},
    {ENOSPC, 61, u"Disque plein"},
#ifdef EDQUOT
    {EDQUOT, 61, u"Disque plein"},
#endif
    {EMFILE, 67, u"Trop de fichiers"},       {ENFILE, 67, u"Trop de fichiers"},
    {EACCES, 70, u"Permission refusée"},     {EPERM, 70, u"Permission refusée"},
    {EROFS, 70, u"Permission refusée"},      {ENOTDIR, 76, u"Chemin d'accès introuvable"},
    {EEXIST, 58, u"Le fichier existe déjà"}, {EFBIG, 75, u"Fichier trop volumineux pour ce disque"},
};

Failure pathOrFileAccess() { return {75, u"Erreur d'accès Chemin/Fichier"}; }

}  // namespace

namespace failures {

Failure invalidCall() { return {5, u"Appel de procédure ou argument incorrect"}; }

Failure noSuchIndex() { return {9, u"L'indice n'appartient pas à la sélection"}; }

Failure typeMismatch() { return {13, u"Incompatibilité de type"}; }

Failure overflow() { return {6, u"Dépassement de capacité"}; }

Failure pastEndOfFile() { return {62, u"L'entrée dépasse la fin du fichier"}; }

Failure notRegularFile() { return pathOrFileAccess(); }

Failure changingFile() { return {70, u"Le fichier change pendant la lecture"}; }

Failure changedSinceCompared() { return {70, u"Le fichier a changé depuis la comparaison"}; }

}  // namespace failures

Failure failureFromErrno(int error) {
  if (error == 0) return {};
  for (const ErrnoRow& row : kErrnoRows) {
    if (row.error == error) return {row.number, Text(row.description)};
  }
  return pathOrFileAccess();
}
