#pragma once

#include <QProcess>
#include <QStringList>

/// The words that a completion script offers for the last of these words, in a bash that knows nothing else.
/// A complaint of bash or of the script follows them.
inline QStringList Completed(const QString& script, const QStringList& words, const QString& folder = {})
{
    const QString call = QStringLiteral(". \"$1\"; shift\n"
                                        "COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1))\n"
                                        "[[ $(complete -p \"$1\") =~ -F\\ ([^ ]+) ]]\n"
                                        "\"${BASH_REMATCH[1]}\" \"$1\" \"${@: -1}\" \"${@: -2:1}\"\n"
                                        "printf '%s\\n' \"${COMPREPLY[@]}\"\n");
    QProcess bash;
    bash.setProcessChannelMode(QProcess::MergedChannels);
    bash.setWorkingDirectory(folder);
    bash.start(QStringLiteral("bash"), QStringList{QStringLiteral("--norc"), QStringLiteral("-c"), call,
                                                   QStringLiteral("bash"), script} +
                                           words);
    constexpr int Patience = 60000;
    if (!bash.waitForFinished(Patience)) {
        return {QStringLiteral("bash: ") + bash.errorString()};
    }
    return QString::fromLocal8Bit(bash.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The same, with every word on a line of its own. An empty last word is written as "''".
inline QStringList Completed(const QString& script, const char* line, const QString& folder = {})
{
    QStringList words = QString::fromLatin1(line).split(QLatin1Char(' '));
    if (words.last() == QLatin1String("''")) {
        words.last().clear();
    }
    return Completed(script, words, folder);
}
