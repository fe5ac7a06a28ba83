// Creation and destruction of the option table, its initialise/release operations, and the stack
// of files it reads from.

#include "options/TdaOpc.h"

#include <chrono>
#include <cstdio>
#include <ctime>

#include "options/atomic_file.h"
#include "platform/file_handles.h"
#include "util/files/text_files.h"
#include "util/text/chars.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

// The file open routine's error mode that shows the message and ends the program.
constexpr std::int16_t kErrModeShowAndEnd = 3;
constexpr int kHeaderLines = 5;

// The host's text of a positive single-precision number: a leading blank, at most seven
// significant digits, no zero before the decimal point (" .5").
std::string SingleText(double d) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", static_cast<double>(static_cast<float>(d)));
    std::string digits = buf;
    if (digits.rfind("0.", 0) == 0) digits.erase(0, 1);
    return " " + digits;
}

// "hh:mm:ss" and the seconds since midnight of the host's centisecond timer, both from one
// reading of the clock.
std::string CreationStamp() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const std::tm local = *std::localtime(&seconds);
    const auto centis =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() %
        1000 / 10;
    const double sinceMidnight = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec +
                                 static_cast<double>(centis) / 100.0;

    char clock[16];
    std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec);
    return clock + SingleText(sinceMidnight);
}

}  // namespace

TdaOpc::TdaOpc() {
    DbgInf_ = CreationStamp();
    KvIni();
}

TdaOpc::~TdaOpc() {
    KvFim();
}

void TdaOpc::KvIni() {
    // The stack is forgotten and the files read stay open, but a file being written is closed
    // and committed: nothing could reach it through the stack any more, and its text must not
    // be stranded beside its target.
    for (std::size_t i = 1; i < ficNum.size() && i < ficGrv.size(); ++i) {
        if (!ficGrv[i].opened) continue;
        platform::FileClose(ficNum[i]);
        FinishReplacement(ficNum[i]);
    }
    opcLin.assign(1, std::string());
    MemLpz();
    ficQtd = 0;
    ficNum.assign(1, 0);
    ficGrv.assign(1, FicGrv{});
    OpcEspIni();
}

void TdaOpc::KvFim() {
    const std::int16_t open = ficQtd;
    for (std::int16_t i = 0; i < open; ++i)
        FicFec();
    memTab.clear();
    opcTab.clear();
    tboTab.clear();
    ficNum.clear();
    ficGrv.clear();
    opcLin.clear();
    cabLin.clear();
}

std::int16_t TdaOpc::FicNov() {
    const std::int16_t n = platform::FreeFile();
    ++ficQtd;
    ficNum.resize(static_cast<std::size_t>(ficQtd) + 1);
    ficNum[static_cast<std::size_t>(ficQtd)] = n;
    ficGrv.resize(ficNum.size());
    ficGrv.back() = FicGrv{};
    return n;
}

std::int16_t TdaOpc::FicFec() {
    std::int16_t err = 0;
    return FicFec(err);
}

std::int16_t TdaOpc::FicFec(std::int16_t& err) {
    err = 0;
    if (ficQtd < 1) return -1;
    // A file that is already closed, or whose last write fails, still leaves the stack.
    const std::int16_t num = ficNum[static_cast<std::size_t>(ficQtd)];
    const FicGrv& grv = ficGrv[static_cast<std::size_t>(ficQtd)];
    if (!grv.writing) {
        platform::FileClose(num);
    } else if (grv.opened) {
        FicGrvErr(platform::FileClose(num));
        const std::int16_t completion = FinishReplacement(num);
        err = grv.err != 0 ? grv.err : completion;
    } else {
        // The number of a file that could not be opened may hold another's file by now.
        err = grv.err;
    }
    --ficQtd;
    ficNum.resize(static_cast<std::size_t>(ficQtd) + 1);
    ficGrv.resize(ficNum.size());
    return ficNum[static_cast<std::size_t>(ficQtd)];
}

std::int16_t TdaOpc::FicAtu() const {
    if (ficQtd < 1) return -1;
    return ficNum[static_cast<std::size_t>(ficQtd)];
}

void TdaOpc::FicGrvAbr(std::int16_t ok) {
    if (ficQtd < 1) return;
    FicGrv& grv = ficGrv[static_cast<std::size_t>(ficQtd)];
    grv.writing = true;
    grv.opened = ok == 1;
    grv.err = ok == 1 ? std::int16_t{0} : static_cast<std::int16_t>(-ok);
}

void TdaOpc::FicGrvErr(std::int16_t err) {
    if (ficQtd < 1 || err == 0) return;
    FicGrv& grv = ficGrv[static_cast<std::size_t>(ficQtd)];
    if (!grv.writing || grv.err != 0) return;
    grv.err = err;
    // A replacement that met a failure keeps the old file at its close.
    NoteReplacementError(ficNum[static_cast<std::size_t>(ficQtd)], err);
}

void TdaOpc::tboFic(const std::string& fic) {
    ficTbo_ = fic;
}

void TdaOpc::tboPrp(const std::string& fic, const std::string& inf) {
    ficTbo_ = fic;
    tboAbr(fic, inf);
}

void TdaOpc::tboFim() {
    tboFec();
}

void TdaOpc::tboFim(std::int16_t& ok) {
    std::int16_t err = 0;
    FicFec(err);
    ok = err == 0 ? std::int16_t{1} : static_cast<std::int16_t>(-err);
}

void TdaOpc::tboFec() {
    FicFec();
}

void TdaOpc::tboAbr(const std::string& fic, const std::string& inf) {
    const std::int16_t n = FicNov();
    std::int16_t err = kErrModeShowAndEnd;
    FicAbr(n, fic, "I", inf, err);

    // The header is consumed whatever it holds, so reading starts at the sixth line; a short file
    // leaves the missing lines empty.
    cabLin.assign(kHeaderLines + 1, std::string());
    for (std::size_t i = 1; i <= kHeaderLines; ++i) {
        std::string line;
        std::int16_t readErr = 0;
        FicLerLin(n, line, readErr);
        cabLin[i] = readErr == 0 ? std::string(TrimBlanks(line)) : std::string();
    }

    std::string before = cabLin[2];
    std::string type;
    TxSepMo("PE T", before, ":", type);
    ficTip_ = TxMai(type);
}

}  // namespace lumbra
