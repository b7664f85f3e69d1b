#pragma once

#include <QProcess>
#include <QStringList>

/// What a shell prints with these arguments, line by line. A complaint of it follows.
inline QStringList PrintedBy(const QString& shell, const QStringList& arguments, const QString& folder)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(folder);
    process.start(shell, arguments);
    constexpr int Patience = 60000;
    if (!process.waitForFinished(Patience)) {
        return {shell + QStringLiteral(": ") + process.errorString()};
    }
    return QString::fromLocal8Bit(process.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The words that a completion script offers for the last of these words, in a bash that knows nothing else.
inline QStringList Completed(const QString& script, const QStringList& words, const QString& folder = {})
{
    const QString call = QStringLiteral(". \"$1\"; shift\n"
                                        "COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1))\n"
                                        "[[ $(complete -p \"$1\") =~ -F\\ ([^ ]+) ]]\n"
                                        "\"${BASH_REMATCH[1]}\" \"$1\" \"${@: -1}\" \"${@: -2:1}\"\n"
                                        "printf '%s\\n' \"${COMPREPLY[@]}\"\n");
    return PrintedBy(
        QStringLiteral("bash"),
        QStringList{QStringLiteral("--norc"), QStringLiteral("-c"), call, QStringLiteral("bash"), script} +
            words,
        folder);
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

/// The same in zsh, of which only what the script itself does is there.
inline QStringList CompletedInZsh(const QString& script, const QStringList& words, const QString& folder = {})
{
    const QString call = QStringLiteral("compadd() { shift; print -l -- ${(M)@:#$PREFIX*} }\n"
                                        "compset() { PREFIX=${PREFIX#*=} }\n"
                                        "_files() { print -l -- $PREFIX*(N) }\n"
                                        "_normal() { print -- $CURRENT $words }\n"
                                        "script=$1; shift; words=(\"$@\"); CURRENT=$#; PREFIX=${words[-1]}\n"
                                        "source $script\n");
    return PrintedBy(
        QStringLiteral("zsh"),
        QStringList{QStringLiteral("-f"), QStringLiteral("-c"), call, QStringLiteral("zsh"), script} + words,
        folder);
}

/// The same in fish, for a whole line.
inline QStringList CompletedInFish(const QString& script, const QString& line, const QString& folder = {})
{
    return PrintedBy(QStringLiteral("fish"),
                     {QStringLiteral("--no-config"), QStringLiteral("-c"),
                      QStringLiteral("source $argv[1]; complete -C $argv[2]"), script, line},
                     folder);
}
