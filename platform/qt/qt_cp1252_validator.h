#pragma once
// A text box that only takes what the program can send: characters Windows-1252 has. Anything
// else is refused as it is typed or pasted, instead of leaving the port as a "?".

#include <QValidator>

namespace lumbra::platform {

class Cp1252Validator : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& input, int& pos) const override;
};

}  // namespace lumbra::platform
