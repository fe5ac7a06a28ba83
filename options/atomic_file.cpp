#include "options/atomic_file.h"

#include <algorithm>
#include <vector>

#include "platform/file_handles.h"
#include "platform/file_replace.h"
#include "platform/file_system.h"
#include "platform/msg_box.h"
#include "util/files/text_files.h"

namespace lumbra {
namespace {

constexpr const char* kReplacementSuffix = ".grv~";

// A replacement beside "" would be made in the current folder, and one beside "cfg/" inside cfg,
// each under a name of its own that no write could give its target.
bool NamesAFile(const std::string& fic) {
    return !fic.empty() && fic.back() != '/' && fic.back() != '\\';
}

void RemoveQuietly(const std::string& name) {
    platform::FileDelete(name);
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
    if (NamesAFile(fic) && platform::ReplaceableByRename(fic)) {
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
    if (err == 0) err = platform::ReplaceFileWith(fic, wrk);
    if (err != 0) RemoveQuietly(wrk);
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
