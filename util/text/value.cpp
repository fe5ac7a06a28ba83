#include "util/text/value.h"

#include <string_view>

#include "util/text/chars.h"
#include "util/text/numeric.h"

namespace lumbra {

namespace {

// The number a variant stands for: text through the reading, numbers as they are, empty as 0.
// False for null and for text whose number is too large.
bool NumberOf(const Variant& v, double& d) {
    d = 0.0;
    switch (v.kind()) {
        case Variant::Kind::Text:
            return NumRead(v.text(), d);
        case Variant::Kind::Null:
            return false;
        default:
            d = v.number();
            return true;
    }
}

// VlNum's assignment: the number in the target's type, or 0 of that type when it does not fit.
template <class Target>
void NumberInto(bool readOk, double d, Target& n) {
    if (!readOk || !NumAssign(d, n)) NumAssign(0.0, n);
}

template <class Target>
void VlNumInto(const Variant& v, Target& n) {
    double d = 0.0;
    const bool readOk = NumberOf(v, d);
    NumberInto(readOk, d, n);
}

// The text TxDbl reads: text as it is, a number in the regional format.
std::string RegionalTextOf(const Variant& v) {
    switch (v.kind()) {
        case Variant::Kind::Text:
            return v.text();
        case Variant::Kind::Null:
            throw InvalidUseOfNull();
        case Variant::Kind::Empty:
            return "";
        default:
            return NumTxRegional(v.number());
    }
}

template <class Target>
void TxDblInto(const Variant& v, Target& d) {
    const std::string text = RegionalTextOf(v);
    double value = 0.0;
    const bool readOk = NumRead(text, value);
    NumberInto(readOk, value, d);
}

template <class Target>
void TxDblOkInto(const std::string& tx, Target& n, std::int16_t& ok) {
    double value = 0.0;
    const bool readOk = NumRead(tx, value);
    NumberInto(readOk, value, n);
    ok = 1;
}

template <class Target>
bool TxVlInto(const std::string& tx, Target& v) {
    double value = 0.0;
    return NumRead(tx, value) && NumAssign(value, v);
}

bool IsYes(const std::string& text) {
    const std::string word = TxMai(text);
    return word == "S" || word == "SI" || word == "SIM";
}

std::int16_t YesNoFlag(const Variant& v, std::int16_t inv) {
    std::int16_t f = 0;
    VlNum(v, f);
    if (v.isText()) {
        if (IsYes(v.text())) f = 1;
    } else {
        f = f == 1 ? 1 : 0;
    }
    if (inv == 1) f = f != 1 ? 1 : 0;
    return f;
}

std::string YesNoText(std::int16_t f) {
    return f == 1 ? "Sim" : "N\xE3o";
}

}  // namespace

void VlNum(const Variant& v, Variant& n) {
    VlNumInto(v, n);
}
void VlNum(const Variant& v, std::int16_t& n) {
    VlNumInto(v, n);
}
void VlNum(const Variant& v, std::int32_t& n) {
    VlNumInto(v, n);
}
void VlNum(const Variant& v, double& n) {
    VlNumInto(v, n);
}
void VlNum(const Variant& v, std::string& n) {
    VlNumInto(v, n);
}

double VlDbl(const Variant& v) {
    double d = 0.0;
    VlNum(v, d);
    return d;
}

void VlTx(const Variant& v, std::string& tx) {
    switch (v.kind()) {
        case Variant::Kind::Text:
            tx = v.text();
            break;
        case Variant::Kind::Int16:
        case Variant::Kind::Int32:
        case Variant::Kind::Double:
            tx = NumTx(v.number());
            break;
        default:
            tx.clear();
            break;
    }
}

std::string VlStr(const Variant& v) {
    std::string tx;
    VlTx(v, tx);
    return tx;
}

std::string TxMai(const std::string& tx) {
    return UpperCase(TrimBlanks(tx));
}

Variant VlMai(const Variant& v) {
    switch (v.kind()) {
        case Variant::Kind::Text:
            return Variant(TxMai(v.text()));
        case Variant::Kind::Int16:
        case Variant::Kind::Int32:
        case Variant::Kind::Double:
            return Variant(TxMai(NumTxRegional(v.number())));
        default:
            return Variant(std::string());
    }
}

void TxDbl(const Variant& v, Variant& d) {
    TxDblInto(v, d);
}
void TxDbl(const Variant& v, std::int16_t& d) {
    TxDblInto(v, d);
}
void TxDbl(const Variant& v, std::int32_t& d) {
    TxDblInto(v, d);
}
void TxDbl(const Variant& v, double& d) {
    TxDblInto(v, d);
}
void TxDbl(const Variant& v, std::string& d) {
    TxDblInto(v, d);
}

void TxDblOk(const std::string& tx, Variant& n, std::int16_t& ok) {
    TxDblOkInto(tx, n, ok);
}
void TxDblOk(const std::string& tx, std::int16_t& n, std::int16_t& ok) {
    TxDblOkInto(tx, n, ok);
}
void TxDblOk(const std::string& tx, std::int32_t& n, std::int16_t& ok) {
    TxDblOkInto(tx, n, ok);
}
void TxDblOk(const std::string& tx, double& n, std::int16_t& ok) {
    TxDblOkInto(tx, n, ok);
}

void TxVl(const std::string& tx, Variant& v, std::int16_t& ok) {
    if (v.isText()) {
        v = Variant(tx);
        ok = 1;
        return;
    }
    ok = TxVlInto(tx, v) ? 1 : 0;
    if (ok == 0) ZeroOfKind(v);
}

void TxVl(const std::string& tx, std::int16_t& v, std::int16_t& ok) {
    ok = TxVlInto(tx, v) ? 1 : 0;
    if (ok == 0) v = 0;
}

void TxVl(const std::string& tx, std::int32_t& v, std::int16_t& ok) {
    ok = TxVlInto(tx, v) ? 1 : 0;
    if (ok == 0) v = 0;
}

void TxVl(const std::string& tx, double& v, std::int16_t& ok) {
    ok = TxVlInto(tx, v) ? 1 : 0;
    if (ok == 0) v = 0.0;
}

void TxVl(const std::string& tx, std::string& v, std::int16_t& ok) {
    v = tx;
    ok = 1;
}

void VlSimNao(const Variant& v, Variant& sai, std::int16_t inv) {
    const std::int16_t f = YesNoFlag(v, inv);
    if (sai.isText()) {
        sai = Variant(YesNoText(f));
    } else if (sai.isEmpty() || sai.isNull()) {
        sai = Variant(f);
    } else {
        NumAssign(f, sai);
    }
}

void VlSimNao(const Variant& v, std::int16_t& sai, std::int16_t inv) {
    sai = YesNoFlag(v, inv);
}

void VlSimNao(const Variant& v, std::string& sai, std::int16_t inv) {
    sai = YesNoText(YesNoFlag(v, inv));
}

}  // namespace lumbra
