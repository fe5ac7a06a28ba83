#include "util/lists/comma_list.h"

#include "util/lists/condition.h"
#include "util/text/split.h"

namespace lumbra {

namespace {

// Tries the elements of `lst` from left to right; true at the first one `accepts` takes.
template <class Accepts>
bool anyElement(const std::string& lst, Accepts accepts) {
    std::string rest = lst;
    std::string element;
    std::int16_t found = 0;
    while (!rest.empty()) {
        TxSep(rest, ",", element, found);
        if (accepts(element)) return true;
    }
    return false;
}

}  // namespace

void LstIgu(const std::string& lst, const std::string& val, std::int16_t& ok) {
    ok = 1;
    if (lst == "*") return;
    const bool found = anyElement(lst, [&val](const std::string& element) {
        std::int16_t equal = 0;
        CndAva(element, "=", val, equal);
        return equal == 1;
    });
    ok = found ? 1 : 0;
}

void LstPre(const std::string& lst, const std::string& val, std::int16_t& ok) {
    ok = 1;
    if (lst == "*") return;
    const bool found = anyElement(lst, [&val](const std::string& element) {
        return !val.empty() && val.starts_with(element);
    });
    ok = found ? 1 : 0;
}

}  // namespace lumbra
