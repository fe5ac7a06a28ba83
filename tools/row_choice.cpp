#include "tools/row_choice.h"

#include <algorithm>

namespace lumbra::ctl {
namespace {

// The row number a text of digits stands for; 0 for anything else or beyond last.
std::size_t RowNumber(const std::string& wanted, std::size_t last) {
    if (wanted.empty() || wanted.size() > 5) return 0;
    if (!std::all_of(wanted.begin(), wanted.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return 0;
    const auto n = static_cast<std::size_t>(std::stoul(wanted));
    return n <= last ? n : 0;
}

template <typename Row>
std::int16_t Choose(const std::vector<Row>& tab, const std::string& wanted) {
    if (tab.size() < 2) return 0;
    const std::size_t last = tab.size() - 1;
    std::size_t row = wanted.empty() ? 1 : RowNumber(wanted, last);
    for (std::size_t r = 1; row == 0 && r <= last; ++r) {
        if (tab[r].txi == wanted) row = r;
    }
    // Tables hold at most 32767 rows, the zone's 16-bit count.
    return static_cast<std::int16_t>(row);
}

}  // namespace

std::int16_t ChooseRow(const std::vector<LinReg>& tab, const std::string& wanted) {
    return Choose(tab, wanted);
}

std::int16_t ChooseRow(const std::vector<CmdReg>& tab, const std::string& wanted) {
    return Choose(tab, wanted);
}

}  // namespace lumbra::ctl
