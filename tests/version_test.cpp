// The version record, by its own declaration and by the public header's.
#include <gtest/gtest.h>
#include <korm.h>

#include <cstdio>
#include <cstring>
#include <thread>

#include "support/library.h"

namespace kormtest {
namespace {

struct VersionRecord {
    std::int32_t major;
    std::int32_t minor;
    std::int32_t patch;
    std::int32_t revision;
    char target[4];
    const char* name;
    const char* version;
    const char* buildDate;
};

const VersionRecord* query() {
    using Query = const VersionRecord* (*)();
    return reinterpret_cast<Query>(Library::linked().find("kormGetLibVersion"))();
}

TEST(Version, HasTheseFields) {
    const VersionRecord* const record = query();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->major, 7);
    EXPECT_EQ(record->minor, 1);
    EXPECT_EQ(record->patch, 1);
    EXPECT_EQ(record->revision, 37466);
    EXPECT_EQ(std::memcmp(record->target, "v8\0\0", 4), 0);
    EXPECT_STREQ(record->name, "korm SSSE3 (v8)");
    EXPECT_STREQ(record->version, "7.1.1 (r37466)");
    EXPECT_STREQ(record->buildDate, "Sep 24 2012");
}

TEST(Version, TextAgreesWithNumbers) {
    const VersionRecord* const record = query();
    char text[80];
    std::snprintf(text, sizeof text, "%d.%d.%d (r%d)", record->major, record->minor, record->patch, record->revision);
    EXPECT_STREQ(record->version, text);
    std::snprintf(text, sizeof text, "(%s)", record->target);
    EXPECT_NE(std::strstr(record->name, text), nullptr);
}

TEST(Version, IsOneRecordForEveryThread) {
    const VersionRecord* const first = query();
    const VersionRecord* other = nullptr;
    std::thread([&] { other = query(); }).join();
    EXPECT_EQ(query(), first);
    EXPECT_EQ(other, first);
}

TEST(Version, HeaderDeclaresTheSameRecord) {
    const auto* const record = kormGetLibVersion();
    EXPECT_EQ(static_cast<const void*>(record), static_cast<const void*>(query()));
    EXPECT_EQ(sizeof *record, sizeof(VersionRecord));
    EXPECT_EQ(record->major, 7);
    EXPECT_EQ(record->revision, 37466);
    EXPECT_STREQ(record->buildDate, "Sep 24 2012");
}

}  // namespace
}  // namespace kormtest
