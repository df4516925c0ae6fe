#include "elf_file.h"

#include <dlfcn.h>

#include <cstring>
#include <fstream>
#include <stdexcept>

#include "library.h"

namespace kormtest {

template <class T>
T ElfFile::read(std::size_t offset) const {
    if (offset + sizeof(T) > bytes_.size()) throw std::runtime_error("truncated object file");
    T value;
    std::memcpy(&value, bytes_.data() + offset, sizeof value);
    return value;
}

std::string ElfFile::text(std::size_t table, std::size_t offset) const {
    return bytes_.data() + headers_.at(table).sh_offset + offset;
}

ElfFile::ElfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const auto size = static_cast<std::size_t>(file.tellg());
    bytes_.resize(size + 1);  // a zero behind it ends a cut string
    file.seekg(0).read(bytes_.data(), static_cast<std::streamsize>(size));
    if (!file) throw std::runtime_error("can't read " + path);
    const auto header = read<ElfW(Ehdr)>(0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) throw std::runtime_error("not an object file: " + path);
    for (std::size_t i = 0; i < header.e_shnum; ++i)
        headers_.push_back(read<ElfW(Shdr)>(header.e_shoff + i * sizeof(ElfW(Shdr))));
    for (const auto& section : headers_)
        sections_.push_back({text(header.e_shstrndx, section.sh_name), section.sh_type, section.sh_flags,
                             section.sh_addr, section.sh_size});
    for (const auto& section : headers_) {
        if (section.sh_type == SHT_DYNSYM) readSymbols(section, true);
        if (section.sh_type == SHT_SYMTAB) readSymbols(section, false);
        if (section.sh_type != SHT_DYNAMIC) continue;
        dynamicStrings_ = section.sh_link;
        for (std::size_t at = 0; at < section.sh_size; at += sizeof(ElfW(Dyn)))
            dynamic_.push_back(read<ElfW(Dyn)>(section.sh_offset + at));
    }
}

void ElfFile::readSymbols(const ElfW(Shdr) & header, bool dynamicTable) {
    for (std::size_t at = 0; at < header.sh_size; at += sizeof(ElfW(Sym))) {
        const auto raw = read<ElfW(Sym)>(header.sh_offset + at);
        if (raw.st_shndx == SHN_UNDEF) continue;
        ElfSymbol symbol{text(header.sh_link, raw.st_name), raw.st_value, raw.st_size, ELF64_ST_TYPE(raw.st_info),
                         ELF64_ST_BIND(raw.st_info),        raw.st_shndx};
        if (dynamicTable) exports_.push_back(symbol);
        else symbols_[symbol.name] = symbol;
    }
}

std::vector<std::string> ElfFile::needed() const {
    std::vector<std::string> names;
    for (const auto& entry : dynamic_)
        if (entry.d_tag == DT_NEEDED) names.push_back(text(dynamicStrings_, entry.d_un.d_val));
    return names;
}

std::string ElfFile::soname() const {
    for (const auto& entry : dynamic_)
        if (entry.d_tag == DT_SONAME) return text(dynamicStrings_, entry.d_un.d_val);
    return {};
}

LoadedLibrary loadedKorm() {
    Dl_info info{};
    link_map* map = nullptr;
    void* const address = Library::linked().find("kormGetLibVersion");
    if (dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) == 0)
        throw std::runtime_error("the library isn't loaded");
    return {info.dli_fname, map->l_addr};
}

}  // namespace kormtest
