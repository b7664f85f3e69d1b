#pragma once

#include <QDateTimeEdit>
#include <QFrame>
#include <QLabel>

namespace Panel
{

/// A date that the instrument keeps: what it is, and what it is to be.
class DateCard : public QFrame
{
    Q_OBJECT

public:
    /// The format is that of the date: "yyyy-MM-dd".
    DateCard(const QString& title, const char* name, const QString& format);

    void show(const QDateTime& date);

Q_SIGNALS:
    void setAsked(const QDateTime& date);

private:
    QWidget* createEditor(const char* name);

    QString _format;
    QLabel* _present;
    QDateTimeEdit* _edit;
};

} // namespace Panel
