#pragma once
// The one way a numbered file's input is cut into lines, whatever reads its bytes: CR LF, CR or LF
// end a line, a CR LF split across two reads is still one terminator, and the last line counts
// without a terminator.

#include <cstdint>
#include <cstring>
#include <string>

#include "platform/file_handles.h"

namespace lumbra::platform {

struct LineBuffer {
    // Bytes read ahead of the caller.
    std::string buffer;
    std::size_t pos = 0;
    // A CR just ended a line: an LF right after it belongs to the same terminator.
    bool skipLf = false;
};

// The first CR or LF at or after from, npos when none: two memchr passes, which find_first_of
// with its per-character set test is many times slower than.
inline std::size_t LineEnd(const std::string& buffer, std::size_t from) {
    const char* begin = buffer.data() + from;
    const std::size_t left = buffer.size() - from;
    const void* lf = std::memchr(begin, '\n', left);
    const std::size_t lfAt =
        lf == nullptr ? left : static_cast<std::size_t>(static_cast<const char*>(lf) - begin);
    const void* cr = std::memchr(begin, '\r', lfAt);
    const std::size_t at =
        cr == nullptr ? lfAt : static_cast<std::size_t>(static_cast<const char*>(cr) - begin);
    return at == left ? std::string::npos : from + at;
}

// Reads the next line whole into line. refill(err) puts the next chunk in in.buffer (in.pos = 0)
// and gives its size: 0 at the end, below 0 after setting err. 0, kErrInputPastEnd or err.
template <typename Refill>
std::int16_t ReadBufferedLine(LineBuffer& in, std::string& line, Refill refill) {
    line.clear();
    bool any = false;
    for (;;) {
        if (in.pos == in.buffer.size()) {
            std::int16_t err = 0;
            const auto got = refill(err);
            if (got < 0) return err;
            if (got == 0) break;
        }
        if (in.skipLf) {
            in.skipLf = false;
            if (in.buffer[in.pos] == '\n') {
                ++in.pos;
                continue;
            }
        }
        const std::size_t end = LineEnd(in.buffer, in.pos);
        const std::size_t stop = end == std::string::npos ? in.buffer.size() : end;
        line.append(in.buffer, in.pos, stop - in.pos);
        if (end == std::string::npos) {
            in.pos = in.buffer.size();
            any = true;
            continue;
        }
        in.skipLf = in.buffer[end] == '\r';
        in.pos = end + 1;
        return 0;
    }
    return any ? 0 : kErrInputPastEnd;
}

}  // namespace lumbra::platform
