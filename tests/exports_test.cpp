// The binary itself: what leaves the library, how a stub reaches its record, what stands in the records.
#include "support/elf_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "geometry/functions.h"
#include "geometry/homogeneous.h"
#include "support/family.h"
#include "support/forms.h"
#include "support/library.h"

namespace kormtest {
namespace {

// The forms of the grammar and the functions of fixed size, sorted.
std::vector<std::string> everyName() {
    std::vector<std::string> names = allNames();
    for (const std::string& name : geometryNames()) names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

class Binary : public testing::Test {
protected:
    const LoadedLibrary loaded = loadedKorm();
    const ElfFile file{loaded.path};

    const ElfSymbol& symbol(const std::string& name) const {
        static const ElfSymbol none;
        const auto at = file.symbols().find(name);
        if (at == file.symbols().end()) ADD_FAILURE() << "no symbol " << name;
        return at == file.symbols().end() ? none : at->second;
    }
    const ElfSection& sectionOf(const ElfSymbol& one) const { return file.sections().at(one.section); }
    // Of the library as it is loaded; all zeros if there is none of this type.
    ElfW(Phdr) programHeader(std::uint32_t type) const {
        struct Search {
            std::uintptr_t base;
            std::uint32_t type;
            ElfW(Phdr) found;
        } search{loaded.base, type, {}};
        dl_iterate_phdr(
            [](dl_phdr_info* info, std::size_t, void* data) {
                auto& wanted = *static_cast<Search*>(data);
                if (info->dlpi_addr != wanted.base) return 0;
                for (int i = 0; i < info->dlpi_phnum; ++i)
                    if (info->dlpi_phdr[i].p_type == wanted.type) wanted.found = info->dlpi_phdr[i];
                return 1;
            },
            &search);
        return search.found;
    }
    const unsigned char* inMemory(std::uintptr_t address) const {
        return reinterpret_cast<const unsigned char*>(loaded.base + address);
    }
    std::uintptr_t word(std::uintptr_t address) const {
        std::uintptr_t value;
        std::memcpy(&value, inMemory(address), sizeof value);
        return value;
    }
    std::int32_t displacement(std::uintptr_t address) const {
        std::int32_t value;
        std::memcpy(&value, inMemory(address), sizeof value);
        return value;
    }
};

TEST_F(Binary, ExportsExactlyTheNames) {
    const std::vector<std::string> expected = everyName();
    const std::size_t count = 1      // the version query
                              + 288  // element-wise arithmetic
                              + 148  // products
                              + 86   // vectors
                              + 82   // movement
                              + 118  // linear algebra
                              + 20   // symmetric eigenproblems
                              + 44   // general eigenproblems: 4 families of 10 forms, 4 size queries
                              + 87;  // geometry
    ASSERT_EQ(expected.size(), count);
    std::vector<std::string> names;
    for (const ElfSymbol& one : file.exports()) {
        names.push_back(one.name);
        EXPECT_EQ(one.type, STT_FUNC) << one.name;
        EXPECT_EQ(one.binding, STB_GLOBAL) << one.name;
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, expected);
}

TEST_F(Binary, StubsAreOneIndirectJumpThroughTheirRecord) {
    for (const std::string& name : everyName()) {
        const ElfSymbol& stub = symbol(name);
        const std::uintptr_t at = stub.address;
        const unsigned char* const code = inMemory(at);
        const std::uintptr_t record = symbol(name + "_arraddr").address;
#if defined(__x86_64__)
        // jmp *rel32(%rip)
        EXPECT_EQ(stub.size, 6u) << name;
        ASSERT_TRUE(code[0] == 0xff && code[1] == 0x25) << name;
        EXPECT_EQ(at + 6 + static_cast<std::uintptr_t>(displacement(at + 2)), record) << name;
#else
        // call of a thunk that loads %eax with its return address; add $imm32, %eax; jmp *disp32(%eax).
        // %eax carries no argument. Assemblers write the addition in one of two ways, 05 or 81 c0.
        const bool longer = code[5] == 0x81 && code[6] == 0xc0;
        const unsigned char* const afterAdd = code + (longer ? 11 : 10);
        EXPECT_EQ(stub.size, longer ? 17u : 16u) << name;
        ASSERT_EQ(code[0], 0xe8) << name;
        const unsigned char* const thunk = inMemory(at + 5 + static_cast<std::uintptr_t>(displacement(at + 1)));
        const unsigned char expected[] = {0x8b, 0x04, 0x24, 0xc3};
        ASSERT_EQ(std::memcmp(thunk, expected, sizeof expected), 0) << name;
        ASSERT_TRUE(longer || code[5] == 0x05) << name;
        ASSERT_TRUE(afterAdd[0] == 0xff && afterAdd[1] == 0xa0) << name;
        const std::uintptr_t toAdd = at + (longer ? 7 : 6);
        EXPECT_EQ(at + 5 + static_cast<std::uintptr_t>(displacement(toAdd)) +
                      static_cast<std::uintptr_t>(displacement(toAdd + 6)),
                  record)
            << name;
#endif
    }
}

TEST_F(Binary, RecordsStandInOneRunOfWritableData) {
    const std::vector<std::string> names = everyName();
    std::vector<std::uintptr_t> addresses;
    for (const std::string& name : names) {
        const ElfSymbol& record = symbol(name + "_arraddr");
        addresses.push_back(record.address);
        EXPECT_EQ(record.type, STT_OBJECT) << name;
        const ElfSection& section = sectionOf(record);
        EXPECT_EQ(section.type, static_cast<std::uint32_t>(SHT_PROGBITS)) << name;
        EXPECT_EQ(section.flags & (SHF_WRITE | SHF_ALLOC | SHF_EXECINSTR), std::uint64_t{SHF_WRITE | SHF_ALLOC});
        EXPECT_EQ(record.address % 16, 0u) << name;
        EXPECT_EQ(word(record.address), loaded.base + symbol("v8_" + name).address) << name;
        for (std::size_t i = sizeof(void*); i < 16; ++i) EXPECT_EQ(inMemory(record.address)[i], 0) << name;
    }
    std::sort(addresses.begin(), addresses.end());
    for (std::size_t i = 0; i < addresses.size(); ++i) EXPECT_EQ(addresses[i], addresses[0] + 16 * i);
    std::size_t records = 0;
    for (const auto& [name, one] : file.symbols())
        if (name.size() > 8 && name.substr(name.size() - 8) == "_arraddr") ++records;
    EXPECT_EQ(records, names.size());
}

TEST_F(Binary, HasTheInternalNames) {
    const ElfSymbol& index = symbol("korJumpIndexForMergedDLL");
    EXPECT_EQ(index.size, 4u);
    EXPECT_EQ(index.type, STT_OBJECT);
    EXPECT_EQ(sectionOf(index).type, static_cast<std::uint32_t>(SHT_NOBITS));
    EXPECT_EQ(displacement(index.address), 0);

    using Query = const void* (*)();
    void* const query = Library::linked().find("kormGetLibVersion");
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(reinterpret_cast<Query>(query)()),
              loaded.base + symbol("s_libVer").address);

    for (const Form& form : allForms()) {
        const std::string stem = "v8_own" + form.name;
        std::vector<std::string> kernels;
        if (form.family->withoutKernels) {
            EXPECT_EQ(file.symbols().count(stem), 0u) << stem;
            continue;
        }
        if (form.layout == Layout::standard) kernels = {stem, stem + "_S2"};
        // One kernel for any stride.
        if (form.operationWord == "FrobNorm" && !form.array) kernels = {stem};
        // The names of list forms end in _L already.
        if (form.layout == Layout::list) kernels = {stem, stem.substr(0, stem.size() - 2) + "_LS2"};
        if (form.layout == Layout::pointer || form.family->oneKernel) kernels = {stem};
        for (const std::string& kernel : kernels) EXPECT_EQ(symbol(kernel).type, STT_FUNC) << kernel;
        EXPECT_EQ(file.symbols().count("v8_ownOMP_" + form.name), form.driver ? 1u : 0u) << form.name;
    }
    // Functions of fixed size have entry functions only, but for the one with strides; and some are made of parts with names.
    for (const GeometryFunction& function : geometryFunctions())
        EXPECT_EQ(file.symbols().count("v8_own" + function.name), 0u) << function.name;
    const std::string strided = std::string(homogeneousName);
    for (const std::string& name :
         {"v8_own" + strided, "v8_own" + strided + "_S2", "v8_ownOMP_" + strided,
          std::string("v8_own3dkormInvert_m_32f_4x4"), std::string("v8_own3dConvert64f32f_16"),
          std::string("v8_ownMulMat_32f"), std::string("v8_ownkormInvert_m_64f_4x4")})
        EXPECT_EQ(symbol(name).type, STT_FUNC) << name;
}

TEST_F(Binary, RunsItsHooksAtLoadAndUnload) {
    const auto contains = [&](std::uint32_t sectionType, const std::string& function) {
        const std::uintptr_t wanted = loaded.base + symbol(function).address;
        for (const ElfSection& section : file.sections()) {
            if (section.type != sectionType) continue;
            for (std::size_t at = 0; at < section.size; at += sizeof(void*))
                if (word(section.address + at) == wanted) return true;
        }
        return false;
    };
    EXPECT_TRUE(contains(SHT_INIT_ARRAY, "initializer"));
    EXPECT_TRUE(contains(SHT_FINI_ARRAY, "destructor"));
}

TEST_F(Binary, NeedsNoRelocationOfCode) {
    for (const auto& entry : file.dynamic()) {
        EXPECT_NE(entry.d_tag, DT_TEXTREL);
        if (entry.d_tag == DT_FLAGS) {
            EXPECT_EQ(entry.d_un.d_val & DF_TEXTREL, 0u);
        }
    }
}

TEST_F(Binary, NeedsOneOpenMPRuntimeAndTheCoreLibrary) {
    const auto needed = file.needed();
    EXPECT_EQ(file.soname(), "libkorm.so.7");
    EXPECT_EQ(std::count(needed.begin(), needed.end(), "libkorcore.so.7"), 1);
    const auto runtimes = std::count_if(needed.begin(), needed.end(),
                                        [](const std::string& name) { return name.find("omp") != std::string::npos; });
    EXPECT_EQ(runtimes, 1);
}

// An executable stack would be a gift to attackers; hand-written assembly asks for one by default.
TEST_F(Binary, AsksForNoExecutableStack) {
    const ElfW(Phdr) stack = programHeader(PT_GNU_STACK);
    ASSERT_EQ(stack.p_type, static_cast<ElfW(Word)>(PT_GNU_STACK));
    EXPECT_EQ(stack.p_flags & PF_X, 0u);
}

// All addresses are found at load, and then what holds them can't be written any more. The entry table stays writable, as
// it is meant to be: a build with several variants fills in its records when it is asked.
TEST_F(Binary, KeepsOnlyTheEntryTableWritable) {
    const auto isSet = [&](auto tag, std::uint64_t flag) {
        const auto& entries = file.dynamic();
        return std::any_of(entries.begin(), entries.end(),
                           [&](const auto& entry) { return entry.d_tag == tag && (entry.d_un.d_val & flag) != 0; });
    };
    EXPECT_TRUE(isSet(DT_FLAGS, DF_BIND_NOW) || isSet(DT_FLAGS_1, DF_1_NOW));
    const ElfW(Phdr) sealed = programHeader(PT_GNU_RELRO);
    ASSERT_EQ(sealed.p_type, static_cast<ElfW(Word)>(PT_GNU_RELRO));
    std::set<std::string> writable;
    for (const ElfSection& section : file.sections()) {
        if ((section.flags & (SHF_WRITE | SHF_ALLOC)) != (SHF_WRITE | SHF_ALLOC)) continue;
        if (section.address < sealed.p_vaddr || section.address + section.size > sealed.p_vaddr + sealed.p_memsz)
            writable.insert(section.name);
    }
    EXPECT_EQ(writable, (std::set<std::string>{".data", ".bss"}));
}

}  // namespace
}  // namespace kormtest
