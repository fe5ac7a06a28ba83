// The five header lines of a parameter file: built from their values, written as the start of a
// new file, and read back one at a time.

#include <string>
#include <vector>

#include "options/TdaOpc.h"
#include "options/atomic_file.h"
#include "platform/file_handles.h"
#include "util/files/paths.h"
#include "util/files/text_files.h"
#include "util/text/chars.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

constexpr std::size_t kHeaderLines = 5;

// Label of each header line: the colon in column 13, the value from column 15.
constexpr const char* kLabels[kHeaderLines + 1] = {
    "", "'Nome       : ", "'Tipo       : ", "'Data       : ", "'Versao     : ", "'Descricao  : ",
};

std::string Trimmed(const std::string& tx) {
    return std::string(TrimBlanks(tx));
}

// The value as text, trimmed; fallback only when the text is "" before trimming, so a value of
// blanks gives an empty value, not the fallback.
std::string TextOr(const Variant& v, const std::string& fallback) {
    const std::string t = VlStr(v);
    return t.empty() ? fallback : Trimmed(t);
}

}  // namespace

void TdaOpc::CabPrp(const Variant& tip, const Variant& dt, const Variant& ver, const Variant& inf) {
    std::vector<std::string> parts;
    PathDec(ficTbo_, parts);
    std::string name;
    PathNomExt(parts[4], parts[5], name);

    // Only a date given as text is shown: nothing in the system reads the date back, so a date
    // value is not formatted.
    const std::string date = dt.isText() ? Trimmed(dt.text()) : std::string();

    const std::string values[kHeaderLines + 1] = {
        "", name, TextOr(tip, "PAR"), date, TextOr(ver, "1.0"), Trimmed(VlStr(inf)),
    };
    cabLin.assign(kHeaderLines + 1, std::string());
    for (std::size_t i = 1; i <= kHeaderLines; ++i)
        cabLin[i] = kLabels[i] + values[i];
}

void TdaOpc::CabCri(std::int16_t fec) {
    std::int16_t ok = 0;
    CabCri(fec, ok);
}

void TdaOpc::CabCri(std::int16_t fec, std::int16_t& ok) {
    const std::int16_t n = FicNov();
    std::string wrk;
    OpenForReplacement(n, ficTbo_, wrk, ok);
    FicGrvAbr(ok);
    if (ok == 1 && wrk != ficTbo_) HoldReplacement(n, wrk, ficTbo_);

    // A file that could not be opened is not written: its number is not this file's.
    if (ok == 1) {
        std::int16_t err = 0;
        for (std::size_t i = 1; i <= kHeaderLines; ++i)
            FicGrvLin(n, i < cabLin.size() ? cabLin[i] : std::string(), err);
        FicGrvLin(n, "", err);
        FicGrvErr(err);
        if (err != 0) ok = static_cast<std::int16_t>(-err);
    }

    // Closing through the stack is what gives the file its own name.
    if (fec == 1) {
        std::int16_t closeOk = 1;
        tboFim(closeOk);
        if (ok == 1) ok = closeOk;
    }
}

void TdaOpc::CabCon(const std::string& mo, std::int16_t idx, std::string& txi) {
    std::string line;
    if (idx >= 0 && static_cast<std::size_t>(idx) < cabLin.size())
        line = cabLin[static_cast<std::size_t>(idx)];
    if (mo == "V") {
        std::string label;
        std::string rest;
        TxSepC(line, ":", label, rest);
        line = label;
    }
    txi = Trimmed(line);
}

}  // namespace lumbra
