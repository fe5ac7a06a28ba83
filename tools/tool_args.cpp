#include "tools/tool_args.h"

#include <algorithm>

#include "platform/host_text.h"

namespace lumbra::ctl {
namespace {

struct CommandOptions {
    std::string command;
    std::vector<std::string> options;  // those taking a value
    bool sends = false;
};

const std::vector<CommandOptions>& CommandTable() {
    static const std::vector<CommandOptions> table = {
        {"listar", {}, false},
        {"teste", {"--porta", "--texto"}, true},
        {"abrir", {"--porta", "--modo"}, true},
        {"ciclo", {"--porta", "--modo"}, true},
        {"executar", {"--display", "--comando"}, true},
        {"mostrar", {"--display", "--texto"}, true},
        {"converter", {"--dec", "--hex"}, false},
        {"portas", {}, false},
        {"simular", {"--impressora", "--display", "--velocidade", "--pagina-display"}, false},
    };
    return table;
}

const CommandOptions* FindCommand(const std::string& command) {
    const auto& table = CommandTable();
    const auto it = std::find_if(table.begin(), table.end(),
                                 [&](const CommandOptions& c) { return c.command == command; });
    return it == table.end() ? nullptr : &*it;
}

bool TakesValue(const std::string& name) {
    for (const CommandOptions& c : CommandTable()) {
        if (std::find(c.options.begin(), c.options.end(), name) != c.options.end()) return true;
    }
    return false;
}

std::string UpperAscii(std::string tx) {
    for (char& c : tx) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return tx;
}

// "-FP" and "-COM1".."-COM9", in any case, as the engine and the serial ports look for them.
bool IsEngineSwitch(const std::string& word) {
    const std::string w = UpperAscii(word);
    if (w == "-FP") return true;
    return w.size() == 5 && w.compare(0, 4, "-COM") == 0 && w[4] >= '1' && w[4] <= '9';
}

// An argument quoted into a message, in the messages' own code page.
std::string Quoted(const std::string& arg) {
    return "\"" + platform::FromHostText(arg) + "\"";
}

std::string Validate(const ToolArgs& a) {
    if (a.help || a.version) return {};
    if (a.command.empty()) return "falta o comando";
    const CommandOptions* c = FindCommand(a.command);
    if (c == nullptr) return "comando desconhecido: " + Quoted(a.command);
    for (const auto& [name, value] : a.options) {
        if (std::find(c->options.begin(), c->options.end(), name) == c->options.end())
            return "a op\xE7\xE3o " + name + " n\xE3o serve ao comando " + a.command;
    }
    if (a.bytes && !c->sends) return "a op\xE7\xE3o --bytes n\xE3o serve ao comando " + a.command;
    if (a.json && a.command != "simular")
        return "a op\xE7\xE3o --json n\xE3o serve ao comando " + a.command;
    if (a.command == "converter" && a.has("--dec") == a.has("--hex"))
        return "converter leva uma de --dec ou --hex";
    return {};
}

}  // namespace

std::string ToolArgs::option(const std::string& name, const std::string& fallback) const {
    const auto it = options.find(name);
    return it == options.end() ? fallback : it->second;
}

ParsedArgs ParseToolArgs(int argc, const char* const* argv) {
    ParsedArgs parsed;
    ToolArgs& a = parsed.args;
    a.engineArgs.emplace_back(argc > 0 && argv[0] != nullptr ? argv[0] : "lumbractl");
    auto fail = [&parsed](std::string why) {
        parsed.error = std::move(why);
        return parsed;
    };

    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i] != nullptr ? argv[i] : "";
        if (IsEngineSwitch(word)) {
            if (i + 1 >= argc) return fail("falta o valor de " + word);
            const std::string value = argv[++i] != nullptr ? argv[i] : "";
            // The engine reads its switches from one command line cut at every blank: such a
            // path would reach it in pieces, and the first piece would be used.
            if (value.find(' ') != std::string::npos) {
                return fail(
                    "o caminho de " + word + " " + Quoted(value) +
                    " tem espa\xE7os: a linha de comandos do motor parte-o nos espa\xE7os e " +
                    (UpperAscii(word) == "-FP" ? "leria outro ficheiro"
                                               : "abriria outro dispositivo"));
            }
            a.engineArgs.push_back(word);
            a.engineArgs.push_back(value);
        } else if (word == "--help" || word == "-h") {
            a.help = true;
        } else if (word == "--version") {
            a.version = true;
        } else if (word.size() > 2 && word.compare(0, 2, "--") == 0) {
            const std::size_t eq = word.find('=');
            const std::string name = word.substr(0, eq);
            if (name == "--bytes" || name == "--json") {
                if (eq != std::string::npos) return fail(name + " n\xE3o leva valor");
                (name == "--bytes" ? a.bytes : a.json) = true;
            } else if (TakesValue(name)) {
                if (eq != std::string::npos) {
                    a.options[name] = word.substr(eq + 1);
                } else {
                    // The next word is the value whatever it looks like: texts may begin with "-".
                    if (i + 1 >= argc) return fail("falta o valor de " + name);
                    a.options[name] = argv[++i];
                }
            } else {
                return fail("op\xE7\xE3o desconhecida: " + Quoted(name));
            }
        } else if (word.size() > 1 && word[0] == '-') {
            return fail("op\xE7\xE3o desconhecida: " + Quoted(word));
        } else if (a.command.empty()) {
            a.command = word;
            if (FindCommand(word) == nullptr) return fail("comando desconhecido: " + Quoted(word));
        } else {
            return fail("argumento a mais: " + Quoted(word));
        }
    }
    parsed.error = Validate(a);
    return parsed;
}

const std::vector<std::string>& ToolCommands() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> n;
        for (const CommandOptions& c : CommandTable())
            n.push_back(c.command);
        return n;
    }();
    return names;
}

bool SendsToDevice(const std::string& command) {
    const CommandOptions* c = FindCommand(command);
    return c != nullptr && c->sends;
}

bool NeedsConfiguration(const std::string& command) {
    return command != "converter" && command != "portas" && command != "simular" &&
           FindCommand(command) != nullptr;
}

}  // namespace lumbra::ctl
