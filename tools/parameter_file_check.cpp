#include "tools/parameter_file_check.h"

#include "platform/file_handles.h"
#include "tools/regular_file.h"

namespace lumbra::ctl {
namespace {

// Follows UTF-8 sequences across the chunks of a read: how many continuation bytes are still
// due, whether any multi-byte sequence was complete, and whether any byte broke the rules.
class Utf8Check {
  public:
    void take(unsigned char b) {
        if (due_ > 0) {
            if ((b & 0xC0) != 0x80) broken_ = true;
            if (--due_ == 0) complete_ = true;
            return;
        }
        if (b < 0x80) return;
        if (b >= 0xC2 && b <= 0xDF) {
            due_ = 1;
        } else if (b >= 0xE0 && b <= 0xEF) {
            due_ = 2;
        } else if (b >= 0xF0 && b <= 0xF4) {
            due_ = 3;
        } else {
            broken_ = true;
        }
    }
    bool utf8() const { return complete_ && !broken_ && due_ == 0; }

  private:
    int due_ = 0;
    bool complete_ = false;
    bool broken_ = false;
};

}  // namespace

ParameterFileScan ScanParameterFile(const std::string& hostPath) {
    ParameterFileScan scan;
    Utf8Check utf8;
    std::size_t lineLength = 0;
    const bool read = ReadRegularFile(hostPath, [&](std::string_view chunk) {
        for (const char c : chunk) {
            const auto b = static_cast<unsigned char>(c);
            if (b == '\r' || b == '\n') {
                lineLength = 0;
                continue;
            }
            if (++lineLength == platform::kMaxLineLength + 1) ++scan.longLines;
            utf8.take(b);
        }
    });
    scan.utf8 = read && utf8.utf8();
    return scan;
}

}  // namespace lumbra::ctl
