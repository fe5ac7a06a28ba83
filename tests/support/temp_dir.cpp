#include "tests/support/temp_dir.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lumbra::test {
namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = ::testing::TempDir();
    if (pattern.empty() || pattern.back() != '/') pattern += '/';
    pattern += "lumbra-XXXXXX";
    path_ = pattern;
    if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot create " + pattern);
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
