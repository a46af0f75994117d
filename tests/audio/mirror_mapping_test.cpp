#include "audio/mirror_mapping.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

constexpr std::size_t bytes = 65536;

// Address space as plain numbers: notes every call and what is held.
class FakeCalls : public MirrorCalls {
public:
    void* virtualAlloc2(std::size_t size) override {
        EXPECT_EQ(size, 2 * bytes);
        calls.push_back("VirtualAlloc2");
        if (!hasPlaceholders) {
            return nullptr;
        }
        placeholders.insert(base);
        return base;
    }
    bool virtualFreeSplit(void* at, std::size_t firstBytes) override {
        EXPECT_EQ(at, base);
        EXPECT_EQ(firstBytes, bytes);
        if (note("split")) {
            return false;
        }
        placeholders.insert(base + bytes);
        return true;
    }
    void virtualFree(void* at) override {
        calls.push_back("VirtualFree");
        placeholders.erase(at);
    }
    void* createFileMapping(std::size_t size) override {
        EXPECT_EQ(size, bytes);
        if (note("CreateFileMappingW")) {
            return nullptr;
        }
        ++sections;
        return &sections;
    }
    void closeHandle(void* section) override {
        EXPECT_EQ(section, &sections);
        calls.push_back("CloseHandle");
        --sections;
    }
    void* mapViewOfFile3(void* section, void* at, std::size_t size) override {
        EXPECT_EQ(section, &sections);
        EXPECT_EQ(size, bytes);
        EXPECT_EQ(placeholders.count(at), 1u);
        if (note("MapViewOfFile3")) {
            return nullptr;
        }
        placeholders.erase(at);
        views.insert(at);
        return at;
    }
    void* probeFreeAddress(std::size_t size) override {
        EXPECT_EQ(size, 2 * bytes);
        return note("probe") ? nullptr : other;
    }
    void* mapViewOfFileEx(void* section, void* at, std::size_t size) override {
        EXPECT_EQ(section, &sections);
        EXPECT_EQ(size, bytes);
        if (note("MapViewOfFileEx")) {
            return nullptr;
        }
        views.insert(at);
        return at;
    }
    void unmapViewOfFileEx(void* view) override {
        calls.push_back("UnmapViewOfFileEx");
        EXPECT_EQ(views.erase(view), 1u);
    }
    std::int32_t lastError() override { return static_cast<std::int32_t>(0x80070057); }

    std::vector<std::string> calls;
    std::multiset<std::string> failures; // how often each call is still to fail
    int skipped = 0;                     // calls to let pass before the failures count
    bool hasPlaceholders = true;
    std::set<void*> placeholders;
    std::set<void*> views;
    int sections = 0;
    std::vector<std::byte> space = std::vector<std::byte>(4 * bytes);
    std::byte* base = space.data();
    std::byte* other = space.data() + 2 * bytes;

private:
    bool note(const char* call) {
        calls.push_back(call);
        const auto found = failures.find(call);
        if (found == failures.end()) {
            return false;
        }
        if (skipped > 0) {
            --skipped;
            return false;
        }
        failures.erase(found);
        return true;
    }
};

void expectNothingHeldBut(const FakeCalls& calls, const MirrorViews& views) {
    EXPECT_TRUE(calls.placeholders.empty());
    EXPECT_EQ(calls.sections, 0);
    EXPECT_EQ(calls.views.size(), views.first == nullptr ? 0u : 2u);
}

TEST(MirrorMapping, ReplacesTwoPlaceholders) {
    FakeCalls calls;
    MirrorViews views;
    EXPECT_FALSE(mapMirrored(calls, bytes, views).failed());
    EXPECT_EQ(calls.calls,
              (std::vector<std::string>{"VirtualAlloc2", "split", "CreateFileMappingW", "MapViewOfFile3",
                                        "MapViewOfFile3", "VirtualFree", "VirtualFree", "CloseHandle"}));
    EXPECT_EQ(views.first, calls.base);
    EXPECT_EQ(views.second, calls.base + bytes);
    expectNothingHeldBut(calls, views);
}

