#include "platform/program.h"

#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include <cstdlib>
#include <vector>

#include "platform/host_text.h"
#include "platform/program_args.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win_path.h"

namespace lumbra::platform {
namespace {

// The longest name Windows gives a file.
constexpr DWORD kLongestPath = 32768;

// The name without the "\\?\" mark of a long name, as the program's texts write names.
std::wstring WithoutLongMark(std::wstring name) {
    if (name.starts_with(L"\\\\?\\UNC\\")) return L"\\" + name.substr(7);
    if (name.starts_with(L"\\\\?\\")) return name.substr(4);
    return name;
}

// The folder part of a name: without its last separator, except the root's ("C:\").
std::wstring FolderOf(const std::wstring& name) {
    const auto slash = name.find_last_of(L"\\/");
    if (slash == std::wstring::npos) return {};
    if (slash == 2 && name[1] == L':') return name.substr(0, 3);
    return name.substr(0, slash);
}

std::wstring ModuleFileName() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size = static_cast<DWORD>(name.size());
        const DWORD got = ::GetModuleFileNameW(nullptr, name.data(), size);
        if (got == 0) return {};
        // A name cut short fills the buffer to its end.
        if (got < size || size >= kLongestPath) {
            name.resize(got);
            return name;
        }
        name.resize(static_cast<std::size_t>(size) * 2);
    }
}

bool IsPlainFile(const std::wstring& name) {
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The file's own name, links followed, as an absolute path.
std::string RealName(const std::wstring& name) {
    const HANDLE handle =
        ::CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return {};
    std::wstring real(kLongestPath, L'\0');
    const DWORD got = ::GetFinalPathNameByHandleW(handle, real.data(), kLongestPath,
                                                  FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    ::CloseHandle(handle);
    if (got == 0 || got >= kLongestPath) return {};
    real.resize(got);
    return FromWide(WithoutLongMark(real));
}

std::wstring EnvironmentValue(const wchar_t* name) {
    const DWORD need = ::GetEnvironmentVariableW(name, nullptr, 0);
    if (need == 0) return {};
    std::wstring value(need, L'\0');
    const DWORD got = ::GetEnvironmentVariableW(name, value.data(), need);
    value.resize(got < need ? got : 0);
    return value;
}

// The pieces of a ";"-separated list, quotes around a piece taken away, empty pieces left out.
std::vector<std::string> ListPieces(const std::string& list) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    while (begin <= list.size()) {
        std::size_t end = list.find(';', begin);
        if (end == std::string::npos) end = list.size();
        std::string piece = list.substr(begin, end - begin);
        std::erase(piece, '"');
        if (!piece.empty()) pieces.push_back(piece);
        begin = end + 1;
    }
    return pieces;
}

std::string Upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

// The names a program called name may have in a folder, as the command interpreter tries them:
// name itself when it ends in an extension of PATHEXT, else name with each of them in turn.
std::vector<std::string> Candidates(const std::string& name) {
    std::wstring extensions = EnvironmentValue(L"PATHEXT");
    if (extensions.empty()) extensions = L".COM;.EXE;.BAT;.CMD";
    const std::vector<std::string> known = ListPieces(FromWide(extensions));
    const auto dot = name.find_last_of('.');
    if (dot != std::string::npos) {
        const std::string own = Upper(name.substr(dot));
        for (const std::string& extension : known) {
            if (Upper(extension) == own) return {name};
        }
    }
    std::vector<std::string> names;
    for (const std::string& extension : known)
        names.push_back(name + extension);
    return names;
}

std::string FindIn(const std::string& folder, const std::string& name) {
    std::string prefix = folder;
    if (!prefix.empty() && prefix.back() != '\\' && prefix.back() != '/' && prefix.back() != ':')
        prefix += '\\';
    for (const std::string& candidate : Candidates(name)) {
        const std::wstring file = WinPath(prefix + candidate);
        if (IsPlainFile(file)) return RealName(file);
    }
    return {};
}

}  // namespace

// The arguments main received are taken from Windows itself, split as Windows splits its command
// line: argv as the C runtime made it is in the machine's code page, where every character outside
// it is already lost. Words a caller makes up (a test) are host text, as on every host.
void SetProgramArgs(int argc, const char* const* argv) {
    RecordedArgs().clear();
    if (argv == nullptr || argv != __argv) {
        for (int i = 0; i < argc; ++i) {
            if (argv != nullptr && argv[i] != nullptr)
                RecordedArgs().push_back(FromHostText(argv[i]));
        }
        return;
    }
    int count = 0;
    LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (words == nullptr) return;
    for (int i = 0; i < count; ++i)
        RecordedArgs().push_back(FromWide(words[i]));
    ::LocalFree(words);
}

std::string ProgramFolder() {
    if (!ProgramFolderOverride().empty()) return ProgramFolderOverride();
    std::wstring folder = FolderOf(WithoutLongMark(ModuleFileName()));
    if (folder.empty()) {
        const DWORD need = ::GetCurrentDirectoryW(0, nullptr);
        folder.assign(need, L'\0');
        folder.resize(::GetCurrentDirectoryW(need, folder.data()));
    }
    return FromWide(folder);
}

std::string ProgramFileFromName(const std::string& name, const std::string& searchPath) {
    if (name.empty()) return {};
    // A name with a folder or a drive in it is looked for there only.
    if (name.find_first_of("\\/:") != std::string::npos) {
        const auto slash = name.find_last_of("\\/:");
        const std::string folder = name.substr(0, slash + 1);
        return FindIn(folder, name.substr(slash + 1));
    }
    for (const std::string& folder : ListPieces(searchPath)) {
        std::string found = FindIn(folder, name);
        if (!found.empty()) return found;
    }
    return {};
}

}  // namespace lumbra::platform
