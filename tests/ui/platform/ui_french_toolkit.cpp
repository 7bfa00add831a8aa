// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/FrenchToolkit.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <memory>

#include "platform/qt/QtText.h"
#include "ui/UiMain.h"

TEST(FrenchToolkit, AFolderIsChosenInFrench) {
  speakFrench();
  QFileDialog dialog;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  EXPECT_EQ(fromQt(dialog.labelText(QFileDialog::LookIn)), u"Voir dans :");
  EXPECT_EQ(fromQt(dialog.labelText(QFileDialog::Reject)), u"Annuler");
}

TEST(FrenchToolkit, ATextBoxHasItsMenuInFrench) {
  speakFrench();
  QLineEdit box;
  const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
  QStringList captions;
  for (const QAction* action : menu->actions()) captions += action->text();
  EXPECT_TRUE(captions.join(u' ').contains(QStringLiteral("Co&ller")))
      << captions.join(u' ').toStdString();
}
