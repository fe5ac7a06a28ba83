// Loading a parameter file as the program loads it: an IDE zone walked record by record, and a DEF
// zone turned into options that are then queried key by key. Both must grow in proportion to the
// number of records; a plain getline-and-split loop over the same lines is the yardstick. Large
// files (1, 10 and 100 MB) are loaded whole and read plainly in the same run, both in MB/s.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "options/TdaOpc.h"
#include "util/text/variant.h"

namespace {

namespace fs = std::filesystem;

// The generated files, one per zone kind and size, removed when the program ends.
class BenchFiles {
  public:
    BenchFiles()
        : dir_(fs::temp_directory_path() / ("lumbra-bench-" + std::to_string(::getpid()))) {
        fs::create_directories(dir_);
    }
    ~BenchFiles() {
        std::error_code ec;
        fs::remove_all(dir_, ec);
    }
    BenchFiles(const BenchFiles&) = delete;
    BenchFiles& operator=(const BenchFiles&) = delete;

    // A parameter file with one zone `zone` of n assignment lines.
    const std::string& file(const std::string& zone, std::int64_t n) {
        const std::string name = zone + "-" + std::to_string(n) + ".par";
        auto it = files_.find(name);
        if (it != files_.end()) return it->second;
        const std::string path = (dir_ / name).string();
        std::ofstream out(path, std::ios::binary);
        out << "'Nome       : " << name << "\r\n'Tipo       : PAR\r\n'Data       : \r\n"
            << "'Versao     : 1.0\r\n'Descricao  : Carga\r\n";
        out << "#" << zone << " Zona - Configura\xE7\xE3o\r\n";
        for (std::int64_t i = 1; i <= n; ++i) {
            out << "Op\xE7\xE3o n\xFAmero " << i << " [K" << i << "]=COM1,9600,n,8,1 linha " << i
                << "\r\n";
        }
        out << "##\r\n";
        return files_.emplace(name, path).first->second;
    }

    // About mb megabytes of LIG zones of 30 000 rows each, as a parameter file grown large.
    const std::string& large(std::int64_t mb) {
        const std::string name = "large-" + std::to_string(mb) + ".par";
        auto it = files_.find(name);
        if (it != files_.end()) return it->second;
        const std::string path = (dir_ / name).string();
        std::ofstream out(path, std::ios::binary);
        out << "'Nome       : " << name << "\r\n'Tipo       : PAR\r\n'Data       : \r\n"
            << "'Versao     : 1.0\r\n'Descricao  : Carga\r\n";
        const std::int64_t bytes = mb * 1000 * 1000;
        std::int64_t written = 0;
        for (std::int64_t row = 0; written < bytes; ++row) {
            std::string text =
                row % 30000 == 0 ? (row == 0 ? "" : "##\r\n") + std::string("#LIG Portas\r\n") : "";
            text += "Porta n\xFAmero " + std::to_string(row) +
                    " [SER]=COM1,9600,n,8,1 chr$(27,112,0) linha " + std::to_string(row) + "\r\n";
            out << text;
            written += static_cast<std::int64_t>(text.size());
        }
        out << "##\r\n";
        return files_.emplace(name, path).first->second;
    }

