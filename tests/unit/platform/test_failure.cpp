// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <gtest/gtest.h>

#include "platform/Failure.h"

namespace {

struct Row {
  int error;
  Failure expected;
};

const Row kRows[] = {
    {ENOENT, {53, u"Fichier introuvable"}},
    {EACCES, {70, u"Permission refusée"}},
    {EPERM, {70, u"Permission refusée"}},
    {EROFS, {70, u"Permission refusée"}},
    {ENOTDIR, {76, u"Chemin d'accès introuvable"}},
    {ENOSPC, {61, u"Disque plein"}},
#ifdef EDQUOT
    {EDQUOT, {61, u"Disque plein"}},
#endif
    {EISDIR, {75, u"Erreur d'accès Chemin/Fichier"}},
    {EEXIST, {58, u"Le fichier existe déjà"}},
    {EFBIG, {75, u"Fichier trop volumineux pour ce disque"}},
    {EIO, {57, u"Erreur d'E/S de périphérique"}},
    {EMFILE, {67, u"Trop de fichiers"}},
    {ENFILE, {67, u"Trop de fichiers"}},
    {ELOOP, {75, u"Erreur d'accès Chemin/Fichier"}},
    {-1, {75, u"Erreur d'accès Chemin/Fichier"}},
};

TEST(Failure, EveryErrnoHasItsClassicNumberAndPhrase) {
  for (const Row& row : kRows) EXPECT_EQ(failureFromErrno(row.error), row.expected) << row.error;
}

TEST(Failure, NoErrorIsSuccess) {
  EXPECT_FALSE(failureFromErrno(0));
  EXPECT_FALSE(Failure{});
  EXPECT_TRUE(failureFromErrno(ENOENT));
}

TEST(Failure, TheProgramsOwnFailures) {
  EXPECT_EQ(failures::invalidCall(), (Failure{5, u"Appel de procédure ou argument incorrect"}));
  EXPECT_EQ(failures::noSuchIndex(), (Failure{9, u"L'indice n'appartient pas à la sélection"}));
  EXPECT_EQ(failures::typeMismatch(), (Failure{13, u"Incompatibilité de type"}));
  EXPECT_EQ(failures::overflow(), (Failure{6, u"Dépassement de capacité"}));
  EXPECT_EQ(failures::pastEndOfFile(), (Failure{62, u"L'entrée dépasse la fin du fichier"}));
  EXPECT_EQ(failures::notRegularFile(), (Failure{75, u"Erreur d'accès Chemin/Fichier"}));
  EXPECT_EQ(failures::changingFile(), (Failure{70, u"Le fichier change pendant la lecture"}));
  EXPECT_EQ(failures::changedSinceCompared(),
            (Failure{70, u"Le fichier a changé depuis la comparaison"}));
}

TEST(Failure, AboutNamesWhatItConcerns) {
  EXPECT_EQ(about(failureFromErrno(ENOENT), u"xdg-open"),
            (Failure{53, u"Fichier introuvable : xdg-open"}));
}

}  // namespace
