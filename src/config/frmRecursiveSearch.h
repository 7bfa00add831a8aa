// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "config/CookieStoreSearch.h"
#include "config/Settings.h"
#include "platform/Questions.h"
#include "text/LocaleData.h"

namespace Ui {
class frmRecursiveSearch;
}

// What the search works on, and what the main window does with its findings.
struct SearchSurroundings {
  Settings& settings;
  const LocaleData& locale;
  Questions& questions;

  std::function<void()> pumpEvents;
  std::function<void()> showSettings;            // in the options window
  std::function<void(const Text&)> storeChosen;  // apply it and open the page that tries it
  std::function<void()> storeNotFound;
  std::function<void()> MenuAbout_Click;
};

// Walks a folder and everything below it for the browser's cookie store. One that is found alone
// chooses itself; of several the user clicks one.
class frmRecursiveSearch : public QDialog {
  Q_OBJECT

 public:
  explicit frmRecursiveSearch(SearchSurroundings surroundings);
  ~frmRecursiveSearch() override;

  // Shows the window and searches `folder` for files called like `pattern`.
  void search(const Text& folder, const Text& pattern);

  // Escape and the title bar's close box.
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cmdOk_Click();
  void cmdClose_Click();
  void listResult_Click();

  void LancerLaRecherche_FSO();
  SearchEnd walk();
  void addResult(const Text& path);
  void showDetails(int row);
  void concludeSearch();
  void choose(const Text& path);
  Text result(int row) const;

  SearchSurroundings to_;
  std::unique_ptr<Ui::frmRecursiveSearch> ui_;
  bool choiceAllowed_ = false;
  bool searching_ = false;
  bool stopped_ = false;  // the window was closed while it searched
};
