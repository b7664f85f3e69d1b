#include "panel/session/tracelines.h"

#include <mutex>

#include <VesmarClient/tracerouter.h>

namespace Panel
{

namespace
{

std::mutex mutex; // Guards the next one.
TraceLines* present = nullptr;
QtMessageHandler before = nullptr;

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (qstrcmp(context.category, VesmarClient::TraceRouter::Category) != 0) {
        before(type, context, text);
        return;
    }
    const std::lock_guard lock(mutex);
    if (present != nullptr) {
        Q_EMIT present->line(text.toUtf8());
    }
}

} // namespace

TraceLines::TraceLines()
{
    present = this;
    before = qInstallMessageHandler(handle);
}

TraceLines::~TraceLines()
{
    qInstallMessageHandler(before);
    const std::lock_guard lock(mutex);
    present = nullptr;
}

} // namespace Panel
