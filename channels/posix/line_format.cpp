#include "channels/posix/line_format.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace lumbra {
namespace {

// Device numbers of pseudo-terminal slaves (/dev/pts/N).
constexpr unsigned int kFirstPtsMajor = 136;
constexpr unsigned int kLastPtsMajor = 143;

tcflag_t SizeFlag(std::int16_t dataBits) {
    switch (dataBits) {
        case 5:
            return CS5;
        case 6:
            return CS6;
        case 7:
            return CS7;
        default:
            return CS8;
    }
}

tcflag_t ParityFlags(SerialParity parity) {
    switch (parity) {
        case SerialParity::None:
            return 0;
        case SerialParity::Even:
            return PARENB;
        case SerialParity::Odd:
            return PARENB | PARODD;
        // With CMSPAR the parity bit is fixed: PARODD set gives mark, clear gives space.
        case SerialParity::Mark:
            return PARENB | CMSPAR | PARODD;
        case SerialParity::Space:
            return PARENB | CMSPAR;
    }
    return 0;
}

constexpr tcflag_t kParityMask = PARENB | PARODD | CMSPAR;

}  // namespace

void SetLineFormat(termios& tio, const SerialSettings& settings) {
    tio.c_cflag &= ~(CSIZE | kParityMask | CSTOPB | CRTSCTS);
    tio.c_cflag |= SizeFlag(settings.dataBits) | ParityFlags(settings.parity);
    if (settings.stopBits != SerialStopBits::One) tio.c_cflag |= CSTOPB;
    tio.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY | INPCK);
    if (settings.parity != SerialParity::None) tio.c_iflag |= INPCK;
}

bool LineFormatTaken(const termios& tio, const SerialSettings& settings, bool pseudoTerminal) {
    const bool twoStop = settings.stopBits != SerialStopBits::One;
    if (((tio.c_cflag & CSTOPB) != 0) != twoStop) return false;
    if (pseudoTerminal) return true;
    return (tio.c_cflag & CSIZE) == SizeFlag(settings.dataBits) &&
           (tio.c_cflag & kParityMask) == ParityFlags(settings.parity);
}

bool IsPseudoTerminal(int fd) {
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISCHR(st.st_mode)) return false;
    const unsigned int deviceMajor = ::major(st.st_rdev);
    return deviceMajor >= kFirstPtsMajor && deviceMajor <= kLastPtsMajor;
}

}  // namespace lumbra
