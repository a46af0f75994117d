#include <charconv>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/simulated/platform_sim.h"
#include "tools/console/about.h"
#include "tools/console/binary_stdout.h"
#include "tools/console/fault.h"
#include "tools/inspect/commands.h"

namespace {

using namespace dunkman;

constexpr int exitUsage = 2;

constexpr const char* usage =
    "dunkman-inspect json5 FILE               value, error code and position of a data file\n"
    "dunkman-inspect write FILE [--indent N]  the file's value as the game writes it\n"
    "dunkman-inspect shader FILE              a shader with its includes expanded\n"
    "dunkman-inspect dds FILE                 a texture's levels\n"
    "dunkman-inspect scene [--data DIR]       the world right after loading\n"
    "dunkman-inspect check [--data DIR]       every fault of a data directory\n"
    "dunkman-inspect reference                what the data files of a level may hold\n"
    "dunkman-inspect schema NAME              the same for editors: objects, recipes, prefabs or scene\n"
    "dunkman-inspect --help | --version\n";

class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Arguments {
    std::string command;
    std::string file;
    std::string data = "data";
    int indent = 2;
};

int parseIndent(std::string_view text) {
    constexpr int most = 1000;
    int indent = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), indent);
    if (error != std::errc{} || end != text.data() + text.size() || indent < 0 || indent > most) {
        throw UsageError("--indent takes a number of spaces from 0 to 1000");
    }
    return indent;
}

Arguments parse(const std::vector<std::string_view>& words) {
    Arguments arguments;
    if (words.empty()) {
        throw UsageError("which command?");
    }
    arguments.command = words[0];
    for (std::size_t i = 1; i < words.size(); ++i) {
        const bool hasNext = i + 1 < words.size();
        if (words[i] == "--data" && hasNext) {
            arguments.data = words[++i];
        } else if (words[i] == "--indent" && hasNext) {
            arguments.indent = parseIndent(words[++i]);
        } else if (arguments.file.empty() && !words[i].starts_with("--")) {
            arguments.file = words[i];
        } else {
            throw UsageError("what does \"" + std::string(words[i]) + "\" mean here?");
        }
    }
    return arguments;
}

int runOnFile(const Arguments& arguments, std::string& out) {
    if (arguments.file.empty()) {
        throw UsageError(arguments.command + " needs a file");
    }
    if (arguments.command == "schema") {
        if (const int status = inspect::printSchema(arguments.file, out); status == 0) {
            return status;
        }
        throw UsageError("there is no schema \"" + arguments.file + '"');
    }
    if (arguments.command == "json5") {
        return inspect::printJson5(arguments.file, out);
    }
    if (arguments.command == "write") {
        return inspect::printWritten(arguments.file, arguments.indent, out);
    }
    if (arguments.command == "shader") {
        return inspect::printShader(arguments.file, out);
    }
    if (arguments.command == "dds") {
        return inspect::printDds(arguments.file, out);
    }
    throw UsageError("unknown command \"" + arguments.command + '"');
}

int runCommand(const Arguments& arguments, std::string& out) {
    if (arguments.command == "reference") {
        return inspect::printReference(out);
    }
    if (arguments.command != "scene" && arguments.command != "check") {
        return runOnFile(arguments, out);
    }
    std::error_code error;
    std::filesystem::current_path(arguments.data, error);
    if (error) {
        throw UsageError("--data: " + arguments.data + ": " + error.message());
    }
    if (arguments.command == "scene") {
        return inspect::printScene(out);
    }
    std::string notes;
    const int status = inspect::printFaults(out, notes);
    std::fputs(notes.c_str(), stderr);
    return status;
}

} // namespace

int main(int argumentCount, char** argumentWords) {
    simulated::makeStandardOutputBinary();
    if (console::tellAbout(argumentCount, argumentWords, "dunkman-inspect", usage)) {
        return 0;
    }
    try {
        std::string out;
        const int status = runCommand(parse({argumentWords + 1, argumentWords + argumentCount}), out);
        std::fwrite(out.data(), 1, out.size(), stdout);
        return status;
    } catch (const UsageError& error) {
        std::fprintf(stderr, "%s\n%s", error.what(), usage);
        return exitUsage;
    } catch (const std::exception& error) {
        return console::endWithFault(error);
    }
}
