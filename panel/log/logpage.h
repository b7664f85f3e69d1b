#pragma once

#include <QComboBox>
#include <QFutureWatcher>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QStackedWidget>
#include <QTableView>

#include "panel/kit/failurecard.h"
#include "panel/log/logfile.h"
#include "panel/log/logmodel.h"
#include "panel/plot/readingplot.h"
#include "panel/session/session.h"

namespace Panel
{

/// What goes over the line, in words: live, or from a recorded log, whose measurements are plotted.
class LogPage : public QWidget
{
    Q_OBJECT

public:
    explicit LogPage(Session& session);
    ~LogPage() override;

    void openLog(const QString& path);

private:
    QLayout* createHeader();
    void setUpTable();
    void receive(const QByteArray& line);
    void showLive();
    void askForLog();
    void showLog();
    void showMeasurement(int index);
    void showRow(const QModelIndex& index);

    Session& _session;
    LogDecoder _decoder{false};
    qint64 _lines = 0;
    LogModel _live;
    LogModel _recorded;
    DecodedLog _log;
    QSortFilterProxyModel _filtered;
    QPushButton* _showLive;
    QPushButton* _open;
    QLineEdit* _filter;
    QComboBox* _measurements;
    FailureCard _failure;
    QStackedWidget* _views;
    QTableView* _table;
    ReadingPlot* _plot;
    QLabel* _details;
    QFutureWatcher<DecodedLog> _reading;
};

} // namespace Panel
