// Special options: bracketed key=value items at the end of a zone header's information text,
// in force for the zone that follows. The engine itself reads only CnvChr, which switches the
// decoding of literal notations in the lines read.

#include "options/TdaOpc.h"
#include "util/lists/bracketed_item.h"
#include "util/lists/typed_value.h"
#include "util/text/chars.h"
#include "util/text/numeric.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

void TdaOpc::OpcEspIni() {
    espLst.clear();
    espAct = 1;
}

void TdaOpc::OpcEspUsa(std::string& txi, std::int16_t& usa) {
    std::string before;
    std::string after;
    std::int16_t found = 0;
    TxSep2(txi, "[", before, after, found);
    if (after.empty()) {
        usa = 0;
        return;
    }
    usa = 1;
    txi = std::string(TrimBlanks(before));
    espLst = "[" + after;

    Variant conversion = espAct;
    OpcEspCon("CnvChr", conversion);
    // Only 1 keeps the decoding on; a value that is no 16-bit number switches it off like 0.
    std::int16_t act = 0;
    if (!NumToInt16(conversion.number(), act)) act = 0;
    espAct = act;
}

void TdaOpc::OpcEspCon(const std::string& ide, Variant& vop) {
    std::string before;
    std::string value;
    std::string after;
    std::int16_t ok = 0;
    ChvExt(TxMai(espLst), TxMai(ide), before, value, after, ok);
    if (ok == 1) VarAtr("", Variant(value), vop);
}

}  // namespace lumbra
