#include "tests/support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace lumbra::test {
namespace fs = std::filesystem;

// A folder of a new random name: creating it fails when the name is taken, so two test programs
// running side by side never share one.
TempDir::TempDir() {
    std::string base = ::testing::TempDir();
    if (base.empty() || (base.back() != '/' && base.back() != '\\')) base += '/';
    static std::mt19937_64 random{std::random_device{}()};
    for (int attempt = 0; attempt < 100; ++attempt) {
        path_ = base + "lumbra-" + std::to_string(random() % 1000000000000ULL);
        std::error_code ec;
        if (fs::create_directory(path_, ec)) return;
    }
    throw std::runtime_error("cannot create a folder in " + base);
}

TempDir::~TempDir() {
    std::error_code ec;
    // A test may leave folders without write permission; give them back so they can be removed.
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    for (auto it = fs::recursive_directory_iterator(path_, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (it->is_directory(ec) && !it->is_symlink(ec)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
    }
    fs::remove_all(path_, ec);
}

void TempDir::write(std::string_view name, std::string_view bytes) const {
    std::ofstream out(file(name), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out) throw std::runtime_error("cannot write " + file(name));
}

std::string TempDir::read(std::string_view name) const {
    std::ifstream in(file(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace lumbra::test
