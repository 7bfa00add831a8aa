// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "sync/SyncPaths.h"
#include "sync/modBrowseForFolder.h"

namespace {

TEST(ChoisirDossier, GivesTheChosenFolderWithASeparator) {
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.folders = {u"/clé/Sauvegarde", u"/clé/"};
  EXPECT_EQ(ChoisirDossier(u"Titre :", u"/avant/", questions),
            AjouterAntislash(u"/clé/Sauvegarde"));
  EXPECT_EQ(ChoisirDossier(u"Titre :", u"/avant/", questions), AjouterAntislash(u"/clé/"));
  EXPECT_EQ(questions.folderRequests,
            std::vector<FolderRequest>(2, {.title = u"Titre :", .startFolder = u"/avant/"}));
}

TEST(ChoisirDossier, GivesTheDefaultUnchangedWhenTheUserCancels) {
  Journal journal;
  ScriptedQuestions questions(journal);
  questions.folders = {std::nullopt};
  EXPECT_EQ(ChoisirDossier(u"t", u"/sans séparateur", questions), u"/sans séparateur");
}

}  // namespace
