#pragma once

#include <QString>

#include <sys/stat.h>

namespace VesmarClient
{

/// What a serial device is, and what this user may do with it.
struct DeviceFindings {
    int pathError = 0;         ///< Why there is nothing at its path; 0, or an error number.
    QString target;            ///< What the path leads to in the end; where that is missing, its link.
    struct stat identity = {}; ///< Valid where there is something.
    QString owner;             ///< A name, or a number that has none.
    QString group;             ///< Likewise.
    bool isReadable = false;   ///< By this user.
    bool isWritable = false;   ///< Likewise.
    int openError = 0;         ///< Why it cannot be opened; 0, or an error number.
    bool isTerminal = false;   ///< Known of an open device only.

    bool IsThere() const { return pathError == 0; }
    bool IsCharacterDevice() const { return IsThere() && S_ISCHR(identity.st_mode); }
    bool IsNoTerminal() const { return IsCharacterDevice() && openError == 0 && !isTerminal; }
};

/// A serial device that is looked at, and kept open where it can be. Nothing is sent and no setting is
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
    void LookAt(const char* path, int location);
    void Open(const char* path);

    DeviceFindings _findings;
    int _descriptor = -1;
};

} // namespace VesmarClient
