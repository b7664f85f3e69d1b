#pragma once

#include <QByteArray>

#include <Vesmar/testerinformation.h>

namespace Vesmar
{

/// Fills the record from a version answer.
void DecodeVersion(const QByteArray& frame, TesterInformation& information);

} // namespace Vesmar