  private:
    fs::path dir_;
    std::map<std::string, std::string> files_;
};

BenchFiles& Files() {
    static BenchFiles files;
    return files;
}

// ZonIni, ZonSeg to the end with every record of every IDE zone asked for and split, ZonFim.
void BM_IdeZoneWalk(benchmark::State& state) {
    const std::string& fic = Files().file("CFG", state.range(0));
    std::int64_t records = 0;
    for (auto _ : state) {
        lumbra::TdaOpc opc;
        opc.ZonIni(fic);
        std::string ide;
        std::string tip;
        std::int16_t cnt = 0;
        std::string txi;
        opc.ZonSeg(ide, tip, cnt, txi);
        while (!ide.empty()) {
            // An int counter: a 16-bit one would wrap before passing a count of 32 767.
            for (int r = 1; r <= cnt; ++r) {
                std::string txp;
                std::int16_t exi = 0;
                opc.MemConTxp(lumbra::Variant(static_cast<std::int16_t>(r)), txp, exi);
                std::string name;
                std::string kind;
                std::string value;
                std::int16_t ptx = 0;
                opc.ParPrep(txp, name, kind, value, ptx);
                benchmark::DoNotOptimize(value.data());
            }
            records += cnt;
            opc.ZonSeg(ide, tip, cnt, txi);
        }
        opc.ZonFim();
    }
    state.SetItemsProcessed(records);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_IdeZoneWalk)->Arg(1000)->Arg(10000)->Arg(32767)->Complexity(benchmark::oN);

// A DEF zone becomes the option list; then every key is asked for with OpcCon.
void BM_DefZoneOptions(benchmark::State& state) {
    const std::int64_t n = state.range(0);
    const std::string& fic = Files().file("DEF", n);
    std::vector<std::string> keys;
    for (std::int64_t i = 1; i <= n; ++i)
        keys.push_back("k" + std::to_string(i));
    for (auto _ : state) {
        lumbra::TdaOpc opc;
        opc.ZonIni(fic);
        std::string ide;
        std::string tip;
        std::int16_t cnt = 0;
        opc.ZonSeg(ide, tip, cnt);
        for (const auto& key : keys) {
            lumbra::Variant value = std::string();
            opc.OpcCon(key, value);
            benchmark::DoNotOptimize(value);
        }
        opc.ZonSeg(ide, tip, cnt);
        opc.ZonFim();
    }
    state.SetItemsProcessed(state.iterations() * n);
    state.SetComplexityN(n);
}
BENCHMARK(BM_DefZoneOptions)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);

// The yardstick: the same lines read with getline and split at the first "=".
void BM_PlainGetlineSplit(benchmark::State& state) {
    const std::int64_t n = state.range(0);
    const std::string& fic = Files().file("CFG", n);
    for (auto _ : state) {
        std::ifstream in(fic, std::ios::binary);
        std::vector<std::pair<std::string, std::string>> rows;
        std::string line;
        while (std::getline(in, line)) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            const std::size_t eq = line.find('=');
            if (eq == std::string::npos) continue;
            rows.emplace_back(line.substr(0, eq), line.substr(eq + 1));
        }
        benchmark::DoNotOptimize(rows.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
    state.SetComplexityN(n);
}
BENCHMARK(BM_PlainGetlineSplit)->Arg(1000)->Arg(10000)->Arg(32767)->Complexity(benchmark::oN);

std::int64_t FileSize(const std::string& path) {
    return static_cast<std::int64_t>(fs::file_size(path));
}

// The whole load of the configuration: every zone walked, every record asked for and split.
void BM_LargeFileLoad(benchmark::State& state) {
    const std::string& fic = Files().large(state.range(0));
    for (auto _ : state) {
        lumbra::TdaOpc opc;
        opc.ZonIni(fic);
        std::string ide;
        std::string tip;
        std::int16_t cnt = 0;
        opc.ZonSeg(ide, tip, cnt);
        while (!ide.empty()) {
            for (int r = 1; r <= cnt; ++r) {
                std::string txp;
                std::int16_t exi = 0;
                opc.MemConTxp(lumbra::Variant(static_cast<std::int16_t>(r)), txp, exi);
                std::string txi;
                std::string name;
                std::string value;
                std::int16_t ptx = 0;
                opc.ParPrep(txp, txi, name, value, ptx);
                benchmark::DoNotOptimize(value.data());
            }
            opc.ZonSeg(ide, tip, cnt);
        }
        opc.ZonFim();
    }
    state.SetBytesProcessed(state.iterations() * FileSize(fic));
}
BENCHMARK(BM_LargeFileLoad)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

// The same file read plainly, line by line, in the same run.
void BM_LargeFilePlainRead(benchmark::State& state) {
    const std::string& fic = Files().large(state.range(0));
    for (auto _ : state) {
        std::ifstream in(fic, std::ios::binary);
        std::string line;
        std::int64_t lines = 0;
        while (std::getline(in, line))
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * FileSize(fic));
}
BENCHMARK(BM_LargeFilePlainRead)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
