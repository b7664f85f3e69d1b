#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

#include <Vesmar/error.h>

namespace VesmarClient
{

/// What a person needs to know about an error besides its name and its meaning.
struct ErrorAdvice {
    QStringList causes; ///< Likely ones, the likeliest first.
    QString nextStep;
};

/// What is likely to have caused the error, and what to do about it.
ErrorAdvice Advice(Vesmar::Error error);

/// The error with this number or name, in small letters or capitals; nothing if there is none.
std::optional<Vesmar::Error> FindError(const QString& numberOrName);

/// Every error that has a name, by number.
QVector<Vesmar::Error> AllErrors();

} // namespace VesmarClient
