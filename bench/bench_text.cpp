// Speed of the two text routines on the path of loading a parameter file: the literal decoder
// over command text and the numeric reading of single fields.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "util/text/literal.h"
#include "util/text/numeric.h"

namespace {

// About 1 MiB of drawer and display commands as they are written in parameter files: plain text
// with a code list every few dozen characters.
std::string CommandText() {
    static constexpr std::array<std::string_view, 6> pieces = {
        "GAV_1 = chr$(27,112,0,25,250) ' abertura pelo pino 2 ",
        "Obrigado pela prefer\xEAncia, volte sempre! bin$(13,10)",
        "DIS_CMD LIMPA = chr$(&H0C) + \"Caixa livre\" + chr$(&H1B,&H51,&H41)",
        "Total a pagar:    12,50 EUR chr$(13, 10) chr$(27, 61, 1) ",
        "linha de teste da liga\xE7\xE3o serie 9600,n,8,1 bin$(&O33,&O100) ",
        "Display: bem-vindo chr$( 2 7 ,64)chr$(1E1,13) fim do comando ",
    };
    std::string text;
    std::size_t i = 0;
    while (text.size() < (std::size_t{1} << 20))
        text += pieces[i++ % pieces.size()];
    return text;
}

void BM_TxCnvChr(benchmark::State& state) {
    const std::string text = CommandText();
    for (auto _ : state) {
        std::string tx = text;
        lumbra::TxCnvChr(tx);
        benchmark::DoNotOptimize(tx.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_TxCnvChr);

void BM_NumRead(benchmark::State& state) {
    static constexpr std::array<std::string_view, 5> fields = {"27", "&H1B", " 1 2 ", "1.5E3",
                                                               "abc"};
    for (auto _ : state) {
        for (const std::string_view field : fields) {
            benchmark::DoNotOptimize(lumbra::NumRead(field));
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(fields.size()));
}
BENCHMARK(BM_NumRead);

}  // namespace

BENCHMARK_MAIN();
