#include "platform/qt/qt_cp1252_validator.h"

#include <string>

#include "platform/qt/qt_codepage.h"

namespace lumbra::platform {

QValidator::State Cp1252Validator::validate(QString& input, int& /*pos*/) const {
    std::string bytes;
    return ToCp1252(input, bytes) ? Acceptable : Invalid;
}

}  // namespace lumbra::platform
