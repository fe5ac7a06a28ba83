#pragma once
// The lock files of serial devices, kept the way the serial-port library and the system's other
// serial programs keep them: "LCK..ttyS0" (the device's name under /dev, "/" as "_") in the first
// of the system's lock folders that has one, holding the owner's process number as text.
//
// A lock must never block a port for good. Before a port opens, a lock whose owner no longer runs,
// or one left empty by a program killed while it was writing it, is removed; a lock that is empty
// for less than kEmptyLockAge may still be in the middle of being written, so it is given that
// long first. A lock held by a running process is left alone, and the failed open names that
// process.

#include <chrono>
#include <string>

namespace lumbra {

inline constexpr std::chrono::milliseconds kEmptyLockAge{500};

// Where the device at hostPath (the host's form of the path) is locked: its lock file in the first
// lock folder that holds one or that this user may write to; "" when there is no such folder.
std::string SerialLockPath(const std::string& hostPath);

// Removes the stale locks of the device at hostPath.
void RemoveStaleSerialLocks(const std::string& hostPath);

// Who holds the device's lock: "process 1234 (minicom)", or "" when no running process does.
std::string SerialLockHolder(const std::string& hostPath);

}  // namespace lumbra
