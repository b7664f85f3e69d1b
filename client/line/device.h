#pragma once

#include <QString>

#include <sys/stat.h>

namespace VesmarClient
{

/// What a serial device is, and what this user may do with it.
struct DeviceFindings {
    int pathError = 0; ///< Why there is nothing at the path: an error number; 0 where there is something.
    QString target;    ///< What the path leads to in the end. Where that is missing, what the link says.
    struct stat identity = {}; ///< Valid where there is something at the path.
    QString owner;             ///< The owner's name, or the number where there is no name.
    QString group;             ///< The group's name, or the number where there is no name.
    bool isReadable = false;   ///< Whether this user may read it.
    bool isWritable = false;   ///< Whether this user may write it.
    int openError = 0;         ///< Why it cannot be opened: an error number; 0 where it can.
    bool isTerminal = false;   ///< Known only of a device that could be opened.

    bool IsThere() const { return pathError == 0; }
    bool IsCharacterDevice() const { return IsThere() && S_ISCHR(identity.st_mode); }
    bool IsNoTerminal() const { return IsCharacterDevice() && openError == 0 && !isTerminal; }
};

/// Examines a serial device, and keeps it open where it can be opened. Nothing is sent and no setting is
/// changed.
class Device
{
public:
    explicit Device(const char* path);
    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    const DeviceFindings& Findings() const { return _findings; }
    /// Open for reading and writing without waiting; -1 where it cannot be opened.
    int Descriptor() const { return _descriptor; }

private:
    void Examine(const char* path, int location);
    void Open(const char* path);

    DeviceFindings _findings;
    int _descriptor = -1;
};

} // namespace VesmarClient
