#include "tools/listing.h"

#include "platform/host_text.h"

namespace lumbra::ctl {
namespace {

bool Unkept(unsigned char b) {
    return b < 32 || b == 127 || b == 0x81 || b == 0x8D || b == 0x8F || b == 0x90 || b == 0x9D;
}

std::string Chr(unsigned char b) {
    return "chr$(" + std::to_string(b) + ")";
}

// Windows-1252 with the unkept bytes spelled out, still in Windows-1252.
std::string Escaped(std::string_view cp1252) {
    std::string out;
    out.reserve(cp1252.size());
    for (char c : cp1252) {
        const auto b = static_cast<unsigned char>(c);
        if (Unkept(b))
            out += Chr(b);
        else
            out += c;
    }
    return out;
}

bool EndsWith(const std::string& tx, std::string_view end) {
    return tx.size() >= end.size() && tx.compare(tx.size() - end.size(), end.size(), end) == 0;
}

std::string Line(const std::string& zone, std::size_t n, const std::string& txi,
                 const std::string& ide, const std::string& vtx) {
    return zone + "\t" + std::to_string(n) + "\t" + ListingField(txi) + "\t" + ListingField(ide) +
           "\t" + ListingValue(vtx);
}

template <typename Row>
void AddZone(std::vector<std::string>& lines, const std::string& zone,
             const std::vector<Row>& tab) {
    for (std::size_t r = 1; r < tab.size(); ++r)
        lines.push_back(Line(zone, r, tab[r].txi, tab[r].ide, tab[r].vtx));
}

}  // namespace

std::string ListingField(std::string_view cp1252) {
    return platform::ToHostText(Escaped(cp1252));
}

std::string ListingValue(std::string_view cp1252) {
    std::string out = Escaped(cp1252);
    if (EndsWith(out, "+")) {
        out.pop_back();
        out += Chr('+');
    }
    if (EndsWith(out, " ") || EndsWith(out, "<-")) out += "<-";
    return platform::ToHostText(out);
}

std::vector<std::string> ListingLines(const LumbraGbState& g) {
    std::vector<std::string> lines;
    AddZone(lines, "LIG", g.ligTab);
    AddZone(lines, "GAV", g.gavTab);
    AddZone(lines, "DIS_OPC", g.disTab);
    AddZone(lines, "DIS_CMD", g.cmdTab);
    return lines;
}

}  // namespace lumbra::ctl
