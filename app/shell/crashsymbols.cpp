// Naming the frames of a raw crash record, at the start after the crash: the
// memory map copied by the handler says which module each address lies in and
// where that module was loaded; libdw reads the module's symbols and, where
// the program or a debug package brings them, its source lines.
#include "app/shell/crash.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <cxxabi.h>
#include <elfutils/libdwfl.h>
#endif

namespace app {

namespace {

struct Mapping {
    uint64_t start = 0, end = 0, offset = 0;
    std::string path;
};

uint64_t hexValue(const std::string& s, bool& ok) {
    uint64_t v = 0;
    ok = !s.empty();
    for (char c : s) {
        int d = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
        if (d < 0) {
            ok = false;
            return 0;
        }
        v = v * 16 + uint64_t(d);
    }
    return v;
}

// "7f1c2000-7f1c3000 r-xp 00001000 08:01 1234   /usr/lib/libfoo.so.1"
bool parseMapping(const std::string& line, Mapping& m) {
    std::istringstream in(line);
    std::string range, perms, offset, dev, inode;
    if (!(in >> range >> perms >> offset >> dev >> inode)) return false;
    std::getline(in, m.path);
    const size_t first = m.path.find_first_not_of(' ');
    m.path = first == std::string::npos ? std::string() : m.path.substr(first);
    const std::string deleted = " (deleted)";
    if (m.path.size() > deleted.size() && m.path.compare(m.path.size() - deleted.size(), deleted.size(), deleted) == 0)
        m.path.resize(m.path.size() - deleted.size());
    const size_t dash = range.find('-');
    bool a = false, b = false, c = false;
    m.start = hexValue(range.substr(0, dash), a);
    m.end = dash == std::string::npos ? 0 : hexValue(range.substr(dash + 1), b);
    m.offset = hexValue(offset, c);
    return a && b && c && !m.path.empty() && m.path[0] == '/';
}

std::string baseName(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string hex(uint64_t v) {
    char buf[24];
    std::snprintf(buf, sizeof buf, "%llx", static_cast<unsigned long long>(v));
    return buf;
}

std::string demangle(const char* name) {
#ifndef _WIN32
    int status = 0;
    char* plain = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    if (status == 0 && plain) {
        std::string out = plain;
        std::free(plain);
        return out;
    }
#endif
    return name;
}

#ifndef _WIN32
// One libdw session for the record; modules are reported at the place the
// crashed process had them.
class Symbols {
  public:
    Symbols() {
        callbacks_.find_elf = nullptr;
        callbacks_.find_debuginfo = dwfl_standard_find_debuginfo;
        callbacks_.section_address = dwfl_offline_section_address;
        callbacks_.debuginfo_path = nullptr;
        dwfl_ = dwfl_begin(&callbacks_);
        if (dwfl_) dwfl_report_begin(dwfl_);
    }
    ~Symbols() {
        if (dwfl_) dwfl_end(dwfl_);
    }
    Symbols(const Symbols&) = delete;
    Symbols& operator=(const Symbols&) = delete;

    // `lookup` is the address inside the call (a return address less one);
    // the offset shown is from the symbol to `pc`, as the record had it.
    std::string frame(const std::string& path, uint64_t base, uint64_t pc, uint64_t lookup) {
        const std::string module = baseName(path);
        Dwfl_Module* mod = moduleFor(path, base);
        if (!mod) return module + "+0x" + hex(pc - base);
        GElf_Sym sym;
        GElf_Off off = 0;
        const char* name = dwfl_module_addrinfo(mod, lookup, &off, &sym, nullptr, nullptr, nullptr);
        if (!name || !*name) return module + "+0x" + hex(pc - base);
        // "__libc_start_main@@GLIBC_2.34": the version says nothing to the reader.
        std::string symbol = name;
        if (const size_t at = symbol.find('@'); at != std::string::npos && at > 0) symbol.resize(at);
        std::string out = module + "!" + demangle(symbol.c_str()) + "+0x" + hex(pc - (lookup - off));
        int line = 0;
        if (Dwfl_Line* l = dwfl_module_getsrc(mod, lookup)) {
            const char* file = dwfl_lineinfo(l, nullptr, &line, nullptr, nullptr, nullptr);
            if (file && line > 0) out += "  (" + baseName(file) + ":" + std::to_string(line) + ")";
        }
        return out;
    }

  private:
    Dwfl_Module* moduleFor(const std::string& path, uint64_t base) {
        if (!dwfl_) return nullptr;
        auto it = modules_.find(path);
        if (it != modules_.end()) return it->second;
        // A module that is gone or changed since the crash gives no symbol.
        Dwfl_Module* mod = dwfl_report_elf(dwfl_, baseName(path).c_str(), path.c_str(), -1, base, false);
        modules_[path] = mod;
        return mod;
    }

    Dwfl_Callbacks callbacks_{};
    Dwfl* dwfl_ = nullptr;
    std::map<std::string, Dwfl_Module*> modules_;
};
#endif

} // namespace

std::string symboliseCrashRecord(const std::string& raw) {
    const size_t marker = raw.find("\n-- maps ");
    if (marker == std::string::npos) return raw;
    std::vector<std::string> lines;
    {
        std::istringstream in(raw.substr(0, marker + 1));
        for (std::string line; std::getline(in, line);) lines.push_back(line);
    }
    const bool exactFirst = raw.compare(marker + 9, 1, "1") == 0;
    std::vector<Mapping> maps;
    std::map<std::string, uint64_t> bases; // the lowest start less its file offset
    {
        std::istringstream in(raw.substr(raw.find('\n', marker + 1) + 1));
        for (std::string line; std::getline(in, line);) {
            Mapping m;
            if (!parseMapping(line, m)) continue;
            maps.push_back(m);
            if (!bases.count(m.path)) bases[m.path] = m.start - m.offset;
        }
    }
#ifndef _WIN32
    Symbols symbols;
#endif
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        const size_t at = line.find(" 0x");
        if (i == 0 || line.rfind("  #", 0) != 0 || at == std::string::npos) {
            out += line + "\n";
            continue;
        }
        bool ok = false;
        const uint64_t pc = hexValue(line.substr(at + 3), ok);
        const std::string head = line.substr(0, at + 1);
        const int number = std::atoi(line.c_str() + 3);
        const uint64_t lookup = (number == 0 && exactFirst) || pc == 0 ? pc : pc - 1;
        const Mapping* in = nullptr;
        for (const Mapping& m : maps)
            if (lookup >= m.start && lookup < m.end) in = &m;
        if (!ok || !in) {
            out += head + "?+0x" + hex(pc) + "\n";
            continue;
        }
#ifndef _WIN32
        out += head + symbols.frame(in->path, bases[in->path], pc, lookup) + "\n";
#else
        out += head + baseName(in->path) + "+0x" + hex(pc - bases[in->path]) + "\n";
#endif
    }
    return out;
}

bool symboliseCrashFile(const std::string& path) {
    const std::filesystem::path file(std::u8string(path.begin(), path.end()));
    std::string raw;
    {
        std::ifstream in(file, std::ios::binary);
        if (!in) return false;
        std::ostringstream text;
        text << in.rdbuf();
        raw = text.str();
    }
    const std::string named = symboliseCrashRecord(raw);
    if (named == raw) return false;
    std::filesystem::path tmp = file;
    tmp += ".tmp";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        if (!(out << named) || !out.flush()) return false;
    }
    std::error_code ec;
    std::filesystem::rename(tmp, file, ec);
    if (!ec) return true;
    std::filesystem::remove(tmp, ec);
    return false;
}

} // namespace app
