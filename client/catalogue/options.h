#pragma once

#include <VesmarClient/functions.h>

/// What can be set of the functions. Titles and descriptions are translated when they are asked for.
namespace VesmarClient::Options
{

/// How long a continuous function runs.
Option Time();

QVector<Option> None();
QVector<Option> Rpe();
QVector<Option> Riso();
QVector<Option> ModeAndConfiguration();
QVector<Option> Configuration();
QVector<Option> Mode();
QVector<Option> HvTest();
QVector<Option> Rcd();
QVector<Option> RcdIec();

} // namespace VesmarClient::Options
