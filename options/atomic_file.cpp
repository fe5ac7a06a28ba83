#include "options/atomic_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/file_errors.h"
#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/msg_box.h"
#include "util/files/text_files.h"

namespace lumbra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReplacementSuffix = ".grv~";

// Whether the name can be replaced by a rename: it is missing, a plain file, or a link (which
// mode "O" would delete and create anew as well). Devices and pipes are written in place, and so
// is a name the host cannot look at. Nothing under /dev is ever made, not even a file beside it.
bool ReplaceableByRename(const std::string& host) {
    if (platform::LiesUnderDev(host)) return false;
    std::error_code ec;
    const fs::file_status st = fs::symlink_status(host, ec);
    return st.type() == fs::file_type::not_found || st.type() == fs::file_type::regular ||
           st.type() == fs::file_type::symlink;
}

// Flushes what the host holds of a file or folder to the disk. Writes of the numbered files go
// straight to the host, so a file closed under its number can be flushed through a fresh
// descriptor. The standard library has no such flush: this is the one host call here.
std::int16_t SyncToDisk(const std::string& host, bool folder) {
    int fd = -1;
    do {
        fd = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | (folder ? O_DIRECTORY : 0));
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) return platform::FileErrorFromErrno(errno, host);
    int rc = 0;
    do {
        rc = ::fsync(fd);
    } while (rc != 0 && errno == EINTR);
    const int syncErr = rc != 0 ? errno : 0;
    ::close(fd);
    return syncErr != 0 ? platform::FileErrorFromErrno(syncErr, host) : std::int16_t{0};
}

std::string FolderOf(const std::string& host) {
    const fs::path parent = fs::path(host).parent_path();
    return parent.empty() ? std::string(".") : parent.string();
}

void RemoveQuietly(const std::string& host) {
    std::error_code ec;
    fs::remove(host, ec);
}

struct Pending {
    std::int16_t num = 0;
    std::string wrk;
    std::string fic;
    std::int16_t err = 0;  // the first failed write, 0 while all went well
};

std::vector<Pending>& PendingReplacements() {
    static std::vector<Pending> pending;
    return pending;
}

// The immediate end of the program closes every numbered file before its hooks run, so every
// pending replacement is complete by then and takes its name.
void CompleteAllAtProgramEnd() {
    std::vector<Pending> pending;
    pending.swap(PendingReplacements());
    for (Pending& p : pending) {
        platform::FileClose(p.num);
        CompleteReplacement(p.wrk, p.fic, p.err);
    }
}

}  // namespace

std::string ReplacementName(const std::string& fic) {
    return fic + kReplacementSuffix;
}

void OpenForReplacement(std::int16_t num, const std::string& fic, std::string& wrk,
                        std::int16_t& ok) {
    if (platform::FileHeldOpen(fic)) {
        wrk = fic;
        ok = static_cast<std::int16_t>(-platform::kErrFileAlreadyOpen);
        return;
    }
    if (ReplaceableByRename(platform::HostPath(fic))) {
        const std::string beside = ReplacementName(fic);
        FicAbrOk(num, beside, "O", ok);
        if (ok == 1) {
            wrk = beside;
            return;
        }
        // A replacement file that another write of this program holds is a conflict with that
        // write, not a reason to write in place.
        if (ok == -platform::kErrFileAlreadyOpen) {
            wrk = beside;
            return;
        }
    }
    wrk = fic;
    FicAbrOk(num, fic, "O", ok);
}

void CompleteReplacement(const std::string& wrk, const std::string& fic, std::int16_t& err) {
    if (wrk == fic) return;
    const std::string hostWrk = platform::HostPath(wrk);
    const std::string hostFic = platform::HostPath(fic);
    if (err != 0) {
        RemoveQuietly(hostWrk);
        return;
    }
    err = SyncToDisk(hostWrk, false);
    if (err != 0) {
        RemoveQuietly(hostWrk);
        return;
    }
    std::error_code ec;
    fs::rename(hostWrk, hostFic, ec);
    if (ec) {
        err = platform::FileErrorFromErrno(ec.value(), hostFic);
        RemoveQuietly(hostWrk);
        return;
    }
    // The new name must survive a power cut as well; a folder that cannot be flushed does not
    // undo a rename that has already happened.
    SyncToDisk(FolderOf(hostFic), true);
}

void HoldReplacement(std::int16_t num, const std::string& wrk, const std::string& fic) {
    static const bool hooked = [] {
        platform::AtProgramEnd(CompleteAllAtProgramEnd);
        return true;
    }();
    (void)hooked;
    PendingReplacements().push_back(Pending{num, wrk, fic, 0});
}

void NoteReplacementError(std::int16_t num, std::int16_t err) {
    if (err == 0) return;
    for (Pending& p : PendingReplacements()) {
        if (p.num == num && p.err == 0) p.err = err;
    }
}

bool ReplacementPending(std::int16_t num) {
    const std::vector<Pending>& all = PendingReplacements();
    return std::any_of(all.begin(), all.end(), [num](const Pending& p) { return p.num == num; });
}

std::int16_t FinishReplacement(std::int16_t num) {
    std::vector<Pending>& all = PendingReplacements();
    const auto it =
        std::find_if(all.begin(), all.end(), [num](const Pending& p) { return p.num == num; });
    if (it == all.end() || platform::FileIsOpen(num)) return 0;
    Pending p = std::move(*it);
    all.erase(it);
    CompleteReplacement(p.wrk, p.fic, p.err);
    return p.err;
}

}  // namespace lumbra
