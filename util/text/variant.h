#pragma once
// The variant value that parameters travel in: empty, null, text, 16-bit integer, 32-bit integer or
// double. Text is a byte string of Windows-1252 characters. Procedures that fill a caller's
// variant look at the kind it holds on entry and convert into that kind ("text stays text,
// anything else receives the number").

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace lumbra {

class Variant {
  public:
    enum class Kind { Empty, Null, Text, Int16, Int32, Double };

    Variant() = default;
    Variant(std::string text) : value_(std::move(text)) {}
    Variant(const char* text) : value_(std::string(text)) {}
    Variant(std::int16_t n) : value_(n) {}
    Variant(std::int32_t n) : value_(n) {}
    Variant(double d) : value_(d) {}

    static Variant null() {
        Variant v;
        v.value_ = NullTag{};
        return v;
    }

    Kind kind() const { return static_cast<Kind>(value_.index()); }
    bool isEmpty() const { return kind() == Kind::Empty; }
    bool isNull() const { return kind() == Kind::Null; }
    bool isText() const { return kind() == Kind::Text; }
    bool isNumber() const {
        return kind() == Kind::Int16 || kind() == Kind::Int32 || kind() == Kind::Double;
    }

    // Accessors for the held kind; calling one for another kind is a programming error.
    const std::string& text() const { return std::get<std::string>(value_); }
    std::int16_t int16() const { return std::get<std::int16_t>(value_); }
    std::int32_t int32() const { return std::get<std::int32_t>(value_); }
    double dbl() const { return std::get<double>(value_); }

    // The held number as a double (0 for kinds that hold none).
    double number() const {
        switch (kind()) {
            case Kind::Int16:
                return int16();
            case Kind::Int32:
                return int32();
            case Kind::Double:
                return dbl();
            default:
                return 0.0;
        }
    }

    friend bool operator==(const Variant&, const Variant&) = default;

  private:
    struct NullTag {
        friend bool operator==(NullTag, NullTag) = default;
    };
    std::variant<std::monostate, NullTag, std::string, std::int16_t, std::int32_t, double> value_;
};

}  // namespace lumbra
