// The split of single lines: type marks, the assignment split and the type:name split.

#include <gtest/gtest.h>

#include <string>

#include "options/TdaOpc.h"

namespace lumbra {
namespace {

TEST(ParTpp, ClassifiesByLeadingCharactersAndTheFirstEqualsSign) {
    const struct {
        std::string tx, tpp, var;
    } cases[] = {
        {"", "", ""},
        {"   ", "?", ""},
        {"'x [A] = 1", "'", ""},
        {"  ' nota = 1", "=", ""},
        {"##", "##", ""},
        {"#DEF - Defini\xE7\xF5"
         "es",
         "#", ""},
        {"$$x", "$$", ""},
        {"ab=1", "?", ""},
        {"abc=1", "=", ""},
        {"x [a.b] = 5", "=", "A.B"},
        {"Nome [ NOME ] =", "=", "NOME"},
        {"Porta [porta\xE7\xE3o]=1", "=", "PORTA\xC7\xC3O"},
        {"Vel [VEL = 1", "=", ""},
        // The bracket search runs over the whole line, value included.
        {"Valor = [ref] fim", "=", "REF"},
        {"Tab [\tA ] = 1", "=", "\tA"},
    };
    TdaOpc opc;
    for (const auto& c : cases) {
        std::string tpp = "old";
        std::string var = "old";
        opc.ParTpp(c.tx, tpp, var);
        EXPECT_EQ(tpp, c.tpp) << c.tx;
        EXPECT_EQ(var, c.var) << c.tx;
    }
}

TEST(ParPrep, SplitsDescriptionIdentifierValueAndValuePosition) {
    const struct {
        std::string txp, txi, ide, vtx;
        std::int16_t ptx;
    } cases[] = {
        {"Porta de comunica\xE7\xE3o [PORTA] = COM1", "Porta de comunica\xE7\xE3o", "PORTA",
         " COM1", 31},
        {"Velocidade [VEL]=9600", "Velocidade", "VEL", "9600", 18},
        {"  Pausa   = 5 ", "Pausa", "", " 5 ", 12},
        // Split from the third position on, where ParTpp calls the line unclassified.
        {"ab=1", "ab", "", "1", 4},
        {"'x [A] = 1", "", "", "", 0},
        {"  ' nota = 1", "' nota", "", " 1", 11},
        {"Nome [ NOME ] =", "Nome", " NOME ", "", 16},
        {"x [a.b] = 5", "x", "a.b", " 5", 10},
        {"Vel [VEL = 1", "Vel [VEL", "", " 1", 11},
        {"Pos [P] fim = a=b", "Pos", "P", " a=b", 14},
        {"Tab\t[A]=1", "Tab\t", "A", "1", 9},
    };
    TdaOpc opc;
    for (const auto& c : cases) {
        std::string txi = "old";
        std::string ide = "old";
        std::string vtx = "old";
        std::int16_t ptx = -5;
        opc.ParPrep(c.txp, txi, ide, vtx, ptx);
        EXPECT_EQ(txi, c.txi) << c.txp;
        EXPECT_EQ(ide, c.ide) << c.txp;
        EXPECT_EQ(vtx, c.vtx) << c.txp;
        EXPECT_EQ(ptx, c.ptx) << c.txp;
    }
}

}  // namespace
}  // namespace lumbra
