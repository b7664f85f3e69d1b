#pragma once

#include <QAbstractTableModel>

#include "panel/log/logdecoder.h"

namespace Panel
{

/// The rows of a log, as a table.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, TitleColumn, TextColumn, ColumnCount };

    /// Of more rows, the oldest ones are forgotten.
    static constexpr int MostRows = 20000;

    void append(const QVector<LogRow>& rows);
    /// Shows these, however many they are.
    void replace(const QVector<LogRow>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<LogRow> _rows;
};

} // namespace Panel
