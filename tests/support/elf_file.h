// Reads a shared object of this program's own word size: symbols, sections, the dynamic table.
#pragma once

#include <elf.h>
#include <link.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kormtest {

struct ElfSymbol {
    std::string name;
    std::uintptr_t address = 0;
    std::size_t size = 0;
    int type = 0;     // STT_FUNC, STT_OBJECT
    int binding = 0;  // STB_LOCAL, STB_GLOBAL
    std::size_t section = 0;
};

struct ElfSection {
    std::string name;
    std::uint32_t type = 0;
    std::uint64_t flags = 0;
    std::uintptr_t address = 0;
    std::size_t size = 0;
};

class ElfFile {
public:
    explicit ElfFile(const std::string& path);

    // Defined symbols of the dynamic table: what leaves the library.
    const std::vector<ElfSymbol>& exports() const { return exports_; }
    // Defined symbols of the full table by name; file-local names may repeat, the last one stays.
    const std::map<std::string, ElfSymbol>& symbols() const { return symbols_; }
    const std::vector<ElfSection>& sections() const { return sections_; }
    const std::vector<ElfW(Dyn)>& dynamic() const { return dynamic_; }
    std::vector<std::string> needed() const;
    std::string soname() const;

private:
    template <class T>
    T read(std::size_t offset) const;
    std::string text(std::size_t table, std::size_t offset) const;
    void readSymbols(const ElfW(Shdr) & header, bool dynamicTable);

    std::vector<char> bytes_;
    std::vector<ElfW(Shdr)> headers_;
    std::vector<ElfSection> sections_;
    std::vector<ElfSymbol> exports_;
    std::map<std::string, ElfSymbol> symbols_;
    std::vector<ElfW(Dyn)> dynamic_;
    std::size_t dynamicStrings_ = 0;
};

// The linked libkorm.so: its file, and the distance between addresses in it and in memory.
struct LoadedLibrary {
    std::string path;
    std::uintptr_t base = 0;
};
LoadedLibrary loadedKorm();

}  // namespace kormtest
