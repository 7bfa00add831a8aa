// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <array>

#include "sync/DifferenceGrid.h"
#include "sync/FolderSync.h"

// The table of differences as the grid shows it. It holds no texts but those of the row it was
// asked for last. Without differences it has one empty row.
class DifferenceGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  DifferenceGridModel(const FolderSync& sync, const LocaleData& locale);

  // Until `show`, the grid is empty: the table and its listings may change.
  void hide();
  void show();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool isEmpty() const { return !shown_ || sync_.table().rows.empty(); }
  const GridRow& row(int row) const;
  QVariant picture(const Text& name) const;

  const FolderSync& sync_;
  const LocaleData& locale_;
  bool shown_ = false;
  mutable int lastRow_ = -1;
  mutable GridRow last_;

  // The image lists: to the backup (over an older file, new), and to the source.
  std::array<std::array<QIcon, 2>, 2> imgList_;
};
