#pragma once
// The host's numbered files: a process-wide table that hands out the lowest free number (1 and up)
// and maps it to a file open for output, append, binary access or input. Failures come back as the
// host's error numbers, never as exceptions.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lumbra::platform {

enum class FileMode {
    Output,  // created, or emptied when it exists
    Append,  // created when missing, written at its end
    Binary,  // created when missing, opened for reading and writing, nothing emptied
    Input,   // must exist; read line by line
};

// The host's error numbers for the file errors the program can meet.
inline constexpr std::int16_t kErrUserInterrupt = 18;
inline constexpr std::int16_t kErrDeviceTimeout = 24;
inline constexpr std::int16_t kErrBadFileNameOrNumber = 52;
inline constexpr std::int16_t kErrFileNotFound = 53;
inline constexpr std::int16_t kErrFileAlreadyOpen = 55;
inline constexpr std::int16_t kErrDeviceIo = 57;
inline constexpr std::int16_t kErrDiskFull = 61;
inline constexpr std::int16_t kErrInputPastEnd = 62;
inline constexpr std::int16_t kErrDeviceUnavailable = 68;
inline constexpr std::int16_t kErrPermissionDenied = 70;
inline constexpr std::int16_t kErrPathFileAccess = 75;
inline constexpr std::int16_t kErrPathNotFound = 76;

// The longest line every position of which a 16-bit integer can name. FileReadLine gives a line
// whole whatever its length: what reads a line by its positions refuses what lies beyond. A line
// holds no more than was written to its file: a device is never opened for reading.
inline constexpr std::size_t kMaxLineLength = 32767;

// The host's description of an error number ("File not found" for 53).
std::string ErrDescription(std::int16_t err);
// The description of err as the last file operation met it: a device timeout also says how long
// the device took nothing and how much of the write it took.
std::string FileErrText(std::int16_t err);

// The lowest number that no open file holds.
std::int16_t FreeFile();
// Opens path under num; 0 on success, else the error number (55 when num is already open, or when
// the file is open under another number and mode is Output or Append; 75 for a folder, and for a
// device opened for input, whose reads may never end or never come). Paths are
// Windows-1252 text; "\" separates folders as "/" does.
//
// The open never waits for a partner: a FIFO without a reader, or a terminal waiting for its
// carrier, fails or opens at once (68 "Dispositivo indisponível" for a FIFO nobody reads). A path
// under /dev names a device, never a file to make: it is opened without being created, and a
// missing one is 68 as well, so that writing to a device that is not there cannot leave a plain
// file in its place that every later write would "succeed" on.
std::int16_t FileOpen(std::int16_t num, const std::string& path, FileMode mode);
bool FileIsOpen(std::int16_t num);
// Reads one line whole, without its terminator (CR LF, CR or LF); 62 past the end, 52 when not
// open, 18 when a stop signal ends a read that waits for a pipe.
std::int16_t FileReadLine(std::int16_t num, std::string& line);
// Writes text, followed by CR LF when newline is set; 0 or the error number (61 disk full). A
// device that takes no byte for WriteStallLimit() (write_stall.h) fails the write with 24 "Tempo de
// espera do dispositivo esgotado"; a stop signal (stop_signals.h) ends the wait with 18 when
// the write has not finished kStopGrace after it. Either way the bytes the device did not take are
// dropped, not left queued.
std::int16_t FileWrite(std::int16_t num, std::string_view text, bool newline);
// Closes num, delivering what was written; 0 or the error number of the final write.
std::int16_t FileClose(std::int16_t num);
void FileCloseAll();
// Whether the file that path names is open under some number (the host refuses to delete it, or to
// open it a second time for output or append).
bool FileHeldOpen(const std::string& path);

}  // namespace lumbra::platform