TEST(MirrorMapping, ProbesForAnAddressWithoutPlaceholders) {
    FakeCalls calls;
    calls.hasPlaceholders = false;
    MirrorViews views;
    EXPECT_FALSE(mapMirrored(calls, bytes, views).failed());
    EXPECT_EQ(calls.calls, (std::vector<std::string>{"VirtualAlloc2", "CreateFileMappingW", "probe",
                                                     "MapViewOfFileEx", "MapViewOfFileEx", "CloseHandle"}));
    EXPECT_EQ(views.first, calls.other);
    EXPECT_EQ(views.second, calls.other + bytes);
    expectNothingHeldBut(calls, views);
}

TEST(MirrorMapping, ProbesWhenThePlaceholderCannotBeSplit) {
    FakeCalls calls;
    calls.failures = {"split"};
    MirrorViews views;
    EXPECT_FALSE(mapMirrored(calls, bytes, views).failed());
    EXPECT_EQ(views.first, calls.other);
    expectNothingHeldBut(calls, views);
}

TEST(MirrorMapping, ProbesWhenEitherPlaceholderCannotBeReplaced) {
    for (const int which : {0, 1}) {
        FakeCalls calls;
        calls.failures = {"MapViewOfFile3"};
        calls.skipped = which;
        MirrorViews views;
        EXPECT_FALSE(mapMirrored(calls, bytes, views).failed());
        EXPECT_EQ(views.first, calls.other);
        expectNothingHeldBut(calls, views);
    }
}

TEST(MirrorMapping, TriesAgainWhenTheAddressIsTakenMeanwhile) {
    for (const int which : {0, 1}) {
        FakeCalls calls;
        calls.hasPlaceholders = false;
        calls.failures = {"MapViewOfFileEx"};
        calls.skipped = which;
        MirrorViews views;
        EXPECT_FALSE(mapMirrored(calls, bytes, views).failed());
        EXPECT_EQ(std::count(calls.calls.begin(), calls.calls.end(), "probe"), 2);
        EXPECT_EQ(views.first, calls.other);
        EXPECT_EQ(views.second, calls.other + bytes);
        expectNothingHeldBut(calls, views);
    }
}

TEST(MirrorMapping, GivesUpAfterABoundedNumberOfAttempts) {
    FakeCalls calls;
    calls.hasPlaceholders = false;
    for (int attempt = 0; attempt < 1000; ++attempt) {
        calls.failures.insert("MapViewOfFileEx");
    }
    MirrorViews views;
    const CallResult result = mapMirrored(calls, bytes, views);
    EXPECT_TRUE(result.failed());
    EXPECT_STREQ(result.call, "MapViewOfFileEx");
    EXPECT_EQ(result.code, static_cast<std::int32_t>(0x80070057));
    EXPECT_EQ(calls.failures.size(), 1000u - 32u);
    EXPECT_EQ(views.first, nullptr);
    expectNothingHeldBut(calls, views);
}

TEST(MirrorMapping, NamesTheCallWhenNoAddressIsFree) {
    FakeCalls calls;
    calls.hasPlaceholders = false;
    calls.failures = {"probe"};
    MirrorViews views;
    EXPECT_STREQ(mapMirrored(calls, bytes, views).call, "VirtualAlloc");
    expectNothingHeldBut(calls, views);
}

TEST(MirrorMapping, ReleasesThePlaceholdersWithoutASection) {
    FakeCalls calls;
    calls.failures = {"CreateFileMappingW"};
    MirrorViews views;
    EXPECT_STREQ(mapMirrored(calls, bytes, views).call, "CreateFileMappingW");
    EXPECT_EQ(views.first, nullptr);
    expectNothingHeldBut(calls, views);
}

} // namespace
} // namespace dunkman
