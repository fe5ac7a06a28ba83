#pragma once
// --bytes: after each send, one line on standard output naming the channel and the bytes that left
// through it, "COM1: 1B 70 00 19 FA".

#include <string>
#include <string_view>

#include "channels/PgmFic.h"

namespace lumbra::ctl {

// The line for a write of bytes through channel (UTF-8, no line end): the channel's file name or
// port designation, ": ", the bytes in upper-case hexadecimal separated by blanks.
std::string ByteReportLine(const CanReg& channel, std::string_view bytes);

// Prints the line of every successful channel write on standard output while the object lives.
class ByteReporter {
  public:
    ByteReporter();
    ~ByteReporter();
    ByteReporter(const ByteReporter&) = delete;
    ByteReporter& operator=(const ByteReporter&) = delete;
};

}  // namespace lumbra::ctl
