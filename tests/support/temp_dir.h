#pragma once
// A real folder for one test, removed with everything in it when the object goes.

#include <filesystem>
#include <string>
#include <string_view>

namespace lumbra::test {

class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The folder, without a trailing separator.
    const std::string& path() const { return path_; }
    // The path of name inside the folder, joined by the host's own separator as the program joins
    // its paths ("\" on Windows).
    std::string file(std::string_view name) const {
        return path_ + static_cast<char>(std::filesystem::path::preferred_separator) +
               std::string(name);
    }
    // Creates or replaces name with exactly these bytes.
    void write(std::string_view name, std::string_view bytes) const;
    // The bytes of name; "" when it cannot be read.
    std::string read(std::string_view name) const;
    bool exists(std::string_view name) const {
        std::error_code ec;
        return std::filesystem::exists(file(name), ec);
    }

  private:
    std::string path_;
};

// dir is the current folder while the object lives.
class ScopedCurrentDir {
  public:
    explicit ScopedCurrentDir(const std::string& dir)
        : previous_(std::filesystem::current_path().string()) {
        std::filesystem::current_path(dir);
    }
    ~ScopedCurrentDir() {
        std::error_code ec;
        std::filesystem::current_path(previous_, ec);
    }
    ScopedCurrentDir(const ScopedCurrentDir&) = delete;
    ScopedCurrentDir& operator=(const ScopedCurrentDir&) = delete;

  private:
    std::string previous_;
};

}  // namespace lumbra::test
