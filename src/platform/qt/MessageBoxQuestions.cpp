// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/MessageBoxQuestions.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <vector>

#include "platform/qt/QtText.h"
#include "text/Paths.h"
#include "text/Split.h"

namespace {

// A message window that only its buttons close, when it has no button for leaving things alone.
class BoxWindow : public QMessageBox {
 public:
  bool leavable = true;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape && !leavable) return;
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    if (leavable) {
      QMessageBox::closeEvent(event);
    } else {
      event->ignore();
    }
  }
};

QMessageBox::Icon iconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Critical: return QMessageBox::Critical;
    case BoxIcon::Question: return QMessageBox::Question;
    case BoxIcon::Exclamation: return QMessageBox::Warning;
    case BoxIcon::Information: return QMessageBox::Information;
    case BoxIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

// What the box's picture says, for who does not see it.
QString wordsOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Critical: return QStringLiteral("Erreur");
    case BoxIcon::Question: return QStringLiteral("Question");
    case BoxIcon::Exclamation: return QStringLiteral("Attention");
    case BoxIcon::Information: return QStringLiteral("Information");
    case BoxIcon::None: break;
  }
  return {};
}

std::vector<Answer> answersOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok: return {Answer::Ok};
    case BoxButtons::OkCancel: return {Answer::Ok, Answer::Cancel};
    case BoxButtons::YesNo: return {Answer::Yes, Answer::No};
    case BoxButtons::YesNoCancel: return {Answer::Yes, Answer::No, Answer::Cancel};
  }
  return {Answer::Ok};
}

struct ButtonKind {
  QMessageBox::StandardButton button;
  QString caption;
};

ButtonKind kindOf(Answer answer) {
  switch (answer) {
    case Answer::Ok: return {QMessageBox::Ok, QStringLiteral("OK")};
    case Answer::Cancel: return {QMessageBox::Cancel, QStringLiteral("Annuler")};
    case Answer::Yes: return {QMessageBox::Yes, QStringLiteral("Oui")};
    case Answer::No: return {QMessageBox::No, QStringLiteral("Non")};
  }
  return {};
}

// Widens the window so that the text's own lines are not broken again, as far as the screen allows.
void keepLines(QMessageBox& window) {
  auto* grid = qobject_cast<QGridLayout*>(window.layout());
  if (!grid) return;
  const int lines = window.fontMetrics().size(0, window.text()).width();
  const int picture =
      2 * window.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &window);
  const int width = std::min(lines + picture, window.screen()->availableSize().width() * 3 / 4);
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// The folder itself, or the nearest one above it that exists.
QString nearestFolder(const Text& folder) {
  QString path = QDir::cleanPath(toQt(nativePath(folder)));
  while (!path.isEmpty() && !QDir(path).exists()) {
    const QString above = QDir::cleanPath(path + QStringLiteral("/.."));
    if (above == path) return {};
    path = above;
  }
  return path;
}

void startIn(QFileDialog& dialog, const Text& startFolder) {
  const QString folder = startFolder.empty() ? QString() : nearestFolder(startFolder);
  if (!folder.isEmpty()) dialog.setDirectory(folder);
}

std::optional<Text> chosenIn(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return nativePath(fromQt(dialog.selectedFiles().constFirst()));
}

// "*cookies*.*" also takes "Cookies": the ending may be missing, as the pattern's home has it.
QString nameFilter(const FileRequest& request) {
  const QString pattern = toQt(request.pattern);
  QString patterns = pattern;
  if (pattern.endsWith(QStringLiteral(".*"))) patterns += QLatin1Char(' ') + pattern.chopped(2);
  return toQt(request.filterLabel).trimmed() + QStringLiteral(" (") + patterns + QLatin1Char(')');
}

QString saveFilter(const SaveRequest::Kind& kind) {
  return toQt(kind.label) + QStringLiteral(" (*.") + toQt(kind.ending) + QLatin1Char(')');
}

}  // namespace

Answer MessageBoxQuestions::ask(const Box& box) {
  BoxWindow window;
  window.leavable = box.buttons != BoxButtons::YesNo;
  // The program has no window that the box could lie above, and some of its windows are topmost.
  window.setWindowFlag(Qt::WindowStaysOnTopHint);
  window.setWindowTitle(toQt(box.title));
  window.setTextFormat(Qt::PlainText);
  window.setText(toQt(withPlainLineBreaks(box.text)));
  window.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  window.setIcon(iconOf(box.icon));
  if (auto* text = window.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
    text->setFocusPolicy(Qt::StrongFocus);  // so that it can be copied without a mouse
  }
  if (auto* picture = window.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"))) {
    picture->setAccessibleName(wordsOf(box.icon));
  }

  for (const Answer answer : answersOf(box.buttons)) {
    const ButtonKind kind = kindOf(answer);
    QPushButton* button = window.addButton(kind.button);
    button->setText(kind.caption);
    button->setIcon({});
  }
  window.setDefaultButton(kindOf(box.defaultAnswer).button);

  keepLines(window);

  const int pressed = window.exec();
  for (const Answer answer : answersOf(box.buttons)) {
    if (kindOf(answer).button == pressed) return answer;
  }
  // Closed from outside: the last button is the one that does least.
  return answersOf(box.buttons).back();
}

std::optional<Text> MessageBoxQuestions::chooseFile(const FileRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), toQt(request.title));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters({nameFilter(request), QStringLiteral("Tous les fichiers (*)")});
  // A browser keeps its files in hidden folders.
  dialog.setFilter(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  startIn(dialog, request.startFolder);
  return chosenIn(dialog);
}

std::optional<Text> MessageBoxQuestions::chooseFolder(const FolderRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), toQt(request.title));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  startIn(dialog, request.startFolder);
  return chosenIn(dialog);
}

std::optional<Text> MessageBoxQuestions::chooseNewFile(const SaveRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), toQt(request.title));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  QStringList filters;
  for (const SaveRequest::Kind& kind : request.kinds) filters.append(saveFilter(kind));
  dialog.setNameFilters(filters);
  const auto useEndingOf = [&](const QString& filter) {
    const qsizetype chosen = filters.indexOf(filter);
    if (chosen < 0) return;
    dialog.setDefaultSuffix(toQt(request.kinds[static_cast<std::size_t>(chosen)].ending));
  };
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, useEndingOf);
  useEndingOf(filters.value(0));
  dialog.selectFile(toQt(request.name));

  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return nativePath(fromQt(dialog.selectedFiles().constFirst()));
}
