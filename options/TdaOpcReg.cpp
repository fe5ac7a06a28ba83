// Records: a parameter file edited in place as its physical lines (no continuations joined, no
// literals decoded, the header lines counted like any other), found by variable name, changed,
// added to or eliminated, and written back whole. Also the zone blocks of a file being created.

#include <string>
#include <vector>

#include "options/TdaOpc.h"
#include "options/atomic_file.h"
#include "platform/file_handles.h"
#include "util/files/name_index.h"
#include "util/files/paths.h"
#include "util/files/text_files.h"
#include "util/text/chars.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

// Records are indexed with one kind only.
constexpr std::int16_t kRecordKind = 1;
// The name index holds positions up to 32000; records beyond are kept but cannot be found.
constexpr std::size_t kLastIndexedRecord = 32000;
// The error mode that shows the message and ends the program.
constexpr std::int16_t kErrModeShowAndEnd = 3;

// A record that is exactly this (the characters 171 and 187) is eliminated.
constexpr const char* kEliminated = "\xAB\xBB";
// The line above and below a zone's head: "'" and 79 "=".
const std::string kZoneRule = "'" + std::string(79, '=');

}  // namespace

void TdaOpc::RegPrp(const std::string& fic) {
    regLin.assign(1, fic);
    idxNom.clear();

    const std::int16_t n = FicNov();
    std::int16_t err = kErrModeShowAndEnd;
    FicAbr(n, fic, "I", "LER", err);

    for (;;) {
        std::string line;
        std::int16_t readErr = 0;
        FicLerLin(n, line, readErr);
        if (readErr != 0) break;
        regLin.push_back(std::move(line));
        const std::size_t i = regLin.size() - 1;

        std::string tpp;
        std::string var;
        ParTpp(regLin[i], tpp, var);
        if (var.empty() || i > kLastIndexedRecord) continue;
        std::string tip;
        std::string name;
        ParTipVar(var, tip, name);
        std::int16_t ok = 0;
        IdxAdd(idxNom, name, kRecordKind, static_cast<std::int16_t>(i), ok);
    }
    FicFec();
}

void TdaOpc::RegExe(const std::string& fic, std::int16_t lpz) {
    std::int16_t ok = 0;
    RegExe(fic, lpz, ok);
}

void TdaOpc::RegExe(const std::string& fic, std::int16_t lpz, std::int16_t& ok) {
    // A name given here is taken as it stands; only a blank one means the loaded file.
    std::string target = fic;
    if (TrimBlanks(fic).empty()) target = regLin.empty() ? std::string() : regLin[0];

    // Only the missing folders are made here: an empty file made in advance would be a third
    // state, neither old nor new, should the write be interrupted.
    std::string dir;
    std::string name;
    PathSep(target, dir, name);
    if (!dir.empty()) DirCriArv(dir);

    // One write of the whole text: the replacement file is either complete or thrown away.
    std::string text;
    if (lpz == 0 || lpz == 1) {
        for (std::size_t i = 1; i < regLin.size(); ++i) {
            if (lpz == 1 && regLin[i] == kEliminated) continue;
            text += regLin[i];
            text += "\r\n";
        }
    }

    const std::int16_t n = platform::FreeFile();
    std::string wrk;
    OpenForReplacement(n, target, wrk, ok);
    if (ok == 1) {
        std::int16_t err = platform::FileWrite(n, text, false);
        const std::int16_t closeErr = platform::FileClose(n);
        if (err == 0) err = closeErr;
        CompleteReplacement(wrk, target, err);
        if (err != 0) ok = static_cast<std::int16_t>(-err);
    }
    regLin.clear();
}

void TdaOpc::RegCabAlt(std::int16_t idx, const std::string& txn) {
    if (idx < 0 || static_cast<std::size_t>(idx) >= regLin.size()) return;
    std::string& rec = regLin[static_cast<std::size_t>(idx)];
    const std::size_t colon = rec.find(':');
    if (colon == std::string::npos) return;
    rec = rec.substr(0, colon) + ": " + txn;
}

void TdaOpc::RegCon(const std::string& var, Variant& vp) {
    std::int16_t ok = 0;
    RegCon(var, vp, ok);
}

void TdaOpc::RegCon(const std::string& var, Variant& vp, std::int16_t& ok) {
    std::int16_t tip = 0;
    std::int16_t pos = 0;
    IdxCon(idxNom, TxMai(var), tip, pos);

    // An index left from records already written names nothing.
    std::string value;
    if (pos > 0 && static_cast<std::size_t>(pos) < regLin.size()) {
        const std::string& rec = regLin[static_cast<std::size_t>(pos)];
        const std::size_t eq = rec.find('=');
        if (eq != std::string::npos) value = rec.substr(eq + 1);
    }
    TxVl(value, vp, ok);
}

void TdaOpc::RegConIdx(std::int16_t idx, std::string& txi) {
    if (idx < 0 || static_cast<std::size_t>(idx) >= regLin.size()) {
        txi.clear();
        return;
    }
    txi = regLin[static_cast<std::size_t>(idx)];
}

void TdaOpc::RegVarAlt(const std::string& var, const Variant& vp, std::int16_t Cri) {
    const std::string t = VlStr(vp);
    std::int16_t tip = 0;
    std::int16_t pos = 0;
    IdxCon(idxNom, TxMai(var), tip, pos);

    if (pos > 0) {
        if (static_cast<std::size_t>(pos) >= regLin.size()) return;
        std::string& rec = regLin[static_cast<std::size_t>(pos)];
        // The blanks after the old "=" go with the old value.
        rec = rec.substr(0, rec.find('=')) + "=" + t;
        return;
    }
    // The new record is not indexed: a second call before reloading appends again.
    if (Cri == 1) regLin.push_back("??? [" + var + "]=" + t);
}

void TdaOpc::RegVarEli(const std::string& var) {
    std::int16_t tip = 0;
    std::int16_t pos = 0;
    IdxCon(idxNom, TxMai(var), tip, pos);
    if (pos > 0 && static_cast<std::size_t>(pos) < regLin.size())
        regLin[static_cast<std::size_t>(pos)] = kEliminated;
}

void TdaOpc::RegZon(const std::string& zon, const std::vector<std::string>& txz,
                    const std::string& txi) {
    std::int16_t ok = 0;
    RegZon(zon, txz, txi, ok);
}

void TdaOpc::RegZon(const std::string& zon, const std::vector<std::string>& txz,
                    const std::string& txi, std::int16_t& ok) {
    if (ficQtd > 0) {
        const FicGrv& grv = ficGrv[static_cast<std::size_t>(ficQtd)];
        if (grv.writing && !grv.opened) {
            ok = static_cast<std::int16_t>(-grv.err);
            return;
        }
    }
    const std::int16_t n = FicAtu();
    std::int16_t err = 0;
    FicGrvLin(n, kZoneRule, err);
    FicGrvLin(n, "#" + zon + " - " + txi, err);
    FicGrvLin(n, kZoneRule, err);
    for (std::size_t i = 1; i < txz.size(); ++i)
        FicGrvLin(n, txz[i], err);
    FicGrvLin(n, "##", err);
    FicGrvLin(n, "", err);
    FicGrvLin(n, "", err);
    FicGrvErr(err);
    ok = err == 0 ? std::int16_t{1} : static_cast<std::int16_t>(-err);
}

}  // namespace lumbra
