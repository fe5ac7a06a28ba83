#include "util/lists/typed_value.h"

#include <utility>

#include "util/text/chars.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

std::string textOf(const Variant& src) {
    return src.isText() ? src.text() : VlStr(src);
}

void applyTextOptions(const std::string& opc, std::string& dst) {
    if (opc.find('M') != std::string::npos) dst = UpperCase(dst);
    if (opc.find('T') != std::string::npos) dst = std::string(TrimBlanks(dst));
}

bool namesText(const Variant& tip) {
    const std::string name = VlStr(tip);
    return !name.empty() && name.back() == '$';
}

}  // namespace

void VarAtr(const std::string& opc, const Variant& src, Variant& dst) {
    if (dst.isText()) {
        std::string text = textOf(src);
        applyTextOptions(opc, text);
        dst = Variant(std::move(text));
        return;
    }
    if (src.isText()) {
        double number = 0.0;
        TxDbl(src, number);
        dst = Variant(number);
        return;
    }
    dst = src;
}

void VarAtr(const std::string& opc, const Variant& src, std::string& dst) {
    dst = textOf(src);
    applyTextOptions(opc, dst);
}

void VarAtr(const std::string& /*opc*/, const Variant& src, double& dst) {
    VlNum(src, dst);
}

void VarAtr(const std::string& /*opc*/, const Variant& src, std::int16_t& dst) {
    VlNum(src, dst);
}

void VarVaz(Variant& dst) {
    dst = dst.isText() ? Variant(std::string()) : Variant(std::int16_t{0});
}

void VarVaz(Variant& dst, const Variant& tip) {
    dst = namesText(tip) ? Variant(std::string()) : Variant(std::int16_t{0});
}

void VarVaz(std::string& dst) {
    dst.clear();
}

void VarVaz(double& dst) {
    dst = 0.0;
}

void VarVaz(std::int16_t& dst) {
    dst = 0;
}

void VarCnv(const Variant& src, Variant& dst) {
    if (!src.isText() && dst.isText()) {
        dst = Variant(VlStr(src));
    } else if (src.isText() && !dst.isText()) {
        dst = Variant(VlDbl(src));
    } else {
        dst = src;
    }
}

void VarCnv(const Variant& src, Variant& dst, const Variant& tip) {
    VarVaz(dst, tip);
    VarCnv(src, dst);
}

void VarCnv(const Variant& src, std::string& dst) {
    dst = textOf(src);
}

void VarCnv(const Variant& src, double& dst) {
    VlNum(src, dst);
}

void VarCnv(const Variant& src, std::int16_t& dst) {
    VlNum(src, dst);
}

}  // namespace lumbra
