#pragma once
// Which configured row an argument such as --porta names: a row number as "listar" shows it (1 is
// the first row), or a row's name, matched exactly (the first row of that name). An argument left
// out names the first row.

#include <cstdint>
#include <string>
#include <vector>

#include "app/LumbraGb.h"

namespace lumbra::ctl {

// The row of tab that wanted (Windows-1252) names, or 0 when it names none. A text of digits is
// a row number when such a row exists, and a name otherwise. A table without configured rows has
// no row to choose, not even the first.
std::int16_t ChooseRow(const std::vector<LinReg>& tab, const std::string& wanted);
std::int16_t ChooseRow(const std::vector<CmdReg>& tab, const std::string& wanted);

}  // namespace lumbra::ctl
