// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>
#include <QTableView>

#include "text/LocaleData.h"

// How the table of differences looks: widths, rows of one height, a font for which the dates fit.

// Draws a picture in the middle of its cell.
class CentredPicture : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
};

// To be called once, after the grid was given its model.
void setUpDifferenceGrid(QTableView& grid, const LocaleData& locale);
