// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/qt/DifferenceGridModel.h"

#include <QFont>

#include "platform/qt/QtText.h"
#include "windows/qt/Drawing.h"

namespace {

constexpr TextView kArrows[2][2] = {{u"flecheD", u"flecheDn"}, {u"flecheG", u"flecheGn"}};

QIcon arrow(TextView name) { return drawingIcon(QStringLiteral("arrows/") + toQt(name)); }

Qt::Alignment alignmentOf(int column) {
  const bool isSize = kGridColumns[static_cast<std::size_t>(column)].header == u"Poids";
  return Qt::AlignVCenter | (isSize ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace

DifferenceGridModel::DifferenceGridModel(const FolderSync& sync, const LocaleData& locale)
    : sync_(sync), locale_(locale) {
  for (std::size_t list = 0; list < imgList_.size(); ++list) {
    for (std::size_t i = 0; i < imgList_[list].size(); ++i) {
      imgList_[list][i] = arrow(kArrows[list][i]);
    }
  }
}

void DifferenceGridModel::hide() {
  beginResetModel();
  shown_ = false;
  lastRow_ = -1;
  endResetModel();
}

void DifferenceGridModel::show() {
  beginResetModel();
  shown_ = true;
  endResetModel();
}

int DifferenceGridModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return isEmpty() ? 1 : static_cast<int>(sync_.table().rows.size());
}

int DifferenceGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kGridColumns.size());
}

const GridRow& DifferenceGridModel::row(int row) const {
  if (row != lastRow_) {
    last_ = gridRow(sync_.source(), sync_.backup(),
                    sync_.table().rows[static_cast<std::size_t>(row)], locale_);
    lastRow_ = row;
  }
  return last_;
}

QVariant DifferenceGridModel::picture(const Text& name) const {
  for (std::size_t list = 0; list < imgList_.size(); ++list) {
    for (std::size_t i = 0; i < imgList_[list].size(); ++i) {
      if (name == kArrows[list][i]) return imgList_[list][i];
    }
  }
  return {};
}

QVariant DifferenceGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || isEmpty()) return {};
  const int column = index.column();
  switch (role) {
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
      if (column == kPictureColumn) return toQt(row(index.row()).pictureInWords);
      [[fallthrough]];
    case Qt::DisplayRole: return toQt(row(index.row()).cells[static_cast<std::size_t>(column)]);
    case Qt::DecorationRole:
      return column == kPictureColumn ? picture(row(index.row()).picture) : QVariant();
    case Qt::FontRole: {
      if (column != row(index.row()).emphasised) return {};
      QFont bold;
      bold.setBold(true);
      return bold;
    }
    case Qt::TextAlignmentRole: return QVariant::fromValue(alignmentOf(column));
    default: return {};
  }
}

QVariant DifferenceGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  switch (role) {
    case Qt::AccessibleTextRole:
      if (section == kPictureColumn) return toQt(kPictureHeader);
      [[fallthrough]];
    case Qt::DisplayRole: return toQt(kGridColumns[static_cast<std::size_t>(section)].header);
    case Qt::TextAlignmentRole: return QVariant::fromValue(alignmentOf(section));
    default: return {};
  }
}
