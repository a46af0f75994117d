#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "app/reset.h"
#include "tests/fakes/scratch_folder.h"
#include "tests/replays/trace_digest.h"
#include "tools/headless/key_script.h"
#include "tools/headless/options.h"
#include "tools/headless/runner.h"

// Every folder of tests/replays is one run of the whole program on the simulated machine:
//   options.txt    the headless runner's options, in one line; --keys names a file of the folder
//   expected.txt   the digest of its trace
// The same expectation holds for every compiler, optimisation level and platform. With the environment variable
// DUNKMAN_UPDATE_EXPECTED set, the expectations are written instead; read the difference before it is committed.
namespace dunkman {

namespace {

namespace files = std::filesystem;

const files::path replayFolder = files::absolute("tests/replays");

std::vector<std::string> readLines(const files::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

headless::Options readOptions(const files::path& folder) {
    std::istringstream line(readLines(folder / "options.txt").at(0));
    std::vector<std::string> words = {"dunkman-headless"};
    for (std::string word; line >> word;) {
        words.push_back(word);
    }
    std::vector<const char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    return headless::parseOptions(static_cast<int>(arguments.size()), arguments.data());
}

std::vector<std::string> runDigest(const files::path& folder) {
    const headless::Options options = readOptions(folder);
    headless::KeyScript keys;
    if (!options.keysPath.empty()) {
        keys = headless::KeyScript::readFile((folder / options.keysPath).string());
    }
    const files::path before = files::current_path();
    const files::path data = files::absolute(options.dataFolder);
    std::optional<ScratchFolder> copy; // a game that is recorded is kept, but not here
    if (options.mode == InputMode::Record) {
        copy.emplace();
        files::copy(data, ".", files::copy_options::recursive);
    } else {
        files::current_path(data);
    }
    TraceDigest digest;
    headless::run(options, std::move(keys), [&digest](std::string_view text) { digest.add(text); });
    resetProgram();
    files::current_path(before);
    return digest.finish();
}

std::vector<std::string> replayNames() {
    std::vector<std::string> names;
    for (const files::directory_entry& entry : files::directory_iterator(replayFolder)) {
        if (entry.is_directory()) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Replay : public testing::TestWithParam<std::string> {};

TEST_P(Replay, GivesTheExpectedTrace) {
    const files::path folder = replayFolder / GetParam();
    const std::vector<std::string> actual = runDigest(folder);
    if (std::getenv("DUNKMAN_UPDATE_EXPECTED") != nullptr) {
        std::ofstream file(folder / "expected.txt", std::ios::binary);
        for (const std::string& line : actual) {
            file << line << '\n';
        }
        GTEST_SKIP() << "expectation written";
    }
    const std::vector<std::string> expected = readLines(folder / "expected.txt");
    const auto difference = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (difference.first != expected.end() || difference.second != actual.end()) {
        FAIL() << "first difference\n  expected: "
               << (difference.first != expected.end() ? *difference.first : "nothing more")
               << "\n  actual:   "
               << (difference.second != actual.end() ? *difference.second : "nothing more");
    }
}

TEST_P(Replay, IsTheSameAgainInTheSameProcess) {
    if (std::getenv("DUNKMAN_REPEAT_REPLAYS") == nullptr) {
        GTEST_SKIP() << "set DUNKMAN_REPEAT_REPLAYS to run every replay twice";
    }
    const files::path folder = replayFolder / GetParam();
    EXPECT_EQ(runDigest(folder), runDigest(folder));
}

INSTANTIATE_TEST_SUITE_P(All, Replay, testing::ValuesIn(replayNames()),
                         [](const testing::TestParamInfo<std::string>& replay) { return replay.param; });

} // namespace

} // namespace dunkman
