#include "support/logcapture.h"

#include <algorithm>
#include <mutex>

namespace
{

// Guards the one capture and what it has collected.
std::mutex captureMutex;
LogCapture* currentCapture = nullptr;

} // namespace

LogCapture::LogCapture()
{
    const std::lock_guard<std::mutex> lock(captureMutex);
    Q_ASSERT(currentCapture == nullptr);
    currentCapture = this;
    _previousHandler = qInstallMessageHandler(&LogCapture::Collect);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(_previousHandler);
    const std::lock_guard<std::mutex> lock(captureMutex);
    currentCapture = nullptr;
}

QList<LogCapture::Message> LogCapture::Messages() const
{
    const std::lock_guard<std::mutex> lock(captureMutex);
    return _messages;
}

QStringList LogCapture::Texts() const
{
    QStringList texts;
    for (const Message& message : Messages()) {
        texts.append(message.text);
    }
    return texts;
}

bool LogCapture::Contains(const QString& part) const
{
    const QStringList texts = Texts();
    return std::any_of(texts.begin(), texts.end(),
                       [&part](const QString& text) { return text.contains(part); });
}

void LogCapture::Clear()
{
    const std::lock_guard<std::mutex> lock(captureMutex);
    _messages.clear();
}

void LogCapture::Collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const std::lock_guard<std::mutex> lock(captureMutex);
    if (currentCapture != nullptr) {
        currentCapture->_messages.append({type, QByteArray(context.category), text});
    }
}
