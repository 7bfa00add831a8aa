// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>

#include "config/ShortcutTable.h"

// The shortcut table as the grid shows it. It holds nothing but how many rows the view knows of.
class ShortcutGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kKey, kName, kAddress, kColumns };

  explicit ShortcutGridModel(ShortcutTable& table, QObject* parent = nullptr);
  ~ShortcutGridModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void tableChanged();

  ShortcutTable& table_;
  int rows_;
  int subscription_;
};
