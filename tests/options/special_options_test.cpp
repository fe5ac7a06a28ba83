// Special options: the bracketed items at the end of a zone header's information text, and the
// CnvChr item that switches the decoding of the lines read.

#include <gtest/gtest.h>

#include <string>

#include "tests/options/open_tda_opc.h"

namespace lumbra::test {
namespace {

TEST(SpecialOptions, OpcEspUsaTakesTheItemsOutAndDecodingStaysOnOnlyForCnvChrOne) {
    const struct {
        std::string txi, txiAfter;
        std::int16_t usa;
        std::string espLst, vtx;
    } cases[] = {
        {"Porta s\xE9rie [CnvChr=0]", "Porta s\xE9rie", 1, "[CnvChr=0]", " chr$(27)p"},
        {"  Ajuda   [cnvchr=0]", "Ajuda", 1, "[cnvchr=0]", " chr$(27)p"},
        {"[CnvChr=2]", "", 1, "[CnvChr=2]", " chr$(27)p"},
        {"[CnvChr=abc]", "", 1, "[CnvChr=abc]", " chr$(27)p"},
        {"[CnvChr=99999]", "", 1, "[CnvChr=99999]", " chr$(27)p"},
        {"[CnvChr=1]", "", 1, "[CnvChr=1]", " \x1Bp"},
        {"Info [X=1]", "Info", 1, "[X=1]", " \x1Bp"},
        {"x [", "x [", 0, "", " \x1Bp"},
        {"Sem op\xE7\xF5"
         "es",
         "Sem op\xE7\xF5"
         "es",
         0, "", " \x1Bp"},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "g.par", {"Abrir [A] = chr$(27)p"}));
        std::string txi = c.txi;
        std::int16_t usa = -1;
        opc.OpcEspUsa(txi, usa);
        EXPECT_EQ(txi, c.txiAfter) << c.txi;
        EXPECT_EQ(usa, c.usa) << c.txi;
        EXPECT_EQ(opc.specials(), c.espLst) << c.txi;
        Variant vp = "";
        opc.LerPar(vp);
        EXPECT_EQ(vp, Variant(c.vtx)) << c.txi;
    }
}

TEST(SpecialOptions, OpcEspConReadsAnyItemByTheTargetKind) {
    OpenTdaOpc opc;
    std::string txi = "Info [X=1] [Nome=abc]";
    std::int16_t usa = 0;
    opc.OpcEspUsa(txi, usa);
    const struct {
        std::string ide;
        Variant target, value;
    } cases[] = {
        {" x ", Variant(std::int16_t{0}), Variant(1.0)},
        {"X", Variant(""), Variant("1")},
        // The list is looked at in capitals, values included.
        {"nome", Variant(""), Variant("ABC")},
        {"Falta", Variant("antes"), Variant("antes")},
    };
    for (const auto& c : cases) {
        Variant vop = c.target;
        opc.OpcEspCon(c.ide, vop);
        EXPECT_EQ(vop, c.value) << c.ide;
    }
}

}  // namespace
}  // namespace lumbra::test
