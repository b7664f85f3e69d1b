#pragma once

#include <QByteArray>
#include <QJsonObject>

#include "cli/doctor/linerecord.h"
#include "client/line/device.h"
#include "client/line/deviceholders.h"
#include "decode/frames/frame.h"

/// What `doctor` has found, in lines for people and in fields for programs.
namespace Cli
{

using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;

QByteArray DeviceText(const DeviceFindings& device);
QJsonObject DeviceJson(const DeviceFindings& device);

/// Who may use a device, which has to be there.
QByteArray PermissionsText(const DeviceFindings& device);
QJsonObject PermissionsJson(const DeviceFindings& device);

QByteArray HoldersText(const DeviceHolders& holders);
QJsonObject HoldersJson(const DeviceHolders& holders);

/// The number of answers of each kind, and how long they took.
QByteArray AnswersText(const LineRecord& line);
QJsonObject AnswersJson(const LineRecord& line);

/// The instrument's mode, function and error.
QByteArray ConditionText(const Vesmar::Status& status);
QJsonObject ConditionJson(const Vesmar::Status& status);

} // namespace Cli
