#include "panel/log/logmodel.h"

#include "panel/kit/theme.h"

namespace Panel
{

void LogModel::append(const QVector<LogRow>& rows)
{
    constexpr int ForgottenAtOnce = MostRows / 10;
    if (rows.isEmpty()) {
        return;
    }
    if (_rows.size() > MostRows) {
        beginRemoveRows({}, 0, ForgottenAtOnce - 1);
        _rows.remove(0, ForgottenAtOnce);
        endRemoveRows();
    }
    beginInsertRows({}, _rows.size(), _rows.size() + rows.size() - 1);
    _rows += rows;
    endInsertRows();
}

void LogModel::replace(const QVector<LogRow>& rows)
{
    beginResetModel();
    _rows = rows;
    endResetModel();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : _rows.size();
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    const LogRow& row = _rows.at(index.row());
    if (role == Qt::ForegroundRole && row.isProblem) {
        return colours().danger;
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case TimeColumn:
        return row.at.toString(QStringLiteral("HH:mm:ss.zzz"));
    case TitleColumn:
        return row.title;
    default:
        return row.text;
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return _rows.at(section).line;
    }
    const QString titles[ColumnCount] = {tr("Time (UTC)"), tr("Request"), tr("In words")};
    return titles[section];
}

} // namespace Panel
