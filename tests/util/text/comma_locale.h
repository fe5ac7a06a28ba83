#pragma once
// Makes the global C++ locale use "," as its decimal point while in scope, the way a Portuguese
// desktop would, without needing any system locale installed.

#include <locale>

namespace lumbra {

class CommaDecimalLocale {
  public:
    CommaDecimalLocale()
        : saved_(std::locale::global(std::locale(std::locale::classic(), new CommaPoint))) {}
    ~CommaDecimalLocale() { std::locale::global(saved_); }
    CommaDecimalLocale(const CommaDecimalLocale&) = delete;
    CommaDecimalLocale& operator=(const CommaDecimalLocale&) = delete;

  private:
    struct CommaPoint : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    std::locale saved_;
};

}  // namespace lumbra
