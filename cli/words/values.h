#pragma once

#include <QVector>

#include <VesmarClient/enumerations.h>
#include <VesmarClient/identity.h>
#include <VesmarClient/result.h>

#include "cli/words/format.h"

/// How the client's values look, in text for people and in JSON for programs.
namespace Cli
{

/// A text of the instrument's identity: its field in JSON, and what people call it.
struct IdentityText {
    const char* field;
    QString label;
    QString text;
};

QVector<IdentityText> TextsOf(const VesmarClient::Identity& identity);

Shown Show(const VesmarClient::Identity& value);
Shown Show(VesmarClient::Error value);
Shown Show(VesmarClient::Mode value);
Shown Show(VesmarClient::Function value);
Shown Show(VesmarClient::FunctionState value);
Shown Show(VesmarClient::StartTestResult value);
Shown Show(const VesmarClient::Result& value);

/// What people call the reading; its own name is for programs.
QString NameOf(const VesmarClient::Reading& reading);

} // namespace Cli
