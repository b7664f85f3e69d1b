#pragma once

#include <QByteArray>
#include <QString>

#include <VesmarClient/enumerations.h>

namespace Cli
{

/// The advice on the error as people read it: the causes below each other, then the next step. It ends its
/// line; empty where there is no advice.
QByteArray AdviceText(VesmarClient::Error error);

/// A sentence about a failure, and below it the advice on the error that is its reason. Without such an
/// error, the sentence alone.
QString WithAdvice(const QString& sentence, VesmarClient::Error error);

/// One line of an explanation, with its label in front.
QByteArray ExplanationLine(const QString& label, const QString& text);

} // namespace Cli
