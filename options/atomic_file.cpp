#include "options/atomic_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/file_errors.h"
#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "util/files/text_files.h"

namespace lumbra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReplacementSuffix = ".grv~";

// Whether the name can be replaced by a rename: it is missing, a plain file, or a link (which
// mode "O" would delete and create anew as well). Devices and pipes are written in place, and so
// is a name the host cannot look at.
bool ReplaceableByRename(const std::string& host) {
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

}  // namespace lumbra
