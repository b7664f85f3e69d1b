#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

#include <Vesmar/error.h>

namespace Cli
{

/// What a person needs to know about an error beside its name and its meaning.
struct ErrorAdvice {
    QStringList causes; ///< Likely ones, the likeliest first.
    QString nextStep;
};

/// What is likely to have caused the error, and what to do about it.
ErrorAdvice Advice(Vesmar::Error error);

/// The advice as people read it: causes below each other, then the next step. It ends its line; empty where
/// there is no advice.
QByteArray AdviceText(Vesmar::Error error);

/// A sentence about a failure, and below it the advice on the error that is the reason; no advice without
/// one.
QString WithAdvice(const QString& sentence, Vesmar::Error error);

/// One line of an explanation, with what it tells in front.
QByteArray ExplanationLine(const QString& label, const QString& text);

/// The error of this number or name, in small letters or capitals; nothing if there is none.
std::optional<Vesmar::Error> FindError(const QString& numberOrName);

/// Every error that has a name, by number.
QVector<Vesmar::Error> AllErrors();

} // namespace Cli
