#include "cli/program/tracefilter.h"

#include <QLoggingCategory>
#include <QString>

#include <cstdio>
#include <cstring>

namespace Cli
{

namespace
{

void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QByteArray line = qFormatLogMessage(type, context, text).toLocal8Bit() + '\n';
    std::fputs(line.constData(), stderr);
}

bool IsTrace(QtMsgType type, const QMessageLogContext& context)
{
    const bool isMild = type == QtDebugMsg || type == QtInfoMsg || type == QtWarningMsg;
    return isMild && std::strcmp(context.category, "default") == 0;
}

void WriteAllButTrace(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!IsTrace(type, context)) {
        WriteMessage(type, context, text);
    }
}

} // namespace

void InstallTraceFilter(bool isTraceWanted)
{
    qInstallMessageHandler(isTraceWanted ? WriteMessage : WriteAllButTrace);
}

} // namespace Cli
