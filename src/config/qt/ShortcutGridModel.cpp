// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/qt/ShortcutGridModel.h"

#include "platform/qt/QtText.h"

namespace {

int countOf(const ShortcutTable& table) { return static_cast<int>(table.rows().size()); }

}  // namespace

ShortcutGridModel::ShortcutGridModel(ShortcutTable& table, QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      rows_(countOf(table)),
      subscription_(table.subscribe([this] { tableChanged(); })) {}

ShortcutGridModel::~ShortcutGridModel() { table_.unsubscribe(subscription_); }

int ShortcutGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int ShortcutGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant ShortcutGridModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= table_.rows().size()) return {};
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const Shortcut& shortcut = table_.rows()[row];
  switch (index.column()) {
    case kKey: return toQt(shortcut.key);
    case kName: return toQt(shortcut.name);
    case kAddress: return toQt(shortcut.address);
    default: return {};
  }
}

QVariant ShortcutGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kKey: return QStringLiteral("Index");
    case kName: return QStringLiteral("Nom Court");
    case kAddress: return QStringLiteral("QrCode associé");
    default: return {};
  }
}

// The table tells that it changed, not where. Rows come and go at the end as far as the view can
// tell, so that the selected row stays the selected row, and what is visible is drawn anew.
void ShortcutGridModel::tableChanged() {
  const int rows = countOf(table_);
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  if (rows > 0) Q_EMIT dataChanged(index(0, 0), index(rows - 1, kColumns - 1));
}
