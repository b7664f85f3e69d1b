#pragma once

#include <QByteArray>
#include <QString>

namespace Simulator
{

/// The instrument describes itself like this when it is asked for its version. Each field has a fixed width
/// on the line.
struct Identity {
    QByteArray deviceName = QByteArrayLiteral("PAT");
    QByteArray deviceCode = QByteArrayLiteral("410");
    QByteArray serialNumber = QByteArrayLiteral("204815");
    QByteArray version = QByteArrayLiteral("105"); ///< major digit, two minor digits
    QByteArray versionCode = QByteArrayLiteral("03");
    QByteArray revisionCode = QByteArrayLiteral("02");
    QByteArray buildNumber = QByteArrayLiteral("2016");

    QByteArray Data() const;

    /// Returns the version as people write it, such as "1.05".
    QString VersionText() const;
};

} // namespace Simulator
