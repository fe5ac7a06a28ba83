// The command line: its words, the word at a position or after a switch, and the parameter file
// it names.

#include "options/TdaOpc.h"
#include "platform/program.h"
#include "util/files/paths.h"
#include "util/files/text_files.h"
#include "util/lists/typed_value.h"
#include "util/text/chars.h"
#include "util/text/numeric.h"
#include "util/text/split.h"

namespace lumbra {

void TdaOpc::LcIni(const std::string& nfp) {
    LcPrpArg(platform::CommandLine());
    LcPrpFpa(nfp);
}

void TdaOpc::LcPrpArg(const std::string& cmd) {
    std::int16_t n = 0;
    TxCmdArr(cmd, n);
    lcArg = TxCmdArg();
    LcArgC_ = n;
}

void TdaOpc::LcPrpFpa(const std::string& nfp) {
    Variant named = std::string();
    std::int16_t ok = 0;
    LcCon("-FP", named, ok);
    std::string path = named.text();
    // Only the default name goes to the program's folder; a name given after -FP is used as
    // written, and when it does not exist the default is not tried.
    if (path.empty() && !nfp.empty()) PathJun(platform::ProgramFolder(), nfp, path);
    std::int16_t exi = 0;
    FicExi(path, exi);
    LcFpa_ = exi == 1 ? path : std::string();
}

void TdaOpc::LcCon(const Variant& arg, Variant& vl) {
    std::int16_t ok = 0;
    LcCon(arg, vl, ok);
}

void TdaOpc::LcCon(const Variant& arg, Variant& vl, std::int16_t& ok) {
    std::int16_t position = -1;
    if (arg.isText()) {
        std::int16_t p = 0;
        LcExi(arg.text(), p);
        if (p > 0 && p < INT16_MAX) position = static_cast<std::int16_t>(p + 1);
    } else if (!arg.isNull() && !NumToInt16(arg.number(), position)) {
        position = -1;
    }

    if (position >= 1 && position <= LcArgC_ && static_cast<std::size_t>(position) < lcArg.size()) {
        ok = 1;
        VarCnv(Variant(lcArg[static_cast<std::size_t>(position)]), vl);
    } else {
        ok = 0;
        VarVaz(vl);
    }
}

void TdaOpc::LcExi(const std::string& chv, std::int16_t& exi) {
    const std::string name = UpperCase(chv);
    for (std::size_t i = 1; i < lcArg.size(); ++i) {
        if (UpperCase(lcArg[i]) == name) {
            exi = static_cast<std::int16_t>(i);
            return;
        }
    }
    exi = 0;
}

}  // namespace lumbra
