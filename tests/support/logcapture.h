#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Collects the Qt log of the whole process, from every thread, for as long as it lives; nothing goes to the
/// terminal meanwhile. One at a time.
class LogCapture
{
public:
    struct Message {
        QtMsgType type;
        QByteArray category;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    QList<Message> Messages() const;
    QStringList Texts() const;
    /// Whether the part stands in any of the texts.
    bool Contains(const QString& part) const;
    void Clear();

private:
    static void Collect(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QtMessageHandler _previousHandler;
    QList<Message> _messages;
};
