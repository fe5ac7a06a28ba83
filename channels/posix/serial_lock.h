#pragma once
// How a serial device is held on this system, in the two ways its serial programs look for, and
// holding one the same way while a port is open:
// - a lock file "LCK..ttyS0" (the device's name under /dev, "/" as "_"; for a link such as
//   /dev/serial/by-id/..., the device it leads to, though a lock under the link's own name holds it
//   as well) in the first of the system's lock folders that has one, holding the owner's process
//   number as text (minicom and the programs of the serial-port library);
// - flock on the device itself (picocom, tio).
//
// Whether a lock file is live is decided here, never by a library: a lock whose process runs is
// live, in whatever format its program wrote it, and the port is refused naming that process. A
// lock must never block a port for good, so one whose process no longer runs is removed, and so is
// one that names no process (empty, or garbage left by a program killed while it wrote it) once it
// is kEmptyLockAge old; a younger one may still be in the middle of being written and is given
// that long first.

#include <chrono>
#include <string>

namespace lumbra {

inline constexpr std::chrono::milliseconds kEmptyLockAge{500};

// Where the device at hostPath (the host's form of the path) is locked: its lock file in the first
// lock folder that holds one or that this user may write to; "" when there is no such folder.
std::string SerialLockPath(const std::string& hostPath);

// The locks one open port holds on its device.
class SerialLock {
  public:
    SerialLock() = default;
    ~SerialLock() { release(); }
    SerialLock(const SerialLock&) = delete;
    SerialLock& operator=(const SerialLock&) = delete;

    // Takes the device's lock file, made whole before it appears under its name and naming this
    // process, after removing the stale ones. Taken before the device is opened, since opening a
    // line already changes it (a serial port raises its modem lines). False when a running process
    // holds the device; inUse() then says which. Where no lock folder can be written the device
    // goes without a lock file, held by flock alone.
    bool takeFile(const std::string& hostPath);
    // Takes flock on fd, the device as the port opened it; the flock lasts as long as fd stays
    // open. False when another open of the device holds it; inUse() then says who.
    bool takeDevice(int fd, const std::string& hostPath);
    // Removes the lock file while it still names this process.
    void release();

    // Why the device cannot be taken: "em uso pelo processo 1234 (minicom)", or "em uso por
    // outro programa" when the holder cannot be found.
    const std::string& inUse() const { return inUse_; }

  private:
    std::string lockPath_;
    std::string inUse_;
};

// Who holds flock on the device at hostPath, in inUse()'s words; "" when no process can be found.
std::string DeviceLockHolder(const std::string& hostPath);

}  // namespace lumbra
