// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/frmTest.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "platform/Files.h"
#include "platform/qt/Centre.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ReturnKey.h"
#include "text/EncodeDecodeUtf8.h"
#include "ui_frmTest.h"
#include "windows/TestTable.h"
#include "windows/Twips.h"

namespace {

struct Column {
  TextView header;
  Twips width;
};

constexpr Column kColumns[] = {{u"Index", 1000}, {u"Nom Court", 4000}, {u"QrCode associé", 50000}};

}  // namespace

frmTest::frmTest(TestSurroundings surroundings)
    : to_(surroundings), ui_(std::make_unique<Ui::frmTest>()) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  connect(ui_->cmdEncodeUtf8, &QPushButton::clicked, this, &frmTest::cmdEncodeUtf8_Click);
  connect(ui_->cmdDecodeUtf8, &QPushButton::clicked, this, &frmTest::cmdDecodeUtf8_Click);
  connect(ui_->Grid, &QTableWidget::cellClicked, this, &frmTest::Grid_Click);
  connect(ui_->Grid, &QTableWidget::cellActivated, this, &frmTest::Grid_Click);
  centre(*this);
}

frmTest::~frmTest() = default;

void frmTest::Form_Load() {
  QTableWidget& grid = *ui_->Grid;
  grid.setRowCount(0);
  // Centred, the title of the widest column would be out of sight.
  grid.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  grid.setColumnCount(static_cast<int>(std::size(kColumns)));
  for (int column = 0; column < grid.columnCount(); ++column) {
    grid.setHorizontalHeaderItem(column, new QTableWidgetItem(toQt(kColumns[column].header)));
    grid.setColumnWidth(column, pixelsFromTwips(kColumns[column].width));
  }

  std::string bytes;
  TestTable table;
  if (Failure failure = readFile(to_.shortcutPath, bytes)) {
    table.failure = about(failure, to_.shortcutPath);
  } else {
    table = readTestTable(bytes, to_.locale);
  }
  if (table.freeId) to_.shortcuts.setFreeId(*table.freeId);
  for (const Shortcut& row : table.rows) {
    const int at = grid.rowCount();
    grid.insertRow(at);
    grid.setItem(at, 0, new QTableWidgetItem(toQt(row.key)));
    grid.setItem(at, 1, new QTableWidgetItem(toQt(row.name)));
    grid.setItem(at, 2, new QTableWidgetItem(toQt(row.address)));
  }
  if (table.failure) to_.questions.ask(errorBox(u"Form_Load", table.failure.description));
}

void frmTest::cmdEncodeUtf8_Click() {
  ui_->Text2->setText(toQt(EncodeDecodeUtf8::encode(fromQt(ui_->Text1->text()))));
}

void frmTest::cmdDecodeUtf8_Click() {
  ui_->Text3->setText(toQt(EncodeDecodeUtf8::decode(fromQt(ui_->Text1->text()))));
}

void frmTest::Grid_Click(int row, int column) {
  if (const QTableWidgetItem* cell = ui_->Grid->item(row, column))
    ui_->Text4->setText(cell->text());
}

void frmTest::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}
